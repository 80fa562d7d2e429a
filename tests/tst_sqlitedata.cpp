#include <QProcess>
#include <QtTest>

#include <atomic>
#include <thread>

#include "DataLayer/idataobserver.h"
#include "sqlitedatapeer.h"

namespace {

const VariableIdentifier Rpm("rpm", "Engine");

class Observer : public IDataObserver
{
public:
    void OnNotify(const VariableIdentifier& identifier) override
    {
        if (identifier == Rpm)
            ++m_calls;
        std::this_thread::sleep_for(m_duration);
        m_returned = m_calls.load();
    }

    std::atomic<int> m_calls{0};
    std::atomic<int> m_returned{0};
    std::chrono::milliseconds m_duration{0};
};

/// The example's form in a process of its own.
class Form : public QProcess
{
public:
    explicit Form(const QString& file) { start(SQLITEFORM, {file, "--script"}); }
    ~Form() override
    {
        closeWriteChannel();
        waitForFinished();
    }

    void Enter(const QByteArray& name) { write(name + '\n'); }
    /// The last greeting printed so far.
    QByteArray Shown()
    {
        m_printed += readAllStandardOutput();
        return m_printed.split('\n').value(m_printed.count('\n') - 1);
    }

private:
    QByteArray m_printed;
};

} // namespace

/// The example of a host's own data layer, alone and with a form.
class tst_SqliteData : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void Values_data();
    void Values();
    void RemovalWaits();
    void Refusals();
    void Forms();

private:
    QTemporaryDir m_folder;
};

void tst_SqliteData::Values_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("int") << QVariant(900);
    QTest::newRow("double that is nearly an int") << QVariant(900.0000000000001);
    QTest::newRow("text that looks like the int") << QVariant("900");
    QTest::newRow("empty text") << QVariant(QString(""));
    QTest::newRow("list with a map") << QVariant(QVariantList{1, QVariantMap{{"key", true}}});
    QTest::newRow("none") << QVariant();
}

/// Kept with their types, and followed by another peer on the same file.
void tst_SqliteData::Values()
{
    QFETCH(QVariant, value);
    const QString file = m_folder.filePath("values");
    Observer observer;
    SqliteDataPeer writer;
    SqliteDataPeer follower;
    QCOMPARE(writer.Open(file), QString());
    QVERIFY(writer.ChangeValue(Rpm, "before", IDataPeer::NoFlag));
    QCOMPARE(follower.Open(file), QString());
    QVERIFY(follower.AddObserver(Rpm, &observer));

    QVERIFY(writer.ChangeValue(Rpm, value, IDataPeer::NoFlag));
    QTRY_COMPARE(observer.m_calls.load(), 1);
    QCOMPARE(follower.GetValue(Rpm, QVariant()), value);
    QCOMPARE(follower.GetValue(Rpm, QVariant()).userType(), value.userType());

    // What is there already is no change, unless that is asked for.
    QVERIFY(follower.ChangeValue(Rpm, value, IDataPeer::NoFlag));
    QCOMPARE(observer.m_calls.load(), 1);
    QVERIFY(follower.ChangeValue(Rpm, value, IDataPeer::ForceNotification));
    QCOMPARE(observer.m_calls.load(), 2);
}

void tst_SqliteData::RemovalWaits()
{
    SqliteDataPeer peer;
    QCOMPARE(peer.Open(m_folder.filePath("removal")), QString());
    Observer observer;
    observer.m_duration = std::chrono::milliseconds(50);
    peer.AddObserver(Rpm, &observer);
    std::thread writer([&] { peer.ChangeValue(Rpm, 1, IDataPeer::NoFlag); });
    QTRY_COMPARE(observer.m_calls.load(), 1);
    peer.RemoveObserver(&observer);
    QCOMPARE(observer.m_returned.load(), 1);
    writer.join();
    peer.ChangeValue(Rpm, 2, IDataPeer::NoFlag);
    QCOMPARE(observer.m_calls.load(), 1);
}

void tst_SqliteData::Refusals()
{
    SqliteDataPeer peer;
    QVERIFY(!peer.Open(m_folder.filePath("no/such/folder")).isNull());
    QVERIFY(!peer.ChangeValue(Rpm, 1, IDataPeer::NoFlag));
    QCOMPARE(peer.Open(m_folder.filePath("refusals")), QString());
    QVERIFY(!peer.ChangeValue(Rpm, QVariant::fromValue<QObject*>(this), IDataPeer::NoFlag));
    QVERIFY(!peer.GetValue(Rpm, QVariant()).isValid());
}

/// The form's data survives a restart, and two running instances follow each other.
void tst_SqliteData::Forms()
{
    const QString file = m_folder.filePath("forms");
    {
        Form first(file);
        first.Enter("Ada");
        QTRY_COMPARE_WITH_TIMEOUT(first.Shown(), QByteArray("Hello, Ada!"), 30000);
    }
    Form second(file);
    Form third(file);
    QTRY_COMPARE_WITH_TIMEOUT(second.Shown(), QByteArray("Hello, Ada!"), 30000);
    QTRY_COMPARE_WITH_TIMEOUT(third.Shown(), QByteArray("Hello, Ada!"), 30000);
    second.Enter("Grace");
    QTRY_COMPARE_WITH_TIMEOUT(third.Shown(), QByteArray("Hello, Grace!"), 30000);
    third.Enter("Joan");
    QTRY_COMPARE_WITH_TIMEOUT(second.Shown(), QByteArray("Hello, Joan!"), 30000);
}

QTEST_MAIN(tst_SqliteData)
#include "tst_sqlitedata.moc"
