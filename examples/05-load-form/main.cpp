// A form drawn in Designer, with its statements in dynamic properties, loaded while the program runs.

#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QUiLoader>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
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
    FormBinding binding(form.data());
    binding.SetDefaultPackage("Guest");
    const bool isSound = binding.Bind();
    //! [bind]
    const QVector<BoundProperty> properties = binding.BoundProperties();
    for (const BoundProperty& bound : properties)
        QTextStream(stdout) << bound.object->objectName() << ' ' << bound.property << ": " << bound.statement << '\n';

    const QLabel* const greeting = form->findChild<QLabel*>("greeting");
    Expect("bound without an error", isSound, true);
    Expect("statements", int(properties.count()), 4);
    Expect("greeting", greeting->text(), "Good morning, Ada!");

    form->findChild<QCheckBox*>("awake")->setChecked(false);
    Expect("edited", binding.IsEdited(), true);
    binding.Save();
    QCoreApplication::processEvents();
    Expect("greeting after a save", greeting->text(), "Good night, Ada!");
    return failures;
}
