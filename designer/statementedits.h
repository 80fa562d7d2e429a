#ifndef STATEMENTEDITS_H
#define STATEMENTEDITS_H

#include <QObject>

#include "designertext.h"
#include "formstatements.h"

class QDesignerFormEditorInterface;
class QUndoCommand;

/// What the user does to the statements of a form. Each is one step of Designer's undo, and what is typed in one go is,
/// too. What else a text has, such as a comment for translators, stays.
class StatementEdits : public QObject
{
    Q_OBJECT

public:
    explicit StatementEdits(QDesignerFormEditorInterface* core);

    QDesignerFormEditorInterface* Core() const { return m_core; }

    /// Whether the object can get a property of that name.
    bool CanAdd(QObject* object, const QString& property) const;
    /// The new statement is none for translators. False when the property cannot be added.
    bool Add(QObject* object, const QString& property, const QString& statement);
    /// False when there is no such statement.
    bool Change(QObject* object, const QString& property, const QString& statement);
    /// The next change is a step of its own.
    void EndRun() { ++m_run; }
    /// All of them at once.
    void Remove(const QVector<FormStatement>& statements);
    /// Gives the property another name, such as with the other marker.
    bool Rename(QObject* object, const QString& property, const QString& newName);

signals:
    /// Change() is about to be done.
    void Changing();
    void Changed(QObject* object, const QString& property, const QString& statement);

private:
    bool Push(QObject* object, QUndoCommand* command) const;

    QDesignerFormEditorInterface* const m_core;
    DesignerTexts m_texts;
    int m_run = 1;
};

#endif
