#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>

#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/interpreter.h"
#include "DeclarationHandler/parser.h"
#include "support/messagecatcher.h"
#include "support/recordingdatapeer.h"

namespace {

/// Notes when it is asked for another parser, and its end.
class SpyParser : public Parser
{
public:
    explicit SpyParser(QStringList* log) : m_log(log) {}
    ~SpyParser() override { *m_log << "~parser"; }
    IParser* NewParser() const override
    {
        *m_log << "new";
        return new SpyParser(m_log);
    }

private:
    QStringList* m_log;
};

/// Evaluates another statement on the same interpreter inside each read of «outer», and notes when two
/// threads are there at once.
class ReenteringDataPeer : public RecordingDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
    {
        if (identifier.GetName() != "outer")
            return RecordingDataPeer::GetValue(identifier, defaultValue);
        m_crowded = m_crowded || m_inside.exchange(true);
        std::this_thread::yield();
        const QVariant value = m_interpreter->Evaluate("a - 1", nullptr);
        m_inside = false;
        return value;
    }
    IInterpreter* m_interpreter = nullptr;
    std::atomic<bool> m_inside{false};
    std::atomic<bool> m_crowded{false};
};

} // namespace

class tst_Interpreter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Without a record to write to, the messages are printed.
    void Messages_data()
    {
        const QString failed = "Failed to parse statement: \" \"%1\" \".\nError:  \"%2\"";
        const QString warned = "Warning while parsing statement: \" \"%1\" \".\nWarning:  \"%2\"";
        const QString lexical = "Unrecognised token at \\\"$\\\".";
        const QString general = "Unknown parsing error; the expression is not created.";
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("") << "-" << QStringList();
        QTest::newRow(" \t ") << "-" << QStringList();
        QTest::newRow("a - 1") << "7.0" << QStringList();
        QTest::newRow("a b") << "8.0" << QStringList(warned.arg("a b", "Did not expect token: \\\"b\\\"."));
        QTest::newRow("a $") << "8.0" << QStringList{failed.arg("a $", lexical), warned.arg("a $", lexical)};
        QTest::newRow("@Widget:x") << "-"
                                   << QStringList{"\"Not a valid QObject found for: 'Widget'\"",
                                                  failed.arg("@Widget:x", general),
                                                  warned.arg("@Widget:x",
                                                             general + "\\nDid not expect token: \\\"@Widget:x\\\".")};
    }

    void Messages()
    {
        const QString statement = QTest::currentDataTag();
        RecordingDataPeer peer;
        peer.m_values = {{"a", 8.0}};
        Interpreter interpreter(&peer, nullptr, nullptr);
        MessageCatcher printed;
        QTEST(Exact(interpreter.Evaluate(statement, nullptr)), "value");
        QTEST(printed.Take(), "lines");
        delete interpreter.CreateStatement(statement, true, nullptr);
        QTEST(printed.Take(), "lines");

        IParsingResult* result = nullptr;
        QTEST(Exact(interpreter.Evaluate(statement, &result)), "value");
        const std::unique_ptr<IParsingResult> record(result);
        QCOMPARE(printed.Take().filter("parse"), QStringList());
        QCOMPARE(!record, statement.trimmed().isEmpty());
        QFETCH(QStringList, lines);
        QVERIFY(!record || record->HasSucceeded() == lines.filter("Failed").isEmpty());
    }

    void Context()
    {
        SilentObserver observer;
        RecordingDataPeer peer;
        QObject top;
        QObject widget;
        top.setObjectName("top");
        widget.setObjectName("widget ");
        {
            Interpreter interpreter(&peer, &observer, new SpyParser(&peer.m_calls));
            const std::unique_ptr<IExpression> tree(interpreter.CreateStatement("a", false, nullptr));
            QVERIFY(tree->Store(7));
            QVERIFY(!std::unique_ptr<IExpression>(interpreter.CreateStatement("a", true, nullptr))->Store(8));
            QCOMPARE(peer.TakeCalls(), QString("new, observe a, ~parser, set a=7, new, observe a, ~parser"));
            const QVariant value = interpreter.Evaluate("@Widget:objectName + @TopWidget:objectName + a", &peer,
                                                        nullptr, "d", &widget, &top, nullptr);
            QCOMPARE(Exact(value), QString("'widget top'"));
            QCOMPARE(peer.TakeCalls(), QString("new, refer d:a, ~parser, get d:a"));
        }
        QCOMPARE(peer.TakeCalls(), QString("~parser"));
    }

    // The short overloads lock: the peer, which does not, is used by one thread at a time.
    void Threads()
    {
        ReenteringDataPeer peer;
        peer.m_values = {{"a", 8.0}};
        Interpreter interpreter(&peer, nullptr, nullptr);
        peer.m_interpreter = &interpreter;
        QAtomicInt right;
        const auto evaluate = [&] {
            for (int i = 0; i < 200; ++i)
                right += interpreter.Evaluate("outer * 2", nullptr) == 14.0;
        };
        std::thread other(evaluate);
        evaluate();
        other.join();
        QVERIFY(!peer.m_crowded);
        QCOMPARE(int(right), 400);
        QCOMPARE(peer.m_calls.size(), 1200);
    }
};

QTEST_APPLESS_MAIN(tst_Interpreter)
#include "tst_interpreter.moc"
