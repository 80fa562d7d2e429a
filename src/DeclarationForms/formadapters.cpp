#include "DeclarationForms/formadapters.h"

#include <utility>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/formlog.h"

void FormAdapters::Register(const QMetaObject* type, const QString& property,
                            std::function<QVariant(const QObject*)> read,
                            std::function<bool(QObject*, const QVariant&)> write, const char* notifySignal)
{
    if (!type || property.isEmpty() || !read || !write) {
        qCWarning(FormLog, "An adapter for \"%ls\" needs a class, a name, and functions to read and to write",
                  qUtf16Printable(property));
        return;
    }
    AdapterRegistry::Table().Add(type, property, {std::move(read), std::move(write), notifySignal});
}

bool FormAdapters::IsAdapted(const QObject* object, const QString& property)
{
    return object && AdapterRegistry::Find(object, property);
}
