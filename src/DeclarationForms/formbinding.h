#ifndef FORMBINDING_H
#define FORMBINDING_H

#include <QObject>
#include <QString>
#include <QVector>

#include <memory>

#include "DeclarationForms/boundproperty.h"
#include "DeclarationForms/declarationforms_export.h"
#include "DeclarationForms/formproblem.h"
#include "DeclarationForms/formsaveresult.h"

class FormEngine;
class IDataPeer;

/// Keeps the properties of a form equal to the statements in its dynamic properties, tells what is wrong with
/// them, and writes back what the user has edited.
///
/// A marked dynamic property holds the statement of the property of that name: «~text» shows the statement's
/// value only, «_text» is written back as well. Everything happens in the thread of the widgets, and needs an
/// event loop there; data may change in any thread.
///
/// The scope of an operation is an object: it means the properties of that object and of all below it. Null
/// means everything that is bound, and for Bind() the form. Form, scope and this may be deleted in any order,
/// also from slots that run inside an operation, which then ends without doing more.
///
/// EditedChanged(), and under a save policy Saved() and ProblemFound(), may come while a widget tells that the user
/// has changed it. Qt's widgets go on afterwards, so a slot that ends the form there takes deleteLater().
class DECLARATIONFORMS_EXPORT FormBinding : public QObject
{
    Q_OBJECT

public:
    /// When edits go into the data.
    enum SavePolicy
    {
        SaveOnRequest,         ///< By Save() alone.
        SaveOnEditingFinished, ///< When the user leaves or confirms a widget.
        SaveAtOnce             ///< With each change.
    };
    /// Whose value stays where data change under an edit.
    enum EditPolicy
    {
        KeepEdits, ///< What the user has edited stays until it is saved or reverted.
        TakeData   ///< Data overwrite it.
    };

    /// \a form is where «TopWidget» in widget paths leads; it stays the caller's.
    explicit FormBinding(QObject* form, QObject* parent = nullptr);
    /// Ends all subscriptions; properties keep what they show.
    ~FormBinding() override;

    /// Where widget paths start; null once it is deleted.
    QObject* Form() const;

    /// Where variables live, for what is bound from now on; it stays the caller's and must outlive that. Null
    /// stands for the default, number 0 of Ovex_DataPeerFactory().
    void SetDataPeer(IDataPeer* peer);
    /// The peer that was set, or else the default, which is null where the factory has none.
    IDataPeer* DataPeer() const;
    /// The package of variables named without one, for what is bound from now on. A statement that is translated keeps
    /// package and peer.
    void SetDefaultPackage(const QString& package);
    /// That package; empty unless it was set.
    QString DefaultPackage() const;
    /// When edits are saved. A dynamic property "savePolicy" on an object overrides it for the object and all
    /// below: "onRequest", "onEditingFinished" or "atOnce".
    void SetSavePolicy(SavePolicy policy);
    /// What becomes of an edit when data arrive.
    void SetEditPolicy(EditPolicy policy);
    /// The least time between two deliveries of changes; 0 stands for the next turn of the event loop.
    void SetDeliveryInterval(int milliseconds);

    /// Binds every marked dynamic property in the scope, in the order of QObject::children(), and shows its
    /// first value. Statements that were bound before are replaced. False when a statement has an error; it is
    /// told, its property left alone, and the others are bound.
    bool Bind(QObject* scope = nullptr);
    /// Binds one property, also of an object outside the form, and shows its first value. False for an error.
    bool Bind(QObject* object, const QString& markedProperty, const QString& statement);
    /// As above, unless the property is bound already, which is true as well.
    bool BindDefault(QObject* object, const QString& markedProperty, const QString& statement);
    /// Ends what was bound. The properties keep what they show, edits included.
    void Unbind(QObject* scope = nullptr);

    /// The problems that stand now, in the order in which they were found.
    QVector<FormProblem> Problems(QObject* scope = nullptr) const;
    /// What is bound, in the order bound.
    QVector<BoundProperty> BoundProperties(QObject* scope = nullptr) const;

    /// Whether a writable property holds something else than the binding left there.
    bool IsEdited(QObject* scope = nullptr) const;
    /// Writes edited properties back, in the order bound.
    FormSaveResult Save(QObject* scope = nullptr);
    /// Gives edits up and shows the data again.
    void Revert(QObject* scope = nullptr);
    /// Delivers what waits, and evaluates everything, once.
    void Update();

    /// The object whose property is being evaluated in this thread; null when none is.
    static QObject* EvaluatedObject();
    /// That property, with its marker; empty when none is.
    static QString EvaluatedProperty();

Q_SIGNALS:
    /// A problem that was not there before.
    void ProblemFound(const FormProblem& problem);
    /// Whether anything in the form is edited has changed.
    void EditedChanged(bool edited);
    /// After each Save(), and after saves by policy that wrote something.
    void Saved(int count);

private:
    Q_DISABLE_COPY(FormBinding)

    const std::shared_ptr<FormEngine> d;
};

#endif
