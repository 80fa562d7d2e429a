#include "statementcommand.h"

#include <QDesignerDynamicPropertySheetExtension>
#include <QDesignerFormEditorInterface>
#include <QDesignerPropertyEditorInterface>
#include <QDesignerPropertySheetExtension>

#include "designerobjects.h"

namespace {

/// None of Designer's own, which are small.
const int RunId = 0x53544d54;

} // namespace

StatementCommand::StatementCommand(QDesignerFormEditorInterface* core, QObject* object, const QString& property,
                                   const QVariant& value, int run, QUndoCommand* parent)
    : QUndoCommand(parent), m_core(core), m_object(object), m_property(property), m_run(run), m_after(value)
{
    const int index = DesignerObjects::DynamicIndex(core, object, property);
    if (index >= 0)
        m_before = DesignerObjects::Sheet(core, object)->property(index);
    const char* const form = !m_before.isValid() ? "Add '%1' to '%2'"
        : !value.isValid()                       ? "Remove '%1' from '%2'"
                                                 : "Change '%1' of '%2'";
    setText(QString(form).arg(property, DesignerObjects::Label(core, object)));
}

int StatementCommand::id() const
{
    return m_run == 0 ? -1 : RunId;
}

bool StatementCommand::mergeWith(const QUndoCommand* next)
{
    const auto* const other = dynamic_cast<const StatementCommand*>(next);
    if (!other || other->m_run != m_run || other->m_object != m_object || other->m_property != m_property)
        return false;
    m_after = other->m_after;
    return true;
}

void StatementCommand::Apply(const QVariant& value)
{
    if (!m_object)
        return;
    const bool isNewOrGone = Write(value);
    QDesignerPropertyEditorInterface* const editor = m_core->propertyEditor();
    if (!editor || editor->object() != m_object)
        return;
    if (isNewOrGone)
        editor->setObject(m_object);
    else
        editor->setPropertyValue(m_property, value, true);
}

/// Answers whether the property came or went.
bool StatementCommand::Write(const QVariant& value)
{
    QDesignerPropertySheetExtension* const sheet = DesignerObjects::Sheet(m_core, m_object);
    QDesignerDynamicPropertySheetExtension* const dynamicSheet = DesignerObjects::DynamicSheet(m_core, m_object);
    if (!sheet || !dynamicSheet)
        return false;
    const int present = DesignerObjects::DynamicIndex(m_core, m_object, m_property);
    if (!value.isValid())
        return present >= 0 && dynamicSheet->removeDynamicProperty(present);
    const int index = present >= 0 ? present : dynamicSheet->addDynamicProperty(m_property, value);
    if (index < 0)
        return false;
    sheet->setProperty(index, value);
    sheet->setChanged(index, true);
    return present < 0;
}
