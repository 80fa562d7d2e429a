#ifndef DECLPROPERTY_H
#define DECLPROPERTY_H

#include <QString>

#include "Common/propertyaccess.h"
#include "DataLayer/idataobserver.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declaration.h"

class IDataPeer;
class PropertyUpdate;
class QVariant;

/// Keeps one property of an object equal to the value of a statement.
///
/// A change of a variable that the statement reads may come from any thread; it is evaluated again by
/// a queued call in the declaration's own thread, once for each change.
///
/// An Update() that runs into itself again, through declarations that read each other's properties,
/// answers false and does nothing; the first time this happens to a declaration, one line on the
/// debug stream names it. A declaration may be deleted from inside its own Update().
///
/// Updates that run inside each other, through declarations that read each other's properties, nest
/// to a depth of 1,000. The one after that answers false, and takes place from the event loop.
class DECLARATIONHANDLER_EXPORT DeclProperty : public Declaration, public IDataObserver
{
    Q_OBJECT

public:
    /// A declaration without a tree yet, which acts on notifications. \a property is the normal name.
    /// VariableIdentifier must be known to the meta-type system by then.
    DeclProperty(QObject* activeObject, const QString& property);
    /// A declaration that does not act on notifications. Takes ownership of the tree.
    DeclProperty(IExpression* condition, QObject* activeObject, const QString& property);
    /// Unregisters from the data peer.
    ~DeclProperty() override;

    /// Stores the property's current value in the tree and gives the tree's answer; false without a
    /// tree or object.
    bool Save() override;

    /// May be called from any thread.
    void OnNotify(const VariableIdentifier& identifier) override;

    /// Writes \a value, unless the property has it already and a value was written before; "visible" is
    /// always written. A value that does not convert to the type of the property's present value is told
    /// on the debug stream and written all the same. Answers whether it was written, which is false
    /// without an object.
    virtual bool SetProperty(const QVariant& value);

    /// Writes the image in the file that \a value names, as SetProperty() does. A file that cannot be
    /// loaded gives a null image; one that does not exist is told on the debug stream, except "::empty",
    /// which stands for no image. An empty path writes nothing, says so and is false.
    virtual bool SetPixmap(const QVariant& value);

    /// The normal name given to the constructor.
    QString GetProperty() const;

    /// The data peer that the statement's variables were registered with; it stays the caller's and
    /// must outlive the declaration.
    void SetDataPeer(IDataPeer* dataPeer);

Q_SIGNALS:
    /// Carries a notification from the thread of OnNotify() to the declaration's own, by a queued
    /// connection with OnNotifyDeclaration().
    void DoNotifyDeclaration(const VariableIdentifier&);

public Q_SLOTS:
    /// Update(true), whichever variable changed; while an Update() runs, again once that has ended.
    void OnNotifyDeclaration(const VariableIdentifier&);
    /// Evaluates the tree, writes its value with SetProperty() or, for a file's name in "pixmap" or
    /// "statusIcon", with SetPixmap(), and emits Updated(). Answers whether something was written:
    /// false, with nothing done, without a tree or object and inside a running Update() of this
    /// declaration. An invalid value is written only with \a updateToInvalid.
    bool Update(bool updateToInvalid) override;
    /// Update(true).
    bool Update();

private:
    Q_DISABLE_COPY(DeclProperty)

    friend class PropertyUpdate;

    QString m_property;
    IDataPeer* m_dataPeer;
    PropertyAccess m_access;
    PropertyUpdate* m_update;   ///< The one that is running; null when there is none.
    int m_postponed;            ///< Notifications that arrived while it was running.
    const bool m_alwaysWritten; ///< Also when the property has the value already.
    const bool m_takesImages;   ///< Paths of image files stand for the images.
    bool m_written;
    bool m_cycleReported;
};

#endif
