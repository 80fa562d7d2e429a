#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>

#include "DeclarationHandler/Expressions/exprconstant.h"
#include "DeclarationHandler/Tokens/variabletoken.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/parser.h"
#include "DeclarationHandler/parserlistener.h"
#include "support/messagecatcher.h"
#include "support/recordingdatapeer.h"

namespace {

const QString Unknown = "Unknown parsing error; the expression is not created.";

struct Parsed
{
    std::unique_ptr<IExpression> tree;
    QString error;
    QStringList messages;
    int characters;
};

void OnSmallStack(const std::function<void()>& run)
{
    std::atomic<bool> done(false); // Also for the thread sanitizer, which does not see Qt's own locks.
    const std::unique_ptr<QThread> thread(QThread::create([&] {
        const MessageCatcher lines;
        run();
        done = true;
    }));
    thread->setStackSize(TEST_STACK_MIB << 20);
    thread->start();
    thread->wait();
    QVERIFY(done);
}

/// Writes down what a parser tells, as a row of a table shows it.
class Scribe : public ParserListener
{
public:
    explicit Scribe(const QString& statement) : m_statement(statement) {}

    QStringList m_lines;
    bool m_makesReferences = false;

    void OnToken(const Token& token, const TextPlace& place) override
    {
        QCOMPARE(Text(place), token.GetLexeme());
        m_tokens << token.GetLexeme();
    }

    IExpression* CreateReference(const VariableToken& token, const TextPlace& place, bool readOnly) override
    {
        if (!m_makesReferences)
            return nullptr;
        m_lines << QString(readOnly ? "read " : "use ") + Text(place);
        return new ExprConstant(token.GetVariableName());
    }

    void OnNode(const ParsedNode& node) override
    {
        static const char* const kinds[] = {"operand", "binary", "prefix", "parentheses", "subscript", "member"};
        QString line = QString(kinds[node.kind]) + ' ' + m_tokens.at(node.token);
        for (const IExpression* const child : {node.left, node.right})
            line += child ? QString(" %1").arg(m_numbers.value(child)) : QString();
        m_numbers[node.node] = m_numbers.size();
        m_lines << line;
    }

    void OnReport(const ParserReport& report) override
    {
        static const char* const causes[] = {"unrecognised", "missing",   "wrong",   "deep",        "empty",
                                             "operand?",     "operator?", "object?", "consequence", "left"};
        m_messages << report.message;
        m_lines << QString("%1 %2 at %3 '%4'")
                       .arg(report.isError ? "error" : "warning", causes[report.cause])
                       .arg(report.place.offset)
                       .arg(Text(report.place));
    }

    QStringList m_messages;

private:
    QString Text(const TextPlace& place) const { return m_statement.mid(place.offset, place.length); }

    const QString m_statement;
    QStringList m_tokens;
    QHash<const IExpression*, int> m_numbers;
};

/// The full text of a message that a table writes in short.
QString Message(QString text)
{
    if (text == "unknown")
        return Unknown;
    return text.replace(QRegularExpression("^left (.*)"), "Did not expect token: \"\\1\".")
        .replace(QRegularExpression("^found (.*) for (.*)"), "Encountered \"\\1\" instead of \"\\2\".")
        .replace(QRegularExpression("^missing (.*)"), "Missing: \"\\1\".")
        .replace(QRegularExpression("^unrecognised (.*)"), "Unrecognised token at \"\\1\".");
}

} // namespace

class tst_Parser : public QObject
{
    Q_OBJECT

    Parser m_parser; ///< One for all statements: each starts afresh.
    RecordingDataPeer m_peer;

    Parsed Parse(const QString& statement, bool readOnly = false)
    {
        const QVariantList values = Operands("8.0, 4.0, 2.0, 1, [10, [20, 21], {'k': [30, 31]}], {'k': 'v'}");
        for (int i = 0; i < values.size(); ++i)
            m_peer.m_values[QString("abcilm").at(i)] = values.at(i);
        m_peer.TakeCalls();
        m_parser.Tokenize(statement);
        Parsed parsed;
        parsed.tree.reset(m_parser.Parse(&m_peer, nullptr, this, parent(), QString(), readOnly));
        const QScopedPointer<IParsingResult> result(m_parser.CopyResult());
        parsed.error = result->GetErrorMessage();
        parsed.messages = result->GetWarningMessages();
        parsed.characters = result->GetParsedCharacters();
        return parsed;
    }

private Q_SLOTS:
    void init() { setObjectName("widget"); }

    void Values_data()
    {
        Rows({
            // Grouping.
            {"a - b - c => 2.0", "a / b / c => 1.0", "a - b * c => 0.0", "a * b + c * a => 48.0", "(a - b) * c => 8.0",
             "a = b + c + c => true", "i = a - b - 3 => true", "b < a = TRUE => true",
             "TRUE OR TRUE AND FALSE => false", "FALSE AND TRUE NAND TRUE => true", "FALSE NOR FALSE XOR TRUE => false",
             "a + b > c AND c >= 2 => true"},
            // A prefix reaches as far right as its place allows.
            {"NOT FALSE AND FALSE => true", "TRUE = NOT TRUE AND FALSE => false", "NOT a - a => true",
             "a - NOT a - a => 0.0", "HASVALUE none + 'x' => true", "HASVALUE none => false",
             "NOT HASVALUE none => true", "NOT NOT a => true", "(HASVALUE none) + 'x' => 'falsex'"},
            // Selectors.
            {"l[0] => 10", "l[i - 1 - -1][1] => 21", "l[2].'k'[1] => 31", "m['k'] => 'v'", "'x'.'k' => -",
             "NOT l[0] => false", "l[l[9]] => -", "l[2]['k'].'x' => -", "@Widget:objectName + 1 => 'widget1'"},
            // Literals.
            {"1 + 2 => '12'", "a - -1 => 9.0", "0 / 0 >= 0 => false", "1 / 0 => inf", "'a' + \"b'\" => 'ab''",
             "' x ' => ' x '", "007 => '7'", "5. => '5'", "-. => '0'", "-.5 => '-0.5'", "3.14159265 => '3.14159'",
             "1234567 => '1.23457e+06'", "0.00001 => '1e-05'", "((FALSE)) => false"},
        });
    }

    void Values()
    {
        QFETCH(QString, given);
        MessageCatcher lines;
        const Parsed parsed = Parse(given);
        QCOMPARE(parsed.messages, QStringList());
        QTEST(Exact(parsed.tree->Retrieve()), "expected");
    }

    // The value and the messages, in order.
    void Messages_data()
    {
        Rows({
            {" => none; unknown", "+ a => none; unknown; left +", ") => none; unknown; left )",
             "a + * b => none; unknown; left +", "a NOT b => none; unknown; left NOT", "a (b) => none; unknown; left (",
             "NOT => none; unknown; left NOT", "HASVALUE => none; unknown; left HASVALUE",
             "a = NOT => none; unknown; left =", "[0] => none; unknown; left ["},
            {"a b => 8.0; left b", "a + => 8.0; left +", "a -1 => 8.0; left -1", "a-1 => 8.0; left -1",
             "(a)[0] => 8.0; left [", "(l).'k' => [10, [20, 21], {'k': [30, 31]}]; left .",
             "m .5 => {'k': 'v'}; left .5", "l[0]. => 10; left .", "l[0].( b => 10; left .", "a ] => 8.0; left ]",
             "i[0 => 1; left ["},
            {"(a + b => none; missing ); unknown; left (", "(a b) => none; found b for ); unknown; left (",
             "(a => none; unknown; left (", "((a + b) => none; missing ); unknown; left (",
             "((a + b] => none; found ] for ); unknown; left (", "() => none; unknown; left ("},
            {"i[0 + 1 => 1; missing ]; left [", "i[0 1] => 1; found 1 for ]; left [", "i[] a => 1; left [",
             "l[0][1 2] => 10; found 2 for ]; left 2", "l[0][1 + => 10; found + for ]; left +",
             "l[0][] b => 10; left ]", "l[0][1 - 1 => 10; missing ]",
             "l[0][(a] b => none; found ] for ); unknown; left ("},
            {"$ => none; unrecognised $; unknown", "a $ b => 8.0; unrecognised $ b",
             "(a $ => none; unrecognised $; unknown; left (", "a + $ => 8.0; unrecognised $; left +",
             "a + 'b => 8.0; unrecognised 'b; left +"},
            // Place markers are text.
            {"a '%1 %2' => 8.0; left '%1 %2'", "(a '%2' => none; found '%2' for ); unknown; left (",
             "i['%2' '%1' => 1; found '%1' for ]; left [", "a $%1 => 8.0; unrecognised $%1"},
        });
    }

    void Messages()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        const Parsed parsed = Parse(given);
        QCOMPARE(parsed.tree ? Exact(parsed.tree->Retrieve()) : QString("none"), expected.section("; ", 0, 0));
        QStringList messages = expected.split("; ").mid(1);
        for (QString& message : messages)
            message = Message(message);
        QCOMPARE(parsed.messages.join("\n"), messages.join("\n"));
        messages = messages.filter(QRegularExpression("^(?!Did not expect)"));
        QCOMPARE(parsed.error, messages.value(messages.size() - 1));
        // Who finds tokens left over, or no tree, overwrites where the lexer stopped.
        QCOMPARE(parsed.characters, given.startsWith("a $") ? 2 : 0);
    }

    // The variables in the order in which the nodes are built, and in which they are read.
    void Order_data()
    {
        Rows({{"l[i] + a * b = c => l i a b c, c l i a b", "a AND b OR NOT c => a b c, a b",
               "(a = b) != HASVALUE c => a b c, c b a", "l[2].m < a - b => l m a b, l m a b", "l[9] => l, l",
               "a b => a, a", "a + => a, a", "(a + b => a b, ", "@E:x - @E\\L:y.z => E:x E\\L:y.z, E:x E\\L:y.z",
               "@\\E\\\\L\\:x => \\E\\\\L\\:x, \\E\\\\L\\:x", "@widget:x => widget:x, widget:x"}});
    }

    void Order()
    {
        QFETCH(QString, given);
        MessageCatcher lines;
        const Parsed parsed = Parse(given);
        const QString built = m_peer.TakeCalls().remove("refer ").remove(",");
        if (parsed.tree)
            parsed.tree->Retrieve();
        QTEST(built + ", " + m_peer.TakeCalls().remove("get ").remove(","), "expected");
    }

    // The answer to Store(7), and the calls that it makes.
    void Store_data()
    {
        Rows({{"a => true set a=7", "((a)) => true set a=7", "NOT a => true set a=false",
               "NOT NOT (a) => true set a=true", "l[i] => true get l, get i, set l=[10, 7, {'k': [30, 31]}]",
               "l[2].'k' => true get l, get l, set l=[10, [20, 21], {'k': 7}]",
               "l[1][0] => true get l, get l, set l=[10, [7, 21], {'k': [30, 31]}]", "l[9] => false get l",
               "m['k'] => false get m", "'x' => false ", "5 => false ", "NOT TRUE => false ", "HASVALUE a => false ",
               "a + b => false ", "(a = b) => false ", "NOT (a OR b) => false ", "@Widget:objectName => true ",
               "@Widget:new => false "}});
    }

    void Store()
    {
        QFETCH(QString, given);
        const Parsed writable = Parse(given);
        m_peer.TakeCalls();
        const QString answer = QVariant(writable.tree->Store(7)).toString();
        QTEST(answer + " " + m_peer.TakeCalls(), "expected");
        const Parsed readOnly = Parse(given, true);
        QVERIFY(!readOnly.tree->Store(7));
        QCOMPARE(m_peer.m_calls.filter("set"), QStringList());
    }

    void ReferencedProperties()
    {
        QObject top;
        setParent(&top);
        const MessageCatcher lines;
        using Key = QPair<QObject*, QString>;
        Parse("(@Widget:x + l[@TopWidget:y].@Widget:z = @Widget:x");
        QCOMPARE(m_parser.GetReferencedProperties(), (QSet<Key>{Key(this, "x"), Key(&top, "y"), Key(this, "z")}));
        Parse("@TopWidget\\nobody:x");
        QVERIFY(m_parser.GetReferencedProperties().isEmpty());
        setParent(nullptr);
    }

    // Prefix, core and suffix of a statement that gains a level with each repetition of prefix and suffix;
    // its value at 1,000 levels.
    void Nesting_data()
    {
        Rows({{"(, a, ) => 8.0", "NOT , a,  => false", "HASVALUE , a,  => true", ", a,  - 1 => -991.0", ", l, [0] => -",
               "l[, 9, ] => -", ", 'x', .'k' => -", "1 = NOT l[(, a, )] => false"}});
    }

    void Nesting()
    {
        QFETCH(QString, given);
        QFETCH(QString, expected);
        const int levelsOfPrefix = given.startsWith("1 =") ? 4 : 1;
        const QStringList parts = given.split(", ");
        const auto statement = [&](int levels) {
            const int repetitions = (levels - 1) / levelsOfPrefix;
            return parts.at(0).repeated(repetitions) + parts.at(1) + parts.at(2).repeated(repetitions);
        };
        QString value;
        QStringList refusals;
        OnSmallStack([&] {
            const Parsed deep = Parse(statement(1000));
            value = deep.tree ? Exact(deep.tree->Retrieve()) : deep.messages.join("|");
            if (deep.tree)
                deep.tree->Store(7);
            for (const int levels : {1000 + levelsOfPrefix, 100000}) {
                const Parsed tooDeep = Parse(statement(levels));
                refusals << (tooDeep.tree ? "tree" : tooDeep.messages.first());
            }
        });
        QCOMPARE(value, expected);
        QCOMPARE(refusals.join("|"), QString("Expression is nested too deeply.|Expression is nested too deeply."));
    }

    void LongChainsInsideSubscripts()
    {
        const QString chain = "'m'" + QString(".'b'").repeated(30) + "[";
        bool parsed = false;
        OnSmallStack([&] { parsed = Parse(chain.repeated(199) + "0" + QString("]").repeated(199)).tree != nullptr; });
        QVERIFY(parsed);
    }

    void Records()
    {
        ParsingResult record;
        QVERIFY(record.GetErrorMessage().isNull());
        record.SetError("operation", "file", 1, "");
        record.AddWarning("operation", "file", 2, "warning");
        QVERIFY(record.HasSucceeded());
        record.SetError("operation", "file", 3, "error");
        record.SetParsedCharacters(-5);
        ParsingResult assigned;
        assigned = static_cast<const IParsingResult&>(record);
        record.Reset();
        QVERIFY(record.HasSucceeded() && !record.GetErrorMessage().isNull() && record.GetParsedCharacters() == 0);
        QVERIFY(!assigned.HasSucceeded() && assigned.GetParsedCharacters() == -5);
        QCOMPARE(assigned.GetWarningMessages(), (QStringList{"", "warning", "error"}));
    }

    // What is told, in order; children by their number among the nodes.
    void Listening_data()
    {
        QTest::addColumn<QString>("told");
        const auto row = [](const char* statement, const char* told) { QTest::newRow(statement) << told; };
        row("a + 2 * b", "use a|operand a|operand 2|use b|operand b|binary * 1 2|binary + 0 3");
        row("NOT (x)", "use x|operand x|parentheses ( 0|prefix NOT 1");
        row("HASVALUE a[i] .'k'",
            "read a|operand a|read i|operand i|subscript [ 0 1|operand 'k'|member . 2 3|prefix HASVALUE 4");
        row(" ", "error empty at 0 ''");
        row("a AND", "use a|operand a|warning left at 2 'AND'");
        row("a AND )x", "use a|operand a|error operand? at 6 ')'|warning left at 2 'AND'");
        row("a NOT b", "use a|operand a|error operator? at 2 'NOT'|warning left at 2 'NOT'");
        row("(1 2", "operand 1|error wrong at 3 '2'|error consequence at 0 '('|warning left at 0 '('");
        row("(1 + 2 ",
            "operand 1|operand 2|binary + 0 1|error missing at 6 ''|error consequence at 0 '('|"
            "warning left at 0 '('");
        row("1 ~ 2", "error unrecognised at 2 '~ 2'|operand 1");
    }

    void Listening()
    {
        QFETCH(QString, told);
        const QString statement = QTest::currentDataTag();
        Scribe scribe(statement);
        scribe.m_makesReferences = true;
        Parser parser;
        parser.SetListener(&scribe);
        parser.Tokenize(statement);
        delete parser.Parse(nullptr, nullptr, nullptr, nullptr, QString(), false);
        const std::unique_ptr<IParsingResult> result(parser.CopyResult());
        QCOMPARE(scribe.m_lines.join('|'), told);
        QCOMPARE(scribe.m_messages, result->GetWarningMessages());
    }

    void ListeningToPathsThatLeadNowhere()
    {
        const QString statement = "1 + @Widget\\nobody:x";
        const MessageCatcher lines;
        Scribe scribe(statement);
        Parser parser;
        parser.SetListener(&scribe);
        parser.Tokenize(statement);
        QVERIFY(!parser.Parse(nullptr, nullptr, this, this, QString(), false));
        QCOMPARE(scribe.m_lines.value(1), QString("error object? at 4 '@Widget\\nobody:x'"));
    }
};

QTEST_APPLESS_MAIN(tst_Parser)
#include "tst_parser.moc"
