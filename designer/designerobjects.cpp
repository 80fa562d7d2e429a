#include "designerobjects.h"

#include <QActionGroup>
#include <QDesignerDynamicPropertySheetExtension>
#include <QDesignerFormEditorInterface>
#include <QDesignerFormWindowInterface>
#include <QDesignerMetaDataBaseInterface>
#include <QDesignerPropertySheetExtension>
#include <QDesignerWidgetDataBaseInterface>
#include <QExtensionManager>
#include <QLayout>
#include <QWidget>

QDesignerPropertySheetExtension* DesignerObjects::Sheet(const QDesignerFormEditorInterface* core, QObject* object)
{
    return qt_extension<QDesignerPropertySheetExtension*>(core->extensionManager(), object);
}

QDesignerDynamicPropertySheetExtension* DesignerObjects::DynamicSheet(const QDesignerFormEditorInterface* core,
                                                                      QObject* object)
{
    auto* const sheet = qt_extension<QDesignerDynamicPropertySheetExtension*>(core->extensionManager(), object);
    return sheet && sheet->dynamicPropertiesAllowed() ? sheet : nullptr;
}

int DesignerObjects::DynamicIndex(const QDesignerFormEditorInterface* core, QObject* object, const QString& property)
{
    const QDesignerPropertySheetExtension* const sheet = Sheet(core, object);
    const QDesignerDynamicPropertySheetExtension* const dynamicSheet = DynamicSheet(core, object);
    const int index = sheet && dynamicSheet ? sheet->indexOf(property) : -1;
    // One that was removed keeps its place.
    return index >= 0 && sheet->isVisible(index) && dynamicSheet->isDynamicProperty(index) ? index : -1;
}

QString DesignerObjects::ClassName(const QDesignerFormEditorInterface* core, QObject* object)
{
    const QDesignerWidgetDataBaseInterface* const classes = core->widgetDataBase();
    const int index = classes->indexOfObject(object);
    return index < 0 ? QString::fromLatin1(object->metaObject()->className()) : classes->item(index)->name();
}

QString DesignerObjects::Label(const QDesignerFormEditorInterface* core, QObject* object)
{
    return object->objectName().isEmpty() ? ClassName(core, object) : object->objectName();
}

QVector<QObject*> DesignerObjects::InForm(const QDesignerFormWindowInterface* form)
{
    QVector<QObject*> objects;
    QWidget* const top = form->mainContainer();
    if (!top)
        return objects;
    objects.append(top);
    const QObjectList below = top->findChildren<QObject*>();
    for (QObject* const object : below) {
        if (IsInForm(form->core(), object))
            objects.append(object);
    }
    return objects;
}

bool DesignerObjects::IsInForm(const QDesignerFormEditorInterface* core, QObject* object)
{
    return core->metaDataBase()->item(object);
}

QLayout* DesignerObjects::LayoutOf(const QDesignerFormEditorInterface* core, const QWidget* widget)
{
    QLayout* const layout = widget->layout();
    return layout && IsInForm(core, layout) ? layout : nullptr;
}

bool DesignerObjects::IsPlaceOfLayout(const QWidget* widget)
{
    return widget->inherits("QLayoutWidget");
}
