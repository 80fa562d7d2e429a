#ifndef DESIGNEROBJECTS_H
#define DESIGNEROBJECTS_H

#include <QString>
#include <QVector>

class QDesignerDynamicPropertySheetExtension;
class QDesignerFormEditorInterface;
class QDesignerFormWindowInterface;
class QDesignerPropertySheetExtension;
class QLayout;
class QObject;
class QWidget;

/// What Designer tells of the objects of its forms.
namespace DesignerObjects {

/// Null for objects that Designer does not know.
QDesignerPropertySheetExtension* Sheet(const QDesignerFormEditorInterface* core, QObject* object);
/// Null where nobody can add properties.
QDesignerDynamicPropertySheetExtension* DynamicSheet(const QDesignerFormEditorInterface* core, QObject* object);

/// The place of a property in the object's sheet, if it is a dynamic one that is there; else -1.
int DynamicIndex(const QDesignerFormEditorInterface* core, QObject* object, const QString& property);

/// The class as the form's file names it.
QString ClassName(const QDesignerFormEditorInterface* core, QObject* object);
/// The name, or else the class.
QString Label(const QDesignerFormEditorInterface* core, QObject* object);

/// The objects that the form's file holds, widgets, layouts, actions and groups.
QVector<QObject*> InForm(const QDesignerFormWindowInterface* form);
/// Whether the form's file holds it.
bool IsInForm(const QDesignerFormEditorInterface* core, QObject* object);
/// The layout of a widget, if the form's file holds that; else null.
QLayout* LayoutOf(const QDesignerFormEditorInterface* core, const QWidget* widget);
/// Whether the widget is nothing but the place of a layout.
bool IsPlaceOfLayout(const QWidget* widget);

} // namespace DesignerObjects

#endif
