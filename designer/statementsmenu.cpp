#include "statementsmenu.h"

#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QExtensionManager>
#include <QLayout>
#include <QScopedValueRollback>
#include <QTimer>
#include <QWidget>

#include "designerobjects.h"

namespace {

/// The entries that all objects have, such as "Change objectName...".
const char InternalMenu[] = "QDesignerInternalTaskMenuExtension";

QAction* PreferredOf(const QDesignerTaskMenuExtension* menu)
{
    if (!menu)
        return nullptr;
    if (QAction* const preferred = menu->preferredEditAction())
        return preferred;
    const QList<QAction*> actions = menu->taskActions();
    return actions.isEmpty() ? nullptr : actions.first();
}

} // namespace

StatementsMenu::StatementsMenu(QObject* object, QObject* others, QAction* done, const StatementsOpener& opener,
                               QObject* parent)
    : QObject(parent), m_others(others), m_done(done), m_opener(opener)
{
    m_separator.setSeparator(true);
    const auto* const widget = qobject_cast<QWidget*>(object);
    const QDesignerFormWindowInterface* const form = QDesignerFormWindowInterface::findFormWindow(object);
    QLayout* const layout = widget && form ? DesignerObjects::LayoutOf(form->core(), widget) : nullptr;
    if (layout && DesignerObjects::IsPlaceOfLayout(widget)) {
        AddEntry("Statements...", layout);
        return;
    }
    AddEntry("Statements...", object);
    if (layout)
        AddEntry("Statements of Layout...", layout);
}

QAction* StatementsMenu::preferredEditAction() const
{
    return m_done;
}

QList<QAction*> StatementsMenu::taskActions() const
{
    const auto* const others = qobject_cast<QDesignerTaskMenuExtension*>(m_others);
    QList<QAction*> actions = others ? others->taskActions() : QList<QAction*>();
    if (!actions.isEmpty())
        actions.append(const_cast<QAction*>(&m_separator));
    return actions + m_entries;
}

void StatementsMenu::AddEntry(const QString& text, QObject* object)
{
    auto* const entry = new QAction(text, this);
    connect(entry, &QAction::triggered, object, [opener = m_opener, object] { opener(object); });
    m_entries.append(entry);
}

StatementsMenuFactory::StatementsMenuFactory(QExtensionManager* manager, const StatementsOpener& opener)
    : QExtensionFactory(manager), m_opener(opener)
{
    manager->registerExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
    // The last to register is the first to be asked, and other plugins may come after this one.
    QTimer::singleShot(0, this, [this, manager] {
        manager->unregisterExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
        manager->registerExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
    });
}

StatementsMenuFactory::~StatementsMenuFactory()
{
    extensionManager()->unregisterExtensions(this, Q_TYPEID(QDesignerTaskMenuExtension));
}

QObject* StatementsMenuFactory::extension(QObject* object, const QString& iid) const
{
    return m_asksOthers ? nullptr : QExtensionFactory::extension(object, iid);
}

QObject* StatementsMenuFactory::createExtension(QObject* object, const QString& iid, QObject* parent) const
{
    const QDesignerFormWindowInterface* const form = QDesignerFormWindowInterface::findFormWindow(object);
    if (iid != Q_TYPEID(QDesignerTaskMenuExtension) || !form || !DesignerObjects::DynamicSheet(form->core(), object))
        return nullptr;
    const QScopedValueRollback<bool> asks(m_asksOthers, true);
    QObject* const others = extensionManager()->extension(object, iid);
    const auto* const menu = qobject_cast<QDesignerTaskMenuExtension*>(others);
    return new StatementsMenu(object, others, DoneWithout(object, menu), m_opener, parent);
}

/// What a double click does when this is not there.
QAction* StatementsMenuFactory::DoneWithout(QObject* object, const QDesignerTaskMenuExtension* others) const
{
    if (QAction* const preferred = PreferredOf(others))
        return preferred;
    return PreferredOf(qobject_cast<QDesignerTaskMenuExtension*>(extensionManager()->extension(object, InternalMenu)));
}
