#include "common/slips.h"

namespace {

/// An operator of other languages, and what stands for it here.
struct Foreign
{
    const char* text;
    const char* hint;
};

const Foreign UnrecognisedTexts[] = {
    {"&&", "the operator is \"AND\""},
    {"||", "the operator is \"OR\""},
    {"!==", "two values differ with \"!=\""},
    {"!", "the operator is \"NOT\", and two values differ with \"!=\""},
    {"%", "nothing here gives a remainder"},
    {"?", "to choose a value, take it from a list or map: \"names[key]\""},
    {"&", "the operator is \"AND\", and texts are joined with \"+\""},
    {"|", "the operator is \"OR\""},
    {"^", "multiply instead"},
};

/// Operators that the lexer reads as two.
const Foreign PairedTexts[] = {
    {"==", "two values are compared with \"=\""},
    {"!==", "two values differ with \"!=\""},
    {"<>", "two values differ with \"!=\""},
    {"=!", "two values differ with \"!=\""},
    {"=<", "the operator is \"<=\""},
    {"=>", "the operator is \">=\""},
    {"**", "multiply instead"},
};

StatementFinding ForeignFinding(const Foreign& foreign, int offset)
{
    const QString text = QLatin1String(foreign.text);
    return {Check::ForeignOperator,
            {offset, int(text.size())},
            QString("There is no \"%1\" in the language; %2").arg(text, foreign.hint)};
}

/// Looks for a slip in the words around the place where the parser stopped.
class SlipFinder
{
public:
    explicit SlipFinder(const Diagnosis& diagnosis)
        : m_statement(diagnosis.Statement()),
          m_tokens(diagnosis.Tokens().Tokens()),
          m_report(diagnosis.Tree().Reports().first()),
          m_stop(diagnosis.Tokens().NumberAt(m_report.place.offset))
    {
    }

    StatementFinding Find() const
    {
        using Guess = StatementFinding (SlipFinder::*)() const;
        static const Guess guesses[] = {&SlipFinder::PairedOperator,
                                        &SlipFinder::UnrecognisedOperator,
                                        &SlipFinder::Comma,
                                        &SlipFinder::Quotes,
                                        &SlipFinder::Sign,
                                        &SlipFinder::Exponent,
                                        &SlipFinder::Dot,
                                        &SlipFinder::Selector};
        for (const Guess guess : guesses) {
            const StatementFinding finding = (this->*guess)();
            if (!finding.message.isEmpty())
                return finding;
        }
        return None();
    }

private:
    static StatementFinding None() { return {Check::ParseError, {}, QString()}; }

    bool IsUnrecognised() const { return m_report.cause == ParserReport::UnrecognisedText; }
    const StatementToken* At(int token) const
    {
        return token >= 0 && token < m_tokens.size() ? &m_tokens.at(token) : nullptr;
    }
    /// The token where the parser stopped, if it is one.
    const StatementToken* Stop() const { return IsUnrecognised() ? nullptr : At(m_stop); }
    const StatementToken* Before() const { return At(m_stop - 1); }
    bool IsJoined() const { return Before() && Before()->place.End() == m_report.place.offset; }

    StatementFinding PairedOperator() const
    {
        if (!IsJoined() || !Before()->row)
            return None();
        for (const Foreign& pair : PairedTexts) {
            const int offset = Before()->place.offset;
            if (QStringView(m_statement).mid(offset).startsWith(QLatin1String(pair.text)))
                return ForeignFinding(pair, offset);
        }
        return None();
    }

    StatementFinding UnrecognisedOperator() const
    {
        for (const Foreign& foreign : UnrecognisedTexts) {
            if (IsUnrecognised()
                && QStringView(m_statement).mid(m_report.place.offset).startsWith(QLatin1String(foreign.text)))
                return ForeignFinding(foreign, m_report.place.offset);
        }
        return None();
    }

    StatementFinding Comma() const
    {
        const int comma = m_report.place.offset;
        const bool isDecimal = IsUnrecognised() && IsJoined() && Before()->type == Token::TT_NUMBER
            && QStringView(m_statement).mid(comma, 1) == QLatin1String(",") && m_statement.mid(comma + 1, 1) >= "0"
            && m_statement.mid(comma + 1, 1) <= "9";
        if (!isDecimal)
            return None();
        return {Check::ForeignOperator, {comma, 1}, "There is no decimal comma; a number has a point: \"1.5\""};
    }

    StatementFinding Quotes() const
    {
        const bool isQuote = IsUnrecognised()
            ? QStringView(m_statement).mid(m_report.place.offset, 1) == QLatin1String("'")
                || QStringView(m_statement).mid(m_report.place.offset, 1) == QLatin1String("\"")
            : Stop() && Stop()->IsQuoted();
        if (!isQuote)
            return None();
        const bool isBehindText = Before() && Before()->IsQuoted();
        const bool isBehindWord = isBehindText || (m_stop > 1 && At(m_stop - 2)->IsQuoted());
        if (isBehindWord && (IsJoined() || (isBehindText && Before()->Content().endsWith('\\'))))
            return {Check::Escape,
                    {m_report.place.offset, 1},
                    "There are no escapes in quotes; a text with \"'\" stands between '\"' and one with '\"' between "
                    "\"'\""};
        if (IsUnrecognised())
            return {Check::ParseError, {m_report.place.offset, 1}, "The quote that opens here is not closed"};
        return None();
    }

    StatementFinding Sign() const
    {
        const StatementToken* const stop = Stop();
        const bool isSign = stop && (stop->type == Token::TT_MINUS || stop->type == Token::TT_PLUS);
        if (!isSign || m_report.cause != ParserReport::OperandWanted)
            return None();
        const bool isMinus = stop->type == Token::TT_MINUS;
        return {Check::ForeignOperator, stop->place,
                isMinus ? "There is no sign before a name; to negate, subtract from zero: \"0 - count\""
                        : "There is no sign \"+\"; a number stands alone"};
    }

    StatementFinding Exponent() const
    {
        const StatementToken* const stop = Stop();
        const bool isExponent = stop && stop->type == Token::TT_VARIABLE && IsJoined()
            && Before()->type == Token::TT_NUMBER && stop->lexeme.startsWith('e', Qt::CaseInsensitive);
        if (!isExponent)
            return None();
        return {Check::ForeignOperator, stop->place,
                "There are no exponents; write the number out, as a text where it is long"};
    }

    StatementFinding Dot() const
    {
        const StatementToken* const stop = Stop();
        if (!stop || !Before())
            return None();
        if (stop->IsQuoted() && IsJoined() && Before()->lexeme.endsWith('.') && Before()->type == Token::TT_VARIABLE)
            return {Check::DotInName, Before()->place,
                    QString("The dot is part of the name \"%1\" here; a member stands behind a blank: \"%2 .%3\"")
                        .arg(Before()->lexeme, Before()->lexeme.chopped(1), stop->lexeme)};
        if (stop->type == Token::TT_NUMBER && stop->lexeme.startsWith('.'))
            return {Check::DotInName, stop->place,
                    QString("\"%1\" is a number of its own here; an element stands in brackets: \"[%2]\"")
                        .arg(stop->lexeme, stop->lexeme.mid(1))};
        return None();
    }

    StatementFinding Selector() const
    {
        const StatementToken* const stop = Stop();
        const bool isSelector = stop && (stop->type == Token::TT_LEFT_BRACKET || stop->type == Token::TT_DOT);
        const StatementToken* const next = At(m_stop + 1);
        if (isSelector && Before() && Before()->type == Token::TT_RIGHT_PARENTHESIS)
            return {Check::SelectorPlace, stop->place,
                    "No selector follows parentheses; it stands behind the name or text itself: \"names[7]\""};
        if (isSelector && stop->type == Token::TT_DOT && next && next->type == Token::TT_LEFT_PARENTHESIS)
            return {Check::SelectorPlace, next->place,
                    "A member is a name or a text and stands in no parentheses: \".'name'\""};
        return None();
    }

    const QString& m_statement;
    const QVector<StatementToken>& m_tokens;
    const ParserReport& m_report;
    const int m_stop;
};

} // namespace

StatementFinding FindSlip(const Diagnosis& diagnosis)
{
    if (diagnosis.Tree().Reports().isEmpty())
        return {Check::ParseError, {}, QString()};
    return SlipFinder(diagnosis).Find();
}

QString ForeignWordHint(const QString& name)
{
    for (const char* const word : {"null", "nullptr", "nil", "undefined"}) {
        if (name.compare(QLatin1String(word), Qt::CaseInsensitive) == 0)
            return "whether there is a value, \"HASVALUE\" asks: \"NOT (HASVALUE count)\"";
    }
    return QString();
}
