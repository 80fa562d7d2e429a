// The layer below the forms: statements that read properties of other widgets, and run when those are written.

#include <QApplication>
#include <QLabel>
#include <QSlider>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier throttle("throttle", "Engine");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(throttle, 30, IDataPeer::NoFlag);

    // Widget paths find their objects by name, when the declaration is added.
    QWidget form;
    auto* const slider = new QSlider(&form);
    slider->setObjectName("slider");
    auto* const label = new QLabel(&form);
    label->setObjectName("label");

    // The title reads the label, the label reads the slider, and the slider follows the data.
    DeclarationHandler handler;
    handler.AddDeclaration(&form, &form, "~windowTitle", "'Throttle ' + @Widget\\label:text", "", true, false);
    handler.AddDeclaration(&form, label, "~text", "@ParentWidget\\slider:value + ' %'", "", true, false);
    handler.AddDeclaration(&form, slider, "_value", "@Engine:throttle", "", false, false);
    handler.ConnectPropertyCrossReferences();
    handler.Update();
    Expect("title", form.windowTitle(), "Throttle 30 %");

    // One change of data runs through the whole chain.
    data->ChangeValue(throttle, 55, IDataPeer::NoFlag);
    QCoreApplication::processEvents();
    Expect("title after a change of the data", form.windowTitle(), "Throttle 55 %");

    // Moving the slider writes no declaration's property; saving it does, by way of the data.
    slider->setValue(70);
    QCoreApplication::processEvents();
    Expect("title after a move of the slider", form.windowTitle(), "Throttle 55 %");
    handler.SaveProperty(slider, "value");
    QCoreApplication::processEvents();
    Expect("title after the save", form.windowTitle(), "Throttle 70 %");
    return failures;
}
