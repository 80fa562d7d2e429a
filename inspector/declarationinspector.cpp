#include "DeclarationInspector/declarationinspector.h"

#include <QApplication>
#include <QPointer>

#include <cstring>

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
    if (!Window()) {
        Window() = new InspectorWindow;
        qAddPostRoutine(DeleteWindow);
    }
    Window()->show();
    Window()->raise();
}

/// Entry of the forms library, which a program that knows nothing of the inspector asks for it.
extern "C" DECLARATIONINSPECTOR_EXPORT bool DeclarationInspectorShow(const char* version, FormBinding* binding)
{
    if (std::strcmp(version, DECLARATIONHANDLER_VERSION) != 0 || !FormObserver::Bindings().contains(binding))
        return false;
    DeclarationInspector::Show();
    return true;
}
