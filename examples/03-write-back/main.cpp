// Writing back: a save takes what the user has changed into the data, and only that.

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QSpinBox>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier limits("limits", "Engine");
    const VariableIdentifier muted("muted", "Engine");
    const VariableIdentifier hours("hours", "Engine");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(limits, QVariantList{60, 90}, IDataPeer::NoFlag);
    data->ChangeValue(muted, true, IDataPeer::NoFlag);
    data->ChangeValue(hours, 12480, IDataPeer::NoFlag);

    QWidget form;
    auto* const upperLimit = new QSpinBox(&form);
    auto* const horn = new QCheckBox(&form);
    auto* const service = new QLineEdit(&form);
    FormBinding binding(&form);
    binding.SetDefaultPackage("Engine");
    binding.Bind(upperLimit, "_value", "limits[1]");
    binding.Bind(horn, "_checked", "NOT muted");
    binding.Bind(service, "_text", "hours");
    Expect("edited at first", binding.IsEdited(), false);

    // What the user has changed stays while data arrive, until it is saved or reverted.
    upperLimit->setValue(95);
    horn->setChecked(true);
    service->setText("soon");
    data->ChangeValue(limits, QVariantList{65, 92}, IDataPeer::NoFlag);
    QCoreApplication::processEvents();
    Expect("upper limit", upperLimit->value(), 95);
    Expect("edited", binding.IsEdited(), true);

    // A list is written as a whole, with the one element replaced. An integer takes no word.
    const FormSaveResult result = binding.Save();
    Expect("saved", result.saved, 2);
    Expect("refused", result.refused.value(0).object == service, true);
    Expect("limits", data->GetValue(limits, QVariant()), QVariantList{65, 95});
    Expect("muted", data->GetValue(muted, QVariant()), false);
    Expect("hours", data->GetValue(hours, QVariant()), 12480);

    service->setText("12500");
    Expect("saved once it is a number", binding.Save().saved, 1);
    Expect("hours, an integer as before", data->GetValue(hours, QVariant()), 12500);

    horn->setChecked(false);
    binding.Revert();
    Expect("horn after a revert", horn->isChecked(), true);
    return failures;
}
