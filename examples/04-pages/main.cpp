// Statements that read other widgets, on pages that come and go.

#include <QApplication>
#include <QLabel>
#include <QScopedPointer>
#include <QSlider>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "expect.h"

namespace {

/// As a page that is made when it is first needed.
QWidget* MakePage(QWidget* form)
{
    auto* const page = new QWidget(form);
    auto* const slider = new QSlider(page);
    slider->setObjectName("slider");
    slider->setProperty("_value", "@Engine:throttle");
    return page;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier throttle("throttle", "Engine");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(throttle, 30, IDataPeer::NoFlag);

    QWidget form;
    auto* const label = new QLabel("no throttle", &form);
    label->setProperty("~text", "@TopWidget\\slider:value");
    label->setProperty("text_format", "Throttle {} %");
    FormBinding binding(&form);
    binding.Bind();
    Expect("label before its slider is there", label->text(), "no throttle");
    Expect("problem", int(binding.Problems().value(0).kind), int(FormProblem::UnknownObject));

    QScopedPointer<QWidget> page(MakePage(&form));
    binding.Bind(page.data());
    QCoreApplication::processEvents();
    Expect("label with the page", label->text(), "Throttle 30 %");
    Expect("problems then", int(binding.Problems().count()), 0);

    // The label follows the data, and the user's hand as well.
    data->ChangeValue(throttle, 55, IDataPeer::NoFlag);
    QCoreApplication::processEvents();
    Expect("label after a change of the data", label->text(), "Throttle 55 %");
    auto* const slider = page->findChild<QSlider*>("slider");
    slider->setValue(70);
    QCoreApplication::processEvents();
    Expect("label after a move of the slider", label->text(), "Throttle 70 %");

    page.reset();
    QCoreApplication::processEvents();
    Expect("label without the page", label->text(), "no throttle");
    return failures;
}
