#ifndef FORMSESSION_H
#define FORMSESSION_H

#include <QObject>
#include <QPointer>
#include <QSet>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

#include "DeclarationHandler/declarationhandler.h"
#include "bindform/bindform.h"
#include "declview/boundproperty.h"
#include "declview/formresources.h"
#include "declview/messagelog.h"
#include "declview/propertyprobe.h"
#include "declview/variablestore.h"

class JsonData;

/// What is shown.
struct SessionFiles
{
    QString form;
    QString data;           ///< May be empty.
    QString defaultPackage; ///< Of variables that the form names without one.
};

/// A form that is bound to its variables, and loaded again when asked. The form is owned here, also
/// when it is shown inside another widget.
class FormSession : public QObject
{
    Q_OBJECT

public:
    explicit FormSession(const SessionFiles& files);
    ~FormSession() override;

    /// Reads both files and binds the form anew. False, with all as it was and the reason in \a error,
    /// when either cannot be read.
    bool Load(QString* error);
    /// Save() of the handler, with the form as the scope: an empty name saves everything.
    void Save(const QString& objectName);
    /// Writes the variables, from then on to that file.
    bool SaveData(const QString& fileName, QString* error);

    const SessionFiles& Files() const { return m_files; }
    QWidget* Form() const { return m_form; }
    const QVector<BoundProperty>& Properties() const { return m_properties; }
    VariableStore& Variables() { return m_variables; }
    MessageLog& Log() { return m_log; }
    /// Names of the widgets that something to save lies in, from the outside in.
    QStringList Scopes() const;

Q_SIGNALS:
    void FormAboutToBeReplaced();
    /// There is a new form, or at the end none, and other properties; the old form goes soon. It comes
    /// bound, but without values, which wait until it has been put in its place.
    void FormReplaced();
    /// The value of a bound property may be another, or it was evaluated, or has a new diagnostic.
    void PropertyChanged(int position);
    /// Messages, with their declarations put in where they were found.
    void MessagesArrived(const QVector<LogMessage>& messages);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void Replace(QWidget* form);
    void Unbind();
    void Bind();
    void AddProperty(const MarkedProperty& marked);
    void NoteReads(const QString& statement, QSet<VariableIdentifier>* identifiers) const;
    void WatchProperties();
    void OnEvaluated(int position);
    void OnMessages(QVector<LogMessage> messages);
    int FindNamedBy(const QString& message) const;

    SessionFiles m_files;
    MessageLog m_log;
    VariableStore m_variables;
    FormResources m_resources;
    QPointer<QWidget> m_form;
    QByteArray m_text; ///< What the form was made of.
    DeclarationHandler m_handler;
    QVector<BoundProperty> m_properties;
    std::vector<std::unique_ptr<PropertyProbe>> m_probes;
};

#endif
