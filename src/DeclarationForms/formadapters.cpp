#include "DeclarationForms/formadapters.h"

#include <QMetaObject>

#include <utility>

#include "DeclarationForms/adapterregistry.h"
#include "DeclarationForms/formlog.h"
#include "DeclarationForms/formwalk.h"

namespace {

bool HasSignal(const QMetaObject& type, const QByteArray& signal)
{
    // Behind the code that SIGNAL() puts in front.
    return signal.startsWith(char('0' + QSIGNAL_CODE))
        && type.indexOfSignal(QMetaObject::normalizedSignature(signal.constData() + 1)) >= 0;
}

} // namespace

void FormAdapters::Register(const QMetaObject* type, const QString& property,
                            std::function<QVariant(const QObject*)> read,
                            std::function<bool(QObject*, const QVariant&)> write, const char* notifySignal)
{
    const bool isName = !property.isEmpty() && !FormWalk::IsMarked(property.toUtf8());
    if (!type || !isName || !read || !write) {
        qCWarning(FormLog).noquote() << QStringLiteral("An adapter for \"%1\" needs a class, a name without a marker, "
                                                       "and functions to read and to write")
                                            .arg(Printable(property));
        return;
    }
    const bool isSignal = !notifySignal || HasSignal(*type, notifySignal);
    if (!isSignal)
        qCWarning(FormLog).noquote() << QStringLiteral("The adapter for \"%1\" of %2 tells of no changes: the class "
                                                       "has no signal \"%3\", as SIGNAL() writes it")
                                            .arg(Printable(property), QString::fromUtf8(type->className()),
                                                 Printable(QString::fromUtf8(notifySignal)));
    AdapterRegistry::Table().Add(type, property,
                                 {std::move(read), std::move(write), QByteArray(isSignal ? notifySignal : nullptr)});
}

bool FormAdapters::IsAdapted(const QObject* object, const QString& property)
{
    return object && AdapterRegistry::Find(object, property);
}
