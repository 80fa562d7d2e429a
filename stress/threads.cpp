#include <QApplication>
#include <QElapsedTimer>
#include <QWidget>

#include <functional>
#include <thread>

#include "DataLayer/idatapeerfactory.h"
#include "DeclarationHandler/declarationhandler.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/parser.h"
#include "check.h"
#include "countingpeer.h"
#include "writers.h"

// Eight threads write variables at full speed while this one fills, updates, saves and clears the handlers of two
// forms; four more parse, and two share an interpreter. Takes the number of seconds, 10 if none is given.

namespace {

const int FormCount = 2;
const int WritesPerBurst = 2000;  ///< Of which every notification is counted.
const int WritesPerChurn = 20000; ///< Most of which are notified to declarations that die before they hear of it.

CountingPeer* s_peer = nullptr;

class Factory : public IDataPeerFactory
{
public:
    IDataPeer* GetDataPeer(const qint32&) override { return s_peer; }
};

/// Half of the declarations read one variable each, the others the first ones' properties.
class Form
{
public:
    Form()
    {
        for (int i = 0; i < VariableCount; ++i)
            (new QObject(&m_top))->setObjectName("o" + QString::number(i));
    }
    ~Form() { m_handler.Clear(); }

    DeclarationHandler& Handler() { return m_handler; }
    QObject* Object(int number) { return m_top.children().at(number); }

    // Every second variable is written back by a save, the others by their writers alone.
    void Fill()
    {
        for (int i = 0; i < VariableCount; ++i) {
            m_handler.AddDeclaration(&m_top, Object(i), "_p", "v" + QString::number(i), "p", i % 2 == 1, false);
            const QString statement = QString("@TopWidget\\o%1:p + '!'").arg(i);
            m_handler.AddDeclaration(&m_top, Object(i), "~q", statement, "p", true, false);
        }
        m_handler.ConnectPropertyCrossReferences();
        m_handler.Update();
    }

private:
    QWidget m_top;
    DeclarationHandler m_handler;
};

/// Runs the same in several threads until its end.
class Others
{
public:
    Others(int count, const std::function<bool()>& isRight)
    {
        for (int i = 0; i < count; ++i) {
            m_threads.emplace_back([=] {
                for (; !m_end.load(std::memory_order_relaxed); m_runs.fetch_add(1, std::memory_order_relaxed))
                    m_wrong.fetch_add(!isRight(), std::memory_order_relaxed);
            });
        }
    }

    void End()
    {
        m_end = true;
        for (std::thread& thread : m_threads)
            thread.join();
    }

    int Wrong() const { return m_wrong; }
    int Runs() const { return m_runs; }

private:
    std::atomic<bool> m_end{false};
    std::atomic<int> m_wrong{0};
    std::atomic<int> m_runs{0};
    std::vector<std::thread> m_threads;
};

bool ParsesRightly()
{
    Parser parser;
    parser.Tokenize("(NOT w + 'x' = \"7x\") OR (w - -1) * 2 > 15 AND HASVALUE @p:w");
    const std::unique_ptr<IExpression> tree(parser.Parse(s_peer, nullptr, nullptr, nullptr, "p", true));
    return tree && tree->Retrieve() == true;
}

bool InterpretsRightly(Interpreter* interpreter)
{
    const std::unique_ptr<IExpression> tree(interpreter->CreateStatement("@p:w * 3", true, nullptr));
    return tree && tree->Retrieve() == 21.0 && interpreter->Evaluate("@p:w - 1", nullptr) == 6.0;
}

/// What must hold once all writers rest and all that was queued is delivered.
void CheckQuiet(Form* form, const Writers& writers, Checks* checks)
{
    for (int i = 0; i < VariableCount; ++i) {
        const QVariant value = form->Object(i)->property("p");
        checks->Hold(value == s_peer->GetValue(Variable(i), QVariant()), "a property holds its variable's value");
        checks->Hold(form->Object(i)->property("q") == value.toString() + "!", "its reader follows");
        checks->Hold(i % 2 == 0 || value.toInt() == writers.LastValue(i), "the last write is not lost");
    }
}

/// The handlers are cleared and filled, which empties the queue of notifications, while all others work.
void Churn(Form* forms)
{
    for (int i = 0; i < FormCount; ++i) {
        Form& form = forms[i];
        form.Handler().Save(nullptr, QString());
        form.Handler().Clear();
        form.Fill();
        form.Handler().SaveProperty(form.Object(0), "p");
    }
    QCoreApplication::processEvents();
}

/// From the filling on, each evaluation is due to a notification or an update.
qint64 Round(Form* forms, Writers* writers, Checks* checks)
{
    writers->Start(WritesPerChurn);
    while (!writers->AreIdle())
        Churn(forms);
    for (int i = 0; i < FormCount; ++i)
        forms[i].Handler().Clear();
    const qint64 readsBefore = s_peer->Reads();
    for (int i = 0; i < FormCount; ++i)
        forms[i].Fill();
    writers->Start(WritesPerBurst);
    forms[0].Handler().Update();
    forms[1].Handler().Save(nullptr, QString());
    while (!writers->AreIdle())
        QCoreApplication::processEvents();
    QCoreApplication::processEvents();

    const qint64 updates = qint64(FormCount + 1) * VariableCount;
    const qint64 evaluations = s_peer->Reads() - readsBefore;
    checks->Hold(evaluations == s_peer->Notifications() + updates, "each notification is one evaluation");
    for (int i = 0; i < FormCount; ++i)
        CheckQuiet(&forms[i], *writers, checks);
    return evaluations;
}

} // namespace

IDataPeerFactory* Ovex_DataPeerFactory(bool)
{
    static Factory factory;
    return &factory;
}

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    const double seconds = argc > 1 ? QByteArray(argv[1]).toDouble() : 10;
    qRegisterMetaType<VariableIdentifier>("VariableIdentifier");
    CountingPeer peer;
    s_peer = &peer;
    peer.ChangeValue(VariableIdentifier("w", "p"), 7, IDataPeer::NoFlag);
    for (int i = 0; i < VariableCount; ++i)
        peer.ChangeValue(Variable(i), 0, IDataPeer::NoFlag);

    Checks checks;
    int rounds = 0;
    qint64 evaluations = 0;
    {
        Form forms[FormCount];
        Writers writers(&peer);
        Interpreter interpreter(&peer, nullptr, nullptr);
        Others parsers(4, ParsesRightly);
        Others interpreters(2, [&] { return InterpretsRightly(&interpreter); });
        QElapsedTimer clock;
        for (clock.start(); clock.elapsed() < seconds * 1000; ++rounds)
            evaluations += Round(forms, &writers, &checks);
        parsers.End();
        interpreters.End();
        writers.End();
        checks.Hold(evaluations > 0 && parsers.Runs() > 0 && interpreters.Runs() > 0, "everybody was at work");
        checks.Hold(parsers.Wrong() == 0, "parsing in several threads gives the right values");
        checks.Hold(interpreters.Wrong() == 0, "an interpreter shared by threads gives the right values");
        std::printf("%d rounds, %lld writes, %lld evaluations counted, %d statements parsed, %d interpreted\n", rounds,
                    writers.Writes(), evaluations, parsers.Runs(), interpreters.Runs());
    }
    checks.Hold(peer.LateNotifications() == 0, "nothing is delivered after RemoveObserver");
    return checks.Result();
}
