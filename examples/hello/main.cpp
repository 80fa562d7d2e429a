#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(VariableIdentifier("name", "Guest"), "world", IDataPeer::NoFlag);

    QWidget form;
    auto* const layout = new QVBoxLayout(&form);
    auto* const greeting = new QLabel;
    auto* const name = new QLineEdit;
    layout->addWidget(greeting);
    layout->addWidget(name);

    FormBinding binding(&form);
    binding.SetDefaultPackage("Guest");
    binding.SetSavePolicy(FormBinding::SaveOnEditingFinished);
    binding.Bind(greeting, "~text", "'Hello, ' + name + '!'");
    binding.Bind(name, "_text", "name");
    form.show();
    return application.exec();
}
