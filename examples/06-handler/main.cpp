// The layer below the forms: a handler keeps properties equal to statements, and a save writes all of them back.

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier limits("limits", "Engine");
    const VariableIdentifier muted("muted", "Engine");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(limits, QVariantList{60, 90}, IDataPeer::NoFlag);
    data->ChangeValue(muted, true, IDataPeer::NoFlag);

    QWidget form;
    auto* const upperLimit = new QSpinBox(&form);
    auto* const horn = new QCheckBox(&form);
    auto* const label = new QLabel(&form);
    DeclarationHandler handler;
    handler.AddDeclaration(&form, upperLimit, "_value", "limits[1]", "Engine", false, false);
    handler.AddDeclaration(&form, horn, "_checked", "NOT muted", "Engine", false, false);
    handler.AddDeclaration(&form, label, "~text", "limits[0]", "Engine", true, false);
    handler.Update();
    Expect("upper limit", upperLimit->value(), 90);
    Expect("horn", horn->isChecked(), false);

    // What the user does reaches the data with the next save, no sooner.
    upperLimit->setValue(95);
    horn->setChecked(true);
    label->setText("0");
    Expect("limits[1] before the save", data->GetValue(limits, QVariant()).toList().at(1), 90);
    handler.SaveProperty(horn, "checked");
    Expect("muted after saving one property", data->GetValue(muted, QVariant()), false);
    Expect("limits[1] still", data->GetValue(limits, QVariant()).toList().at(1), 90);

    // A list is written as a whole, with the one element replaced. A read-only statement refuses.
    handler.Save(nullptr, QString());
    const QVariantList saved = data->GetValue(limits, QVariant()).toList();
    Expect("limits[1] after the save", saved.at(1), 95);
    Expect("limits[0], bound read-only", saved.at(0), 60);
    return failures;
}
