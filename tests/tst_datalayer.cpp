#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

#include "DataLayer/idataobserver.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"
#include "qtversion.h"
#include "support/values.h"

namespace {

IDataPeer& Peer()
{
    return *Ovex_DataPeerFactory(false)->GetDataPeer(0);
}

/// Runs a function at each notification. Unregisters at its end, also where a check fails.
class Observer : public IDataObserver
{
public:
    explicit Observer(std::function<void(const VariableIdentifier&)> run) : m_run(run) {}
    ~Observer() override { Peer().RemoveObserver(this); }
    void OnNotify(const VariableIdentifier& identifier) override { m_run(identifier); }

private:
    const std::function<void(const VariableIdentifier&)> m_run;
};

/// Runs a function in a thread of its own until the end of the scope.
class Worker
{
public:
    explicit Worker(std::function<void()> run) : m_thread(run) {}
    ~Worker() { m_thread.join(); }

private:
    std::thread m_thread;
};

bool Change(const VariableIdentifier& id, const QVariant& value, IDataPeer::ChangeValueFlags flags = IDataPeer::NoFlag)
{
    return Peer().ChangeValue(id, value, flags);
}

} // namespace

class tst_DataLayer : public QObject
{
    Q_OBJECT

    const VariableIdentifier m_id = VariableIdentifier("x", "p");

private Q_SLOTS:
    void init() { Change(m_id, QVariant()); }

    void Identifiers()
    {
        const VariableIdentifier swapped("p", "x");
        QVERIFY(VariableIdentifier("x", "p") == m_id && qHash(VariableIdentifier("x", "p")) == qHash(m_id));
        QVERIFY(swapped != m_id && (swapped < m_id) != (m_id < swapped) && !(m_id < m_id));
        QVERIFY(VariableIdentifier() == VariableIdentifier(QString(), "") && VariableIdentifier("X", "p") != m_id);
        QCOMPARE(QtVersion::TypeNumber("VariableIdentifier"), qMetaTypeId<VariableIdentifier>());
    }

    void Values()
    {
        QCOMPARE(Peer().GetValue(m_id, "default"), QVariant("default"));
        QVERIFY(Change(m_id, 2.0));
        QCOMPARE(Exact(Peer().GetValue(m_id, "default")), QString("2.0"));
        const VariableIdentifier other("x", "q");
        QVERIFY(Peer().AddReference(other));
        QVERIFY(!Peer().GetValue(other, QVariant()).isValid());
    }

    // Value before and after => notifications of a plain and of a forced write.
    void Notifications_data()
    {
        Rows({{"1, 1 => 0 1", "1, 2 => 1 2", "1, '1' => 1 2", "1, 1.0 => 1 2", "1.0, 1.0000000000000002 => 1 2",
               "-, 1 => 1 2", "1, - => 1 2", "-, - => 0 1", "[1], [1] => 0 1", "[1], ['1'] => 1 2",
               "{'a': 1}, {'a': 1.0} => 1 2"}});
    }

    void Notifications()
    {
        QFETCH(QString, given);
        const QVariantList values = Operands(given);
        int calls = 0;
        Observer observer([&](const VariableIdentifier& id) { calls += id == m_id ? 1 : 100; });
        Change(m_id, values.at(0));
        QVERIFY(Peer().AddObserver(m_id, &observer));
        QVERIFY(Peer().AddObserver(m_id, &observer));
        Change(m_id, values.at(1));
        const QString plain = QString::number(calls);
        Change(m_id, values.at(1), IDataPeer::ForceNotification);
        QTEST(plain + " " + QString::number(calls), "expected");
        Peer().RemoveObserver(&observer);
        Change(m_id, "more");
        QVERIFY(calls < 3);
        QVERIFY(!Peer().AddObserver(m_id, nullptr));
    }

    // Observers that write, remove others, or themselves.
    void Reentry()
    {
        QStringList log;
        Observer last([&](const VariableIdentifier&) { log << "last"; });
        Observer second([&](const VariableIdentifier&) {
            log << "second " + Exact(Peer().GetValue(m_id, QVariant()));
            Peer().RemoveObserver(&second);
            Peer().RemoveObserver(&last);
            Change(m_id, 2);
        });
        Observer first([&](const VariableIdentifier&) { log << "first"; });
        for (Observer* const observer : {&first, &second, &last})
            Peer().AddObserver(m_id, observer);
        Change(m_id, 1);
        QCOMPARE(log.join(", "), QString("first, second 1, first"));
    }

    void RemovalWaitsForARunningCall()
    {
        std::atomic<bool> running(false);
        std::atomic<bool> returned(false);
        std::atomic<bool> finishedFirst(false);
        Observer observer([&](const VariableIdentifier&) {
            running = true;
            QTest::qSleep(50);
            finishedFirst = !returned;
        });
        Peer().AddObserver(m_id, &observer);
        const Worker writer([&] { Change(m_id, 1); });
        while (!running)
            std::this_thread::yield();
        Peer().RemoveObserver(&observer);
        returned = true;
        QVERIFY(finishedFirst);
    }

    // Each of two observers removes the other one while both are called.
    void MutualRemovalEnds()
    {
        const VariableIdentifier ids[] = {m_id, VariableIdentifier("y", "p")};
        std::atomic<int> running(0);
        std::unique_ptr<Observer> observers[2];
        for (const int i : {0, 1}) {
            observers[i].reset(new Observer([&, i](const VariableIdentifier&) {
                for (++running; running < 2;)
                    std::this_thread::yield();
                Peer().RemoveObserver(observers[1 - i].get());
            }));
            Peer().AddObserver(ids[i], observers[i].get());
        }
        {
            const Worker worker([&] { Change(ids[1], 1); });
            Change(ids[0], 1);
        }
        QCOMPARE(int(running), 2);
    }
};

QTEST_MAIN(tst_DataLayer)
#include "tst_datalayer.moc"
