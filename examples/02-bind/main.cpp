// Binding properties of a widget: they follow the data.

#include <QApplication>
#include <QProgressBar>
#include <QScopedPointer>
#include <QThread>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationHandler/declarationhandler.h"
#include "expect.h"

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const VariableIdentifier fuel("fuel", "Boat");
    IDataPeer* const data = Ovex_DataPeerFactory(false)->GetDataPeer(0);
    data->ChangeValue(fuel, 80, IDataPeer::NoFlag);

    // "~" marks a property that only reads. "Boat" is the package of variables named without one.
    QProgressBar bar;
    DeclarationHandler handler;
    handler.AddDeclaration(&bar, &bar, "~value", "fuel", "Boat", true, false);
    handler.AddDeclaration(&bar, &bar, "~toolTip", "fuel + ' percent of ' + @Boat\\Tank:litres + ' l'", "Boat", true,
                           false);
    handler.AddDeclaration(&bar, &bar, "~enabled", "HASVALUE @Boat\\Tank:litres", "Boat", true, false);

    // Nothing is evaluated before the first Update().
    Expect("value at first", bar.value(), -1);
    handler.Update();
    Expect("value after Update()", bar.value(), 80);
    Expect("enabled while a variable is missing", bar.isEnabled(), false);

    // Any thread may change data. The widget follows in its own thread, from the event loop.
    const QScopedPointer<QThread> worker(QThread::create([&] {
        data->ChangeValue(fuel, 79, IDataPeer::NoFlag);
        data->ChangeValue(VariableIdentifier("litres", "Boat\\Tank"), 400, IDataPeer::NoFlag);
    }));
    worker->start();
    worker->wait();
    Expect("value before the event loop runs", bar.value(), 80);
    QCoreApplication::processEvents();
    Expect("value after it", bar.value(), 79);
    Expect("tool tip", bar.toolTip(), "79 percent of 400 l");
    Expect("enabled", bar.isEnabled(), true);
    return failures;
}
