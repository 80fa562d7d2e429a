#include "objectselection.h"

#include <QDesignerContainerExtension>
#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowCursorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerPropertyEditorInterface>
#include <QExtensionManager>
#include <QLayout>

#include <utility>

#include "designerobjects.h"

namespace {

void ShowPage(const QDesignerFormEditorInterface* core, QWidget* container, const QWidget* widget)
{
    auto* const pages = qt_extension<QDesignerContainerExtension*>(core->extensionManager(), container);
    for (int i = 0; pages && i < pages->count(); ++i) {
        const QWidget* const page = pages->widget(i);
        if ((page == widget || page->isAncestorOf(widget)) && pages->currentIndex() != i)
            pages->setCurrentIndex(i);
    }
}

/// Of all containers around it, the outer ones first.
void ShowPages(const QDesignerFormWindowInterface* form, QWidget* widget)
{
    QVector<QWidget*> around;
    for (QWidget* parent = widget->parentWidget(); parent && parent != form; parent = parent->parentWidget())
        around.prepend(parent);
    for (QWidget* const container : std::as_const(around)) {
        if (form->isManaged(container))
            ShowPage(form->core(), container, widget);
    }
}

} // namespace

QVector<QObject*> ObjectSelection::Of(const QDesignerFormWindowInterface* form)
{
    QVector<QObject*> objects;
    QObject* const shown = form->core()->propertyEditor()->object();
    if (shown && !shown->isWidgetType() && DesignerObjects::IsInForm(form->core(), shown))
        return {shown};
    const QDesignerFormWindowCursorInterface* const cursor = form->cursor();
    for (int i = 0; i < cursor->selectedWidgetCount(); ++i) {
        QWidget* const widget = cursor->selectedWidget(i);
        objects.append(widget);
        if (QLayout* const layout = DesignerObjects::LayoutOf(form->core(), widget))
            objects.append(layout);
    }
    return objects;
}

void ObjectSelection::Select(QDesignerFormWindowInterface* form, QObject* object)
{
    auto* const layout = qobject_cast<QLayout*>(object);
    auto* const widget = layout ? layout->parentWidget() : qobject_cast<QWidget*>(object);
    if (!widget) {
        form->clearSelection(false);
        form->core()->propertyEditor()->setObject(object);
        return;
    }
    ShowPages(form, widget);
    form->clearSelection(false);
    form->selectWidget(widget, true);
}
