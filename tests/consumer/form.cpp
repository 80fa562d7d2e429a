// A host outside this project that binds a whole form, built against an installed copy.
#include <QApplication>
#include <QLabel>

#include <cstdio>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formadapters.h"
#include "DeclarationForms/formbinding.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    QLabel label;
    label.setProperty("~text", "'Speed: ' + @Engine:rpm");
    FormAdapters::Register(
        &QLabel::staticMetaObject, "upperText",
        [](const QObject* object) { return object->property("text").toString().toUpper(); },
        [](QObject* object, const QVariant& value) { return object->setProperty("text", value.toString().toUpper()); });
    FormBinding binding(&label);
    const bool isBound = binding.Bind();

    data->ChangeValue(VariableIdentifier("rpm", "Engine"), 900, IDataPeer::NoFlag);
    QApplication::processEvents();
    std::puts(qPrintable(label.text()));
    return isBound && FormBinding::staticMetaObject.inherits(&QObject::staticMetaObject) ? 0 : 1;
}
