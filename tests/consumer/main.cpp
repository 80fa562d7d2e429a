// A host outside this project, built against an installed copy. It binds a label to a variable, writes
// the variable and prints what the label then shows.
#include <QApplication>
#include <QLabel>

#include <cstdio>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/Declarations/declproperty.h"
#include "DeclarationHandler/declarationhandler.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    QLabel label;
    DeclarationHandler handler;
    handler.AddDeclaration(&label, &label, "~text", "'Speed: ' + rpm", "Engine", true, false);
    handler.Update();

    data->ChangeValue(VariableIdentifier("rpm", "Engine"), 900, IDataPeer::NoFlag);
    QApplication::processEvents();
    std::puts(qPrintable(label.text()));
    // The classes come with their meta-objects.
    return DeclProperty::staticMetaObject.inherits(&Declaration::staticMetaObject) ? 0 : 1;
}
