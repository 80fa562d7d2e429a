#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(VariableIdentifier("name", "Guest"), "world", IDataPeer::NoFlag);

    QWidget form;
    auto* const greeting = new QLabel;
    auto* const name = new QLineEdit;
    auto* const layout = new QVBoxLayout(&form);
    layout->addWidget(greeting);
    layout->addWidget(name);

    DeclarationHandler handler;
    handler.AddDeclaration(&form, greeting, "~text", "'Hello, ' + name + '!'", "Guest", true, true);
    handler.AddDeclaration(&form, name, "_text", "name", "Guest", false, true);
    handler.ConnectPropertyCrossReferences();
    handler.Update();

    // Return writes the text back into the variable, and the greeting follows.
    QObject::connect(name, &QLineEdit::returnPressed, [&] { handler.SaveProperty(name, "text"); });
    form.show();
    return application.exec();
}
