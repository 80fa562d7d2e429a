#include "statementedits.h"

#include <QDesignerDynamicPropertySheetExtension>
#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerPropertySheetExtension>
#include <QUndoStack>

#include "designerobjects.h"
#include "statementcommand.h"

StatementEdits::StatementEdits(QDesignerFormEditorInterface* core) : m_core(core), m_texts(core) {}

bool StatementEdits::CanAdd(QObject* object, const QString& property) const
{
    const QDesignerDynamicPropertySheetExtension* const sheet = DesignerObjects::DynamicSheet(m_core, object);
    return sheet && sheet->canAddDynamicProperty(property);
}

bool StatementEdits::Add(QObject* object, const QString& property, const QString& statement)
{
    if (!CanAdd(object, property))
        return false;
    DesignerText text;
    text.text = statement;
    text.attributes.append("notr", "true");
    return Push(object, new StatementCommand(m_core, object, property, m_texts.ToValue(text), 0));
}

bool StatementEdits::Change(QObject* object, const QString& property, const QString& statement)
{
    const int index = DesignerObjects::DynamicIndex(m_core, object, property);
    DesignerText text;
    if (index < 0 || !m_texts.FromValue(DesignerObjects::Sheet(m_core, object)->property(index), &text))
        return false;
    if (text.text == statement)
        return true;
    text.text = statement;
    emit Changing();
    if (!Push(object, new StatementCommand(m_core, object, property, m_texts.ToValue(text), m_run)))
        return false;
    emit Changed(object, property, statement);
    return true;
}

void StatementEdits::Remove(const QVector<FormStatement>& statements)
{
    auto* const all = new QUndoCommand(QString("Remove %1 statements").arg(statements.size()));
    QObject* owner = nullptr;
    for (const FormStatement& statement : statements) {
        if (!statement.object || DesignerObjects::DynamicIndex(m_core, statement.object, statement.property) < 0)
            continue;
        owner = statement.object;
        auto* const command = new StatementCommand(m_core, owner, statement.property, QVariant(), 0, all);
        if (statements.size() == 1)
            all->setText(command->text());
    }
    if (owner)
        Push(owner, all);
    else
        delete all;
}

bool StatementEdits::Rename(QObject* object, const QString& property, const QString& newName)
{
    const int index = DesignerObjects::DynamicIndex(m_core, object, property);
    if (index < 0 || !CanAdd(object, newName))
        return false;
    const QVariant value = DesignerObjects::Sheet(m_core, object)->property(index);
    auto* const both = new QUndoCommand(QString("Rename '%1' to '%2'").arg(property, newName));
    new StatementCommand(m_core, object, property, QVariant(), 0, both);
    new StatementCommand(m_core, object, newName, value, 0, both);
    return Push(object, both);
}

bool StatementEdits::Push(QObject* object, QUndoCommand* command) const
{
    const QDesignerFormWindowInterface* const form = QDesignerFormWindowInterface::findFormWindow(object);
    if (!form) {
        delete command;
        return false;
    }
    form->commandHistory()->push(command);
    return true;
}
