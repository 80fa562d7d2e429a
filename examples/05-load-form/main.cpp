// A form drawn in Designer, with its statements in dynamic properties, loaded while the program runs.

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QUiLoader>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "bindform/bindform.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QFile file(application.arguments().value(1));
    const QScopedPointer<QWidget> form(file.open(QIODevice::ReadOnly) ? QUiLoader().load(&file) : nullptr);
    if (!form) {
        qCritical("Usage: 05-load-form FORM, with the form.ui from this program's source folder");
        return 1;
    }

    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(VariableIdentifier("name", "Guest"), "Ada", IDataPeer::NoFlag);
    data->ChangeValue(VariableIdentifier("awake", "Guest"), true, IDataPeer::NoFlag);

    //! [bind]
    // The form brings its statements along; the program names none.
    DeclarationHandler handler;
    const FormBinding binding = BindForm(handler, form.data(), "Guest");
    handler.ConnectPropertyCrossReferences();
    handler.Update();
    //! [bind]
    for (const MarkedProperty& property : binding.declarations)
        QTextStream(stdout) << property.object->objectName() << ' ' << property.name << ": " << property.text << '\n';

    const QLabel* const greeting = form->findChild<QLabel*>("greeting");
    Expect("statements", binding.declarations.count(), 4);
    Expect("entries of constant maps", binding.constants.count(), 2);
    Expect("refused", binding.refused.count(), 0);
    Expect("greeting", greeting->text(), "Good morning, Ada!");

    form->findChild<QCheckBox*>("awake")->setChecked(false);
    handler.Save(nullptr, QString());
    QCoreApplication::processEvents();
    Expect("greeting after a save", greeting->text(), "Good night, Ada!");
    return failures;
}
