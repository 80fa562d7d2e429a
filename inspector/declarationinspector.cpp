#include "DeclarationInspector/declarationinspector.h"

#include <QApplication>
#include <QPointer>
#include <QThread>

#include <cstring>
#include <mutex>

#include "DeclarationForms/formobserver.h"
#include "inspectorwindow.h"

namespace {

QPointer<InspectorWindow>& Window()
{
    static QPointer<InspectorWindow> window;
    return window;
}

void DeleteWindow()
{
    delete Window();
}

} // namespace

void DeclarationInspector::Show()
{
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) {
        qWarning("The inspector needs a QApplication.");
        return;
    }
    if (QThread::currentThread() != QCoreApplication::instance()->thread()) {
        qWarning("The inspector is shown in the thread of the widgets alone.");
        return;
    }
    if (!Window()) {
        static std::once_flag once;
        std::call_once(once, [] { qAddPostRoutine(DeleteWindow); });
        Window() = new InspectorWindow;
    }
    Window()->show();
    Window()->raise();
}

/// Entry of the forms library, which a program that knows nothing of the inspector asks for it.
extern "C" DECLARATIONINSPECTOR_EXPORT const char* DeclarationInspectorShow(const char* version, FormBinding* binding)
{
    if (std::strcmp(version, DECLARATIONHANDLER_VERSION) != 0)
        return "is of another version";
    if (!FormObserver::Bindings().contains(binding))
        return "has a copy of the forms library to itself";
    DeclarationInspector::Show();
    return nullptr;
}
