#include <QtTest>

#include <atomic>
#include <functional>
#include <memory>

#include "DeclarationHandler/iexpression.h"
#include "DeclarationHandler/parser.h"
#include "support/lexer.h"
#include "support/messagecatcher.h"
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

const int StatementCount = 3000;

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
        static const QStringList operators = QString("+ - * / = != < > <= >= OR AND XOR NOR NAND").split(' ');
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
    QStringList lexemes;
    *rest = statement;
    for (;;) {
        while (!rest->isEmpty() && rest->at(0).isSpace())
            rest->remove(0, 1);
        const std::unique_ptr<Token> token(rest->isEmpty() ? nullptr : NextToken(*rest));
        if (!token)
            return lexemes;
        lexemes << token->GetLexeme();
        rest->remove(0, token->GetLexemeLength());
    }
}

} // namespace

class tst_Properties;
using LawMember = bool (tst_Properties::*)(const QString& statement);
Q_DECLARE_METATYPE(LawMember)

class tst_Properties : public QObject
{
    Q_OBJECT

    Generator m_generator;
    QObject m_top;
    Parser m_parser;
    RecordingDataPeer m_peer;
    QStringList m_messages; ///< Of the statement parsed last.
    int m_sound = 0;        ///< Statements that gave no message.
    int m_written = 0;      ///< Statements that a value was saved through.

    std::unique_ptr<IExpression> Parse(const QString& statement, bool readOnly = false)
    {
        setProperty("v", 3);
        m_peer.m_calls.clear();
        m_parser.Tokenize(statement);
        std::unique_ptr<IExpression> tree(m_parser.Parse(&m_peer, nullptr, this, &m_top, "p", readOnly));
        const std::unique_ptr<IParsingResult> result(m_parser.CopyResult());
        m_messages = result->GetWarningMessages();
        if (!result->HasSucceeded() && !m_messages.contains(result->GetErrorMessage()))
            m_messages << "The error is missing";
        return tree;
    }

    bool HasWritten() const { return !m_peer.m_calls.filter("set").isEmpty() || property("v") != 3; }

    /// All that can be told of a statement.
    QString Outcome(const QString& statement)
    {
        const std::unique_ptr<IExpression> tree = Parse(statement);
        const QStringList told = {tree ? Exact(tree->Retrieve()) : "none", m_messages.join("|"), m_peer.TakeCalls(),
                                  QString::number(m_parser.GetReferencedProperties().size())};
        return told.join("|");
    }

    bool TellsEveryFailure(const QString& statement)
    {
        const bool hasTree = Parse(statement) != nullptr;
        m_sound += m_messages.isEmpty();
        return hasTree != m_messages.contains("Unknown parsing error; the expression is not created.")
            && !m_messages.contains("The error is missing");
    }

    bool LosesNoText(const QString& statement)
    {
        QString rest;
        const QString lexemes = Lexemes(statement, &rest).join("");
        Parse(statement);
        const QString message = m_messages.value(0);
        return WithoutBlanks(statement) == lexemes + WithoutBlanks(rest)
            && message.startsWith("Unrecognised") == !rest.isEmpty()
            && (rest.isEmpty() || message == "Unrecognised token at \"" + rest + "\".");
    }

    bool IsTheSameTwice(const QString& statement) { return Outcome(statement) == Outcome(statement); }

    bool DeletesEveryNodeOnce(const QString& statement)
    {
        Outcome(statement);
        m_parser.Reset();
        const int before = s_living;
        std::unique_ptr<IExpression> tree = Parse(statement);
        m_parser.Reset();
        const int nodes = s_living - before;
        const bool counted = tree ? nodes > 0 : nodes == 0;
        tree.reset();
        return counted && s_living == before;
    }

    bool EvaluatesWithoutWriting(const QString& statement)
    {
        const std::unique_ptr<IExpression> tree = Parse(statement);
        if (tree)
            tree->Retrieve();
        const bool evaluationWrote = HasWritten();
        if (tree)
            m_written += tree->Store(7) && HasWritten();
        return !evaluationWrote;
    }

    bool WritesNothingReadOnly(const QString& statement)
    {
        const std::unique_ptr<IExpression> tree = Parse(statement, true);
        return !(tree && tree->Store(7)) && !HasWritten();
    }

    bool TakesBlanksBetweenTokens(const QString& statement)
    {
        const QString outcome = Outcome(statement);
        QString rest;
        QString spaced;
        for (const QString& lexeme : Lexemes(statement, &rest))
            spaced += m_generator.Blank() + lexeme;
        return !m_messages.isEmpty() || Outcome(spaced + m_generator.Blank()) == outcome;
    }

private Q_SLOTS:
    void initTestCase()
    {
        const QVariantList values = Operands("8.0, 'b', [10, [20, 21], {'k': [30, 31]}], {'k': 'v'}, 1");
        for (int i = 0; i < values.size(); ++i)
            m_peer.m_values[QString("p:") + QString("ablmi").at(i)] = values.at(i);
        setParent(&m_top);
        setObjectName("w");
    }

    void cleanupTestCase() { setParent(nullptr); }

    void Laws_data()
    {
        QTest::addColumn<LawMember>("law");
        QTest::newRow("a statement without a tree is told") << LawMember(&tst_Properties::TellsEveryFailure);
        QTest::newRow("lexemes give the text") << LawMember(&tst_Properties::LosesNoText);
        QTest::newRow("parsing twice is the same") << LawMember(&tst_Properties::IsTheSameTwice);
        QTest::newRow("nodes die with the root, once") << LawMember(&tst_Properties::DeletesEveryNodeOnce);
        QTest::newRow("evaluating writes nothing") << LawMember(&tst_Properties::EvaluatesWithoutWriting);
        QTest::newRow("read-only writes nothing") << LawMember(&tst_Properties::WritesNothingReadOnly);
        QTest::newRow("blanks change nothing") << LawMember(&tst_Properties::TakesBlanksBetweenTokens);
    }

    void Laws()
    {
        QFETCH(LawMember, law);
        const MessageCatcher lines;
        const Law holds = [&](const QString& statement) { return (this->*law)(statement); };
        for (int i = 0; i < StatementCount; ++i) {
            const QStringList pieces = m_generator.NewStatement();
            if (!holds(pieces.join("")))
                QFAIL(QTest::toString(Shrink(pieces, holds)));
        }
    }

    void StatementsAreOfAllSorts()
    {
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
