#ifndef FORMSESSION_H
#define FORMSESSION_H

#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QTimer>
#include <QVector>
#include <QWidget>

#include <memory>

#include "common/jsondata.h"
#include "declview/datamotion.h"
#include "declview/formresources.h"
#include "declview/messagelog.h"
#include "declview/widgetoutlines.h"
#include "view/declarationsource.h"
#include "view/variablestore.h"

class CheckSettings;
struct Finding;

/// What is shown.
struct SessionFiles
{
    QString form;
    QString data;           ///< May be empty.
    QString defaultPackage; ///< Of variables that the form names without one.
    QString name;           ///< Of the form, where its file is a copy; may be empty.

    /// What the user calls the form.
    QString Name() const { return name.isEmpty() ? QFileInfo(form).fileName() : name; }
};

/// A form that is bound to its variables, and loaded again when asked. The form is owned here, also
/// when it is shown inside another widget.
class FormSession : public DeclarationSource
{
    Q_OBJECT

public:
    explicit FormSession(const SessionFiles& files);
    ~FormSession() override;

    /// Reads both files and binds the form anew. False, with all as it was and the reason in \a error,
    /// when either cannot be read.
    bool Load(QString* error);
    /// Writes back what was edited in the object of that name and below; an empty name stands for the form.
    FormSaveResult Save(const QString& objectName);
    /// Gives up what was edited there.
    void Revert(const QString& objectName);
    /// Checks the form that is loaded, over its project file and data; what is found stands with its declaration, the
    /// rest goes to the messages.
    void Check();
    /// Writes the variables, from then on to that file.
    bool SaveData(const QString& fileName, QString* error);

    const SessionFiles& Files() const { return m_files; }
    QWidget* Form() const override { return m_form; }
    QString DefaultPackage() const override { return m_files.defaultPackage; }
    const QVector<ViewedProperty>& Properties() const override { return m_properties; }
    IDataPeer* Data() const override;
    VariableStore& Variables() { return m_variables; }
    DataMotion& Motion() { return m_motion; }
    MessageLog& Log() { return m_log; }
    BoundProperty Bound(int position) const override;
    QVector<int> ReadersOf(int position) const override;
    /// Names of the widgets that something to save lies in, from the outside in.
    QStringList Scopes() const;

Q_SIGNALS:
    /// Whether anything in the form is edited has changed.
    void EditedChanged(bool edited);
    /// Messages, with their declarations put in where they were found.
    void MessagesArrived(const QVector<LogMessage>& messages);

private Q_SLOTS:
    /// Of the sender, which has such a property.
    void OnPropertyChanged();

private:
    void Replace(QWidget* form);
    void Unbind();
    void Bind();
    void ListProperties();
    void NoteReads();
    void WatchProperties();
    void Watch(const QObject* object, const QString& property);
    void StartTaking();
    void TakeState();
    void TakeProblems();
    QObject* Scope(const QString& objectName) const;
    bool ReadSettings(CheckSettings* settings, QString* error) const;
    void TakeFinding(const Finding& finding);
    void OnProblem(const FormProblem& problem);
    void OnMessages(QVector<LogMessage> messages);
    /// -1 for none.
    int Find(const QObject* object, const QString& markedProperty) const;

    SessionFiles m_files;
    MessageLog m_log;
    VariableStore m_variables;
    DataMotion m_motion{&m_variables};
    FormResources m_resources;
    WidgetOutlines m_outlines;
    QPointer<QWidget> m_form;
    QByteArray m_text; ///< What the form was made of.
    JsonData m_fileData;
    std::unique_ptr<FormBinding> m_binding;
    QVector<ViewedProperty> m_properties;
    QHash<const QObject*, QVector<int>> m_positions; ///< In m_properties, of the objects with some.
    QHash<QPair<const QObject*, QString>, QVector<int>> m_readers;
    QTimer m_taking; ///< Runs when something may have been evaluated.
};

#endif
