#ifndef OBJECTSELECTION_H
#define OBJECTSELECTION_H

#include <QVector>

class QDesignerFormWindowInterface;
class QObject;

/// What is selected in a form. Designer selects widgets; other objects it shows in the property editor alone.
namespace ObjectSelection {

/// The widgets with their layouts; or else the object that is no widget and that the property editor shows.
QVector<QObject*> Of(const QDesignerFormWindowInterface* form);

/// Selects a widget, or the widget of a layout, and brings the pages to the front that it lies on. Other objects are
/// shown in the property editor.
void Select(QDesignerFormWindowInterface* form, QObject* object);

} // namespace ObjectSelection

#endif
