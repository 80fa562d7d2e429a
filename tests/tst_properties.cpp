#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>
#include <utility>

#include "DeclarationHandler/Tokens/lexer.h"
#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/parser.h"
#include "support/messagecatcher.h"
#include "support/operators.h"
#include "support/recordingdatapeer.h"

namespace {

/// Nodes and tokens that live, among other things. Qt's texts and lists are no objects of operator new.
std::atomic<int> s_living(0);

} // namespace

void* operator new(std::size_t size)
{
    ++s_living;
    return std::malloc(size);
}

void operator delete(void* block) noexcept
{
    s_living -= block ? 1 : 0;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace {

const int StatementCount = 5000;

/// Makes statements by the grammar, most of which are then damaged. Statements are lists of pieces: tokens,
/// and the white space between them.
class Generator
{
public:
    QStringList NewStatement()
    {
        m_pieces.clear();
        AddExpression(4);
        if (Pick(2) == 0)
            return m_pieces;
        const QStringList hostile = {"$", "'", "\"", "@", ":", "\\", "\u202e", "\u00e9", QChar(0xd800), QChar(0), "-"};
        for (int damages = 1 + Pick(3); damages > 0; --damages) {
            const int place = Pick(m_pieces.size());
            m_pieces.insert(place,
                            Pick(3) == 0 ? hostile.at(Pick(hostile.size())) : m_pieces.at(Pick(m_pieces.size())));
            m_pieces.removeAt(Pick(m_pieces.size()));
        }
        return m_pieces;
    }

    QString Blank() { return QStringList({" ", "\t", "\n ", "\u2003", "   "}).at(Pick(5)); }

private:
    int Pick(int count) { return m_random.bounded(count); }

    void Add(const QString& token)
    {
        m_pieces << token;
        if (Pick(4) != 0)
            m_pieces << Blank();
    }

    void AddExpression(int depth)
    {
        static const QStringList operators = BinaryOperators();
        AddOperand(depth);
        for (int more = depth > 0 ? Pick(3) : 0; more > 0; --more) {
            Add(operators.at(Pick(operators.size())));
            AddOperand(depth - 1);
        }
    }

    void AddOperand(int depth)
    {
        const int kind = depth > 0 ? Pick(8) : 7;
        if (kind < 2)
            Add(kind == 0 ? "NOT" : "HASVALUE");
        if (kind < 2)
            return AddExpression(depth - 1);
        if (kind == 2)
            return AddBracketed("(", depth, ")");
        AddAtom();
        if (kind == 3)
            AddBracketed("[", depth, "]");
        if (kind == 3 || kind == 4) {
            Add(".");
            AddAtom();
        }
    }

    void AddBracketed(const char* opening, int depth, const char* closing)
    {
        Add(opening);
        AddExpression(depth - 1);
        Add(closing);
    }

    void AddAtom()
    {
        static const QStringList atoms
            = QString("a;b;l;m;i;none;'k';'a "
                      "b';\"it's\";'';'%1';0;-2;.5;TRUE;FALSE;@Widget:v;@TopWidget\\w:v;@E:x;@E\\L:y.z")
                  .split(';');
        Add(atoms.at(Pick(atoms.size())));
    }

    QRandomGenerator m_random{20};
    QStringList m_pieces;
};

using Law = std::function<bool(const QString& statement)>;

/// The smallest list of pieces found that still breaks the law: runs of them are left out, long ones first.
QString Shrink(QStringList pieces, const Law& holds)
{
    for (int length = pieces.size(); length > 0;) {
        bool shrunk = false;
        for (int start = 0; start + length <= pieces.size() && !shrunk; ++start) {
            const QStringList fewer = pieces.mid(0, start) + pieces.mid(start + length);
            shrunk = !holds(fewer.join(""));
            if (shrunk)
                pieces = fewer;
        }
        length = qMin(shrunk ? length : length - 1, pieces.size());
    }
    return pieces.join("");
}

/// The text without what is white space outside quotes.
QString WithoutBlanks(const QString& text)
{
    QString kept;
    QChar quote;
    for (const QChar character : text) {
        if (!quote.isNull() || !character.isSpace())
            kept += character;
        if (quote.isNull() && (character == '\'' || character == '"'))
            quote = character;
        else if (character == quote)
            quote = QChar();
    }
    return kept;
}

/// The lexemes of a statement; what is not recognised is put into \a rest.
QStringList Lexemes(const QString& statement, QString* rest)
{
    Lexer lexer(statement);
    QStringList lexemes;
    while (const std::unique_ptr<Token> token{lexer.ReadToken()})
        lexemes << token->GetLexeme();
    *rest = statement.mid(lexer.GetUnread().offset);
    return lexemes;
}

} // namespace

class tst_Properties : public QObject
{
    Q_OBJECT

    /// All that can be told of a statement.
    struct Run
    {
        bool hasTree;
        QString error;
        QStringList messages;
        QString value;
        QString calls; ///< To the data layer, while parsing and evaluating.
        bool evaluationWrote;
        bool stored;
        bool storeWrote;
        int nodes;
        int left; ///< Nodes that outlive the tree.
    };

    Generator m_generator;
    QObject m_top;
    Parser m_parser;
    QHash<QString, QVariant> m_values;
    RecordingDataPeer m_peer;
    int m_sound = 0;   ///< Statements that gave no message.
    int m_written = 0; ///< Statements that a value was saved through.

    Run Try(const QString& statement, bool readOnly = false)
    {
        const auto hasWritten = [this] {
            return !m_peer.m_calls.filter("set").isEmpty() || property("v") != 3 || dynamicPropertyNames().size() > 1;
        };
        for (const QByteArray& name : dynamicPropertyNames())
            setProperty(name, QVariant());
        setProperty("v", 3);
        const int before = s_living;
        Run run = {};
        m_parser.Tokenize(statement);
        IExpression* const tree = m_parser.Parse(&m_peer, nullptr, this, &m_top, "p", readOnly);
        const IParsingResult* const result = m_parser.CopyResult();
        run.hasTree = tree;
        run.error = result->GetErrorMessage();
        run.messages = result->GetWarningMessages();
        delete result;
        m_parser.Reset();
        run.nodes = s_living - before;
        run.value = tree ? Exact(tree->Retrieve()) : QString();
        run.evaluationWrote = hasWritten();
        run.calls = m_peer.TakeCalls();
        run.stored = tree && tree->Store(7);
        run.storeWrote = hasWritten();
        delete tree;
        m_peer.m_calls.clear();
        m_peer.m_values = m_values;
        run.left = s_living - before;
        return run;
    }

    /// The statement with a blank before each token and at the end.
    QString Spaced(const QStringList& lexemes)
    {
        QString spaced;
        for (const QString& lexeme : lexemes)
            spaced += m_generator.Blank() + lexeme;
        return spaced + m_generator.Blank();
    }

    /// A law that the statement breaks; empty if it holds all.
    QString BrokenLaw(const QString& statement)
    {
        const Run first = Try(statement);
        const Run again = Try(statement);
        const Run readOnly = Try(statement, true);
        QString rest;
        const QStringList lexemes = Lexemes(statement, &rest);
        const Run spaced = Try(Spaced(lexemes));
        m_sound += first.messages.isEmpty();
        m_written += first.stored && first.storeWrote;

        const QString unrecognised = rest.isEmpty() ? "" : "Unrecognised token at \"" + rest + "\".";
        const auto isSame = [&](const Run& run) { return run.value == first.value && run.messages == first.messages; };
        const std::pair<bool, const char*> laws[] = {
            {first.hasTree != first.error.startsWith("Unknown parsing error"), "there is a tree, or the general error"},
            {first.error.isEmpty() || first.messages.contains(first.error), "the messages hold the error"},
            {WithoutBlanks(statement) == lexemes.join("") + WithoutBlanks(rest), "the lexemes give the text"},
            {rest.isEmpty() || first.messages.first() == unrecognised, "what is not recognised is told"},
            {isSame(again) && again.calls == first.calls, "parsing twice is the same"},
            {again.hasTree == (again.nodes > 0) && again.left == 0, "all nodes die with the root, once"},
            {!first.evaluationWrote && isSame(readOnly), "evaluating writes nothing"},
            {!readOnly.stored && !readOnly.storeWrote, "a read-only tree writes nothing"},
            {!first.messages.isEmpty() || isSame(spaced), "blanks between tokens change nothing"},
        };
        for (const auto& law : laws) {
            if (!law.first)
                return law.second;
        }
        return QString();
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QVariantList values = Operands("8.0, 'b', [10, [20, 21], {'k': [30, 31]}], {'k': 'v'}, 1");
        for (int i = 0; i < values.size(); ++i)
            m_values[QString("p:") + QString("ablmi").at(i)] = values.at(i);
        m_peer.m_values = m_values;
        setParent(&m_top);
        setObjectName("w");
    }

    void cleanupTestCase() { setParent(nullptr); }

    void Laws()
    {
        const MessageCatcher lines;
        for (int i = 0; i < StatementCount; ++i) {
            const QStringList pieces = m_generator.NewStatement();
            const QString broken = BrokenLaw(pieces.join(""));
            if (broken.isEmpty())
                continue;
            const QString smallest = Shrink(pieces, [&](const QString& text) { return BrokenLaw(text) != broken; });
            QFAIL(qPrintable(broken + ": " + QTest::toString(smallest)));
        }
        QVERIFY2(m_sound > StatementCount / 4 && m_sound < StatementCount * 3 / 4,
                 qPrintable(QString::number(m_sound)));
        QVERIFY2(m_written > StatementCount / 100, qPrintable(QString::number(m_written)));
    }

    void FailuresShrink()
    {
        const Law hasNoNegationInASubscript
            = [](const QString& statement) { return !statement.contains(QRegularExpression("\\[.*NOT.*\\]")); };
        QStringList pieces;
        do
            pieces = m_generator.NewStatement();
        while (hasNoNegationInASubscript(pieces.join("")));
        QCOMPARE(Shrink(pieces, hasNoNegationInASubscript), QString("[NOT]"));
    }
};

QTEST_APPLESS_MAIN(tst_Properties)
#include "tst_properties.moc"
