#include "common/slips.h"

#include <QRegularExpression>

namespace {

/// An operator of other languages, and what stands for it here.
struct Foreign
{
    const char* text;
    const char* hint;
};

const char QuotesHint[] = "a text stands between \"'\" or between '\"'";
const char UnchangedHint[] = "a statement is a value and changes nothing";
const char CommentHint[] = "a statement has no comments";
const char ChoiceHint[] = "to choose a value, take it from a list or map: \"names[key]\"";
const char RemainderHint[] = "nothing here gives a remainder";

const Foreign UnrecognisedTexts[] = {
    {"&&", "the operator is \"AND\""},
    {"||", "the operator is \"OR\""},
    {"!==", "two values differ with \"!=\""},
    {"!", "the operator is \"NOT\", and two values differ with \"!=\""},
    {"%", "nothing here gives a remainder, and a text stands in quotes: \"'%'\""},
    {"?", ChoiceHint},
    {"&", "the operator is \"AND\", and texts are joined with \"+\""},
    {"|", "the operator is \"OR\""},
    {"^", "multiply instead"},
    {",", "texts are joined with \"+\""},
    {";", "nothing marks the end of a statement"},
    {"$", "a variable stands by its name alone"},
    {"{", "a variable stands by its name alone, and an element in brackets: \"names[0]\""},
    {"#", "a text stands in quotes: \"'#ff0000'\""},
    {"`", QuotesHint},
    {"\xe2\x80\x98", QuotesHint},
    {"\xe2\x80\x99", QuotesHint},
    {"\xe2\x80\x9a", QuotesHint},
    {"\xe2\x80\x9c", QuotesHint},
    {"\xe2\x80\x9d", QuotesHint},
    {"\xe2\x80\x9e", QuotesHint},
    {"\xe2\x88\x92", "the operator is \"-\""},
    {"\xe2\x80\x93", "the operator is \"-\""},
    {"\xc3\x97", "the operator is \"*\""},
    {"\xc3\xb7", "the operator is \"/\""},
    {"\xe2\x89\xa4", "the operator is \"<=\""},
    {"\xe2\x89\xa5", "the operator is \">=\""},
    {"\xe2\x89\xa0", "two values differ with \"!=\""},
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
    {"++", "to add one, subtract its negative: \"count - -1\""},
    {"--", "to subtract one: \"count - 1\""},
    {"+=", UnchangedHint},
    {"-=", UnchangedHint},
    {"*=", UnchangedHint},
    {"/=", UnchangedHint},
    {"//", CommentHint},
    {"/*", CommentHint},
};

/// Words that are operators in other languages and names of variables here.
const Foreign Words[] = {
    {"if", ChoiceHint},     {"then", ChoiceHint}, {"else", ChoiceHint}, {"is", "two values are compared with \"=\""},
    {"mod", RemainderHint},
};

StatementFinding ForeignFinding(const Foreign& foreign, int offset)
{
    const QString text = QString::fromUtf8(foreign.text);
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
          m_stop(diagnosis.Tokens().NumberAt(m_report.place.offset)),
          m_consequence(diagnosis.HasExpression() ? Check::LeftOver : Check::ParseError)
    {
    }

    StatementFinding Find() const
    {
        using Guess = StatementFinding (SlipFinder::*)() const;
        static const Guess guesses[] = {&SlipFinder::NestedQuotes,
                                        &SlipFinder::Function,
                                        &SlipFinder::PairedOperator,
                                        &SlipFinder::Comma,
                                        &SlipFinder::UnrecognisedOperator,
                                        &SlipFinder::Path,
                                        &SlipFinder::PathWithoutStart,
                                        &SlipFinder::Word,
                                        &SlipFinder::Quotes,
                                        &SlipFinder::Sign,
                                        &SlipFinder::Exponent,
                                        &SlipFinder::Dot,
                                        &SlipFinder::Selector,
                                        &SlipFinder::Bracket,
                                        &SlipFinder::LonelyOperator};
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
    const StatementToken* Stop() const
    {
        return IsUnrecognised() || m_report.cause == ParserReport::TooDeep ? nullptr : At(m_stop);
    }
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
                && QStringView(m_statement).mid(m_report.place.offset).startsWith(QString::fromUtf8(foreign.text)))
                return ForeignFinding(foreign, m_report.place.offset);
        }
        return None();
    }

    /// The quote of a text ends it, wherever it was meant to stand.
    StatementFinding NestedQuotes() const
    {
        for (int i = 1; At(i) && m_tokens.at(i).place.offset <= m_report.place.offset; ++i) {
            const StatementToken& text = m_tokens.at(i - 1);
            const StatementToken& word = m_tokens.at(i);
            if (!text.IsQuoted() || word.row || word.IsQuoted() || text.place.End() != word.place.offset
                || !QStringView(m_statement).mid(word.place.End()).contains(text.lexeme.at(0)))
                continue;
            return {
                Check::Escape, word.place,
                "The text ends before this; a text with '\"' stands between \"'\", and one with \"'\" between '\"'"};
        }
        return None();
    }

    StatementFinding Function() const
    {
        for (int i = 1; At(i) && m_tokens.at(i).place.offset <= m_report.place.offset; ++i) {
            const StatementToken& name = m_tokens.at(i - 1);
            if (m_tokens.at(i).type == Token::TT_LEFT_PARENTHESIS && name.type == Token::TT_VARIABLE)
                return {Check::ForeignOperator, name.place,
                        QString("There are no functions in the language; \"%1\" is the name of a variable here")
                            .arg(name.lexeme)};
        }
        return None();
    }

    /// What starts as a reference, and is none.
    StatementFinding Path() const
    {
        static const QRegularExpression words("^@[\\w.:/\\\\]*");
        static const QRegularExpression blank("^@[\\w.\\\\]*:?\\s+[\\w:]");
        const QString rest = m_statement.mid(m_report.place.offset);
        if (!IsUnrecognised() || !rest.startsWith('@'))
            return None();
        const QString path = words.match(rest).captured();
        QString message = "A reference is a path, \":\" and a name: \"@Engine:rpm\" or \"@TopWidget\\spinBox:value\"";
        if (path.contains('/'))
            message
                = QString("The parts of a path are separated by \"\\\": \"%1\"").arg(QString(path).replace('/', '\\'));
        else if (blank.match(rest).hasMatch())
            message = "No blanks stand in a reference: \"@Engine:rpm\"";
        return {Check::ParseError, {m_report.place.offset, int(path.size())}, message};
    }

    StatementFinding PathWithoutStart() const
    {
        static const QRegularExpression words("^[\\w.:\\\\]+");
        const QStringView stop = QStringView(m_statement).mid(m_report.place.offset, 1);
        if (!IsUnrecognised() || (stop != QLatin1String(":") && stop != QLatin1String("\\")))
            return None();
        if (!IsJoined() || Before()->type != Token::TT_VARIABLE || Before()->reference.hasPackage)
            return {Check::ParseError,
                    {m_report.place.offset, 1},
                    QString("\"%1\" stands only in a reference: \"@TopWidget\\spinBox:value\"").arg(stop.toString())};
        const QString path = words.match(m_statement.mid(Before()->place.offset)).captured();
        return {Check::ParseError,
                {Before()->place.offset, int(path.size())},
                QString("A path starts with \"@\": \"@%1\"").arg(path)};
    }

    StatementFinding Word() const
    {
        for (const Foreign& word : Words) {
            for (const StatementToken* const token : {Before(), Stop()}) {
                if (token && token->lexeme.compare(QLatin1String(word.text), Qt::CaseInsensitive) == 0)
                    return {Check::ForeignOperator, token->place,
                            QString("There is no \"%1\" in the language; %2").arg(token->lexeme, word.hint)};
            }
        }
        return None();
    }

    StatementFinding Bracket() const
    {
        const StatementToken* const stop = Stop();
        if (stop && stop->HasRole(Language::ClosingBracket))
            return {m_consequence, stop->place, QString("No bracket opens that \"%1\" closes").arg(stop->lexeme)};
        int depth = 0;
        for (int i = m_stop; Stop() && i < m_tokens.size(); ++i) {
            const bool opens
                = m_tokens.at(i).type == Token::TT_LEFT_PARENTHESIS || m_tokens.at(i).type == Token::TT_LEFT_BRACKET;
            depth += opens ? 1 : m_tokens.at(i).HasRole(Language::ClosingBracket) ? -1 : 0;
            if (depth == 0)
                return None();
        }
        if (depth == 0)
            return None();
        return {m_consequence, stop->place, QString("The \"%1\" that opens here is not closed").arg(stop->lexeme)};
    }

    /// An operator without one of its operands.
    StatementFinding LonelyOperator() const
    {
        const StatementToken* const stop = Stop();
        if (!stop || !stop->row || !stop->row->IsBinary())
            return None();
        if (m_report.cause == ParserReport::LeftOver && m_stop == m_tokens.size() - 1)
            return {m_consequence, stop->place,
                    QString("Nothing stands behind \"%1\", so it is left out").arg(stop->lexeme)};
        if (m_report.cause == ParserReport::OperandWanted && stop->type == Token::TT_NOT_EQUAL)
            return {m_consequence, stop->place,
                    "\"!=\" stands between two values; what turns a truth value round is \"NOT\""};
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
    const Check m_consequence; ///< Of an error that the language has no trap for.
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
