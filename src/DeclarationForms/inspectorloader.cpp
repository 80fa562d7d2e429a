#include "DeclarationForms/inspectorloader.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibrary>
#include <QThread>

#include <atomic>

#ifdef Q_OS_UNIX
#include <dlfcn.h>
#endif

#include "DeclarationForms/formlog.h"

namespace {

const char* const Variable = "DECLARATIONFORMS_INSPECT";
const char* const Entry = "DeclarationInspectorShow";

/// Null, or why the inspector shows nothing: it is of another version, or does not see the binding, since it has a copy
/// of this library to itself.
typedef const char* (*ShowFunction)(const char* version, FormBinding* binding);

/// Of what this function is part of; empty where the system does not tell.
QString OwnFolder()
{
#ifdef Q_OS_UNIX
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&OwnFolder), &info) != 0 && info.dli_fname)
        return QFileInfo(QFile::decodeName(info.dli_fname)).absolutePath();
#endif
    return QString();
}

QString Load(FormBinding* binding)
{
    const QString name = QStringLiteral(DECLARATIONFORMS_INSPECTOR);
    const QString folder = OwnFolder();
    QLibrary library;
    if (!folder.isEmpty())
        library.setFileNameAndVersion(folder + QLatin1Char('/') + name, DECLARATIONFORMS_MAJOR);
    if (folder.isEmpty() || !library.load())
        library.setFileNameAndVersion(name, DECLARATIONFORMS_MAJOR);
    const auto show = reinterpret_cast<ShowFunction>(library.resolve(Entry));
    if (!show)
        return QStringLiteral("the inspector is not there: %1").arg(library.errorString());
    const char* const reason = show(DECLARATIONFORMS_VERSION, binding);
    return reason ? QStringLiteral("the inspector %1 %2").arg(library.fileName(), QLatin1String(reason)) : QString();
}

} // namespace

void InspectorLoader::LoadIfAsked(FormBinding* binding)
{
    static std::atomic<bool> isDone{false};
    if (isDone || !qobject_cast<QApplication*>(QCoreApplication::instance())
        || QThread::currentThread() != QCoreApplication::instance()->thread() || isDone.exchange(true))
        return;
    if (qEnvironmentVariableIntValue(Variable) == 0)
        return;
    const QString problem = Load(binding);
    if (!problem.isEmpty())
        qCWarning(FormLog).noquote() << Variable << QLatin1String("is set, but") << problem;
}
