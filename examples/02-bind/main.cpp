// Binding properties of widgets: they follow the data, and what is wrong is told.

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScopedPointer>
#include <QThread>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/formbinding.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier fuel("fuel", "Boat");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(fuel, 80.25, IDataPeer::NoFlag);

    // A form as Designer makes it: "~" marks the statement of a property, which only reads.
    QWidget form;
    auto* const bar = new QProgressBar(&form);
    auto* const label = new QLabel("no tank", &form);
    label->setObjectName("label");
    bar->setProperty("~value", "fuel");
    label->setProperty("~text", "@Boat\\Tank:litres");
    label->setProperty("text_format", "{:.1f} litres");
    label->setProperty("~toolTip", "'about ' fuel");

    // "Boat" is the package of variables named without one.
    FormBinding binding(&form);
    binding.SetDefaultPackage("Boat");
    Expect("bound without an error", binding.Bind(), false);
    const QVector<FormProblem> problems = binding.Problems();
    Expect("problems", int(problems.count()), 2);
    Expect("the first", int(problems.value(0).kind), int(FormProblem::LeftOver));
    Expect("where", problems.value(0).position, 9);
    Expect("the second", int(problems.value(1).kind), int(FormProblem::NoValue));
    Expect("value", bar->value(), 80);
    Expect("text while a variable is missing", label->text(), "no tank");

    // Any thread may change data. The widgets follow in their own thread, from the event loop.
    const QScopedPointer<QThread> worker(QThread::create([&] {
        data->ChangeValue(fuel, 50.5, IDataPeer::NoFlag);
        data->ChangeValue(VariableIdentifier("litres", "Boat\\Tank"), 202.04, IDataPeer::NoFlag);
    }));
    worker->start();
    worker->wait();
    Expect("text before the event loop runs", label->text(), "no tank");
    QCoreApplication::processEvents();
    Expect("text after it", label->text(), "202.0 litres");
    Expect("problems that are left", int(binding.Problems().count()), 1);
    return failures;
}
