#ifndef BINDABLEPROPERTIES_H
#define BINDABLEPROPERTIES_H

#include <QStringList>

class QDesignerFormEditorInterface;
class QObject;

/// Which properties of an object statements can bind.
namespace BindableProperties {

/// Whether a property of that name is one with a statement.
bool IsMarked(const QString& name);
/// «~» or «_» with the name.
QString Marked(const QString& name, bool isWrittenBack);

/// The type of a property, as its class names it; empty where nobody knows it.
QString TypeOf(const QObject* object, const QString& name);

/// The properties that can be bound and are not yet: the limits of what the user edits, that itself, and then all
/// others, those of the class before those of its bases.
QStringList Unbound(const QDesignerFormEditorInterface* core, QObject* object);

} // namespace BindableProperties

#endif
