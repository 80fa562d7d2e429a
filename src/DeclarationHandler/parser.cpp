#include "DeclarationHandler/parser.h"

#include <QVarLengthArray>
#include <QVector>

#include "DeclarationHandler/Expressions/exprarray.h"
#include "DeclarationHandler/Expressions/exprobjectproperty.h"
#include "DeclarationHandler/Expressions/exprparentheses.h"
#include "DeclarationHandler/Expressions/exprproperty.h"
#include "DeclarationHandler/Tokens/language.h"
#include "DeclarationHandler/Tokens/lexer.h"
#include "DeclarationHandler/Tokens/variabletoken.h"
#include "DeclarationHandler/parserlistener.h"

// The grammar. expression(p) is an expression in a place of precedence p; q is the operator's own.
//
//   statement      expression(0)
//   expression(p)  operand { operator expression(q) }        while q > p
//   operand        parenthesised | prefixed | atomic selectors
//   parenthesised  "(" expression(0) ")"
//   prefixed       prefix-operator expression(p)
//   atomic         text | number | literal | reference
//   selectors      { "[" expression(0) "]" | "." atomic }
//
// The operators and literals are those of the table in Tokens/language.cpp. The prefix operators take the
// precedence of their place, so their operand reaches as far right as that allows. Parentheses take no
// selectors.

namespace {

const char* const ParseOperation = "Parser::Parse(...)";
const char* const ExpressionOperation = "Parser::CreateExpression(...)";
const char* const ParenthesisedOperation = "Parser::CreateParenthesisedExpression(...)";
const char* const ArrayOperation = "Parser::CreateArrayExpression(...)";

const char* const UnrecognisedMessage = "Unrecognised token at \"%1\".";
const char* const UnknownErrorMessage = "Unknown parsing error; the expression is not created.";
const char* const LeftOverMessage = "Did not expect token: \"%1\".";
const char* const WrongClosingMessage = "Encountered \"%1\" instead of \"%2\".";
const char* const MissingClosingMessage = "Missing: \"%1\".";
const char* const TooDeepMessage = "Expression is nested too deeply.";

/// Of a tree. Parsing, evaluating and deleting are recursive.
const int MaxLevels = 1000;
/// Behind an index that failed the parser goes on where it stopped, so that an operand may be read twice; in
/// nested indexes twice at each level. This bounds the time.
const int MaxFailedIndexes = 1000;
/// Room for the tokens of nearly every statement without another allocation.
const int UsualTokens = 32;

QLatin1String SourceFile()
{
    return QLatin1String("DeclarationHandler/parser");
}

} // namespace

/// What a parser knows of the statement that it reads.
class ParserPrivate
{
public:
    ParserPrivate();
    ~ParserPrivate();

    void Reset();
    void Tokenize(const QString& statement);
    IExpression* Parse();

    ParserListener* m_listener;
    IDataPeer* m_dataPeer;
    IDataObserver* m_dataObserver;
    QObject* m_widget;
    QObject* m_topWidget;
    QString m_defaultPackage;
    bool m_readOnly; ///< Whether the whole tree is.
    QSet<QPair<QObject*, QString>> m_referencedProperties;
    ParsingResult m_result;

private:
    Q_DISABLE_COPY(ParserPrivate)

    // Each reads one production of the grammar from the token at the position on. On success it moves
    // the position past what it read and returns a new node, owned by the caller.
    IExpression* CreateExpression(int* position, int minPrecedence, bool readOnly);
    IExpression* CreateOperand(int* position, int minPrecedence, bool readOnly);
    IExpression* CreateBinOpExpression(int* position, int precedence, bool readOnly, IExpression* left);
    IExpression* CreateAtomicExpression(int* position, bool readOnly);
    IExpression* CreateParenthesisedExpression(int* position, bool readOnly);
    IExpression* CreatePrefixExpression(int* position, int minPrecedence, bool readOnly);
    IExpression* CreateVariableExpression(int* position, bool readOnly, IExpression* left);
    IExpression* CreateArrayExpression(int* position, bool readOnly, IExpression* left);
    IExpression* CreateIndex(int* position, bool readOnly);
    IExpression* CreatePropertyExpression(int* position, bool readOnly, IExpression* left);

    IExpression* CreateLeaf(int position, bool readOnly);
    IExpression* Built(ParsedNode::Kind kind, int token, int levels, IExpression* node, const IExpression* left,
                       const IExpression* right);
    void NoteReference(const IExpression* node);
    bool HasTokens(int position, int count) const { return position + count <= m_tokens.count(); }
    bool IsAt(int position, Token::TOKEN_TYPE type) const { return m_tokens.at(position)->GetTokenType() == type; }
    bool ExpectClosing(int position, Token::TOKEN_TYPE type, const char* operation);
    bool AllowsLevels(int levels);
    void RefuseDepth();
    void NoteFailure(int position, ParserReport::Cause cause);
    void ReportNoExpression();
    void ReportLeftOver(int position);
    void ReportError(const char* operation, int line, const QString& message, ParserReport::Cause cause,
                     const TextPlace& place);
    void Tell(ParserReport::Cause cause, bool isError, const QString& message, const TextPlace& place);
    TextPlace PlaceOf(int position) const;

    QVarLengthArray<Token*, UsualTokens> m_tokens;
    QVector<TextPlace> m_places; ///< Of the tokens, where there is a listener.
    int m_nesting;               ///< Calls of CreateExpression() that are running.
    int m_levels;                ///< Height of the tree that was finished last.
    bool m_tooDeep;              ///< The statement is refused.
    int m_failedIndexes;
    int m_failure; ///< The last token that could not stand where it does; -1 when there is none.
    ParserReport::Cause m_failureCause;
};

ParserPrivate::ParserPrivate()
    : m_listener(nullptr),
      m_dataPeer(nullptr),
      m_dataObserver(nullptr),
      m_widget(nullptr),
      m_topWidget(nullptr),
      m_readOnly(false),
      m_nesting(0),
      m_levels(0),
      m_tooDeep(false),
      m_failedIndexes(0),
      m_failure(-1),
      m_failureCause(ParserReport::EmptyStatement)
{
}

ParserPrivate::~ParserPrivate()
{
    qDeleteAll(m_tokens);
}

void ParserPrivate::Reset()
{
    qDeleteAll(m_tokens);
    m_tokens.clear();
    m_places.clear();
    m_dataPeer = nullptr;
    m_dataObserver = nullptr;
    m_widget = nullptr;
    m_topWidget = nullptr;
    m_defaultPackage.clear();
    m_result.Reset();
    m_referencedProperties.clear();
}

void ParserPrivate::Tokenize(const QString& statement)
{
    Lexer lexer(statement);
    while (Token* const token = lexer.ReadToken()) {
        m_tokens.append(token);
        if (!m_listener)
            continue;
        m_places.append(lexer.GetPlace());
        m_listener->OnToken(*token, lexer.GetPlace());
    }
    const TextPlace unread = lexer.GetUnread();
    if (unread.length == 0)
        return;
    m_result.SetParsedCharacters(unread.offset);
    const QString operation = QString::fromLatin1("Parser::Tokenize(\"%1\")").arg(statement);
    const QString message = QString::fromLatin1(UnrecognisedMessage).arg(statement.mid(unread.offset));
    m_result.SetError(operation, SourceFile(), __LINE__, message);
    Tell(ParserReport::UnrecognisedText, true, message, unread);
}

IExpression* ParserPrivate::Parse()
{
    m_referencedProperties.clear();
    m_tooDeep = false;
    m_failedIndexes = 0;
    m_failure = -1;
    m_failureCause = ParserReport::EmptyStatement;

    int position = 0;
    IExpression* const expression = CreateExpression(&position, Language::None, m_readOnly);
    if (!expression)
        ReportNoExpression();
    if (HasTokens(position, 1))
        ReportLeftOver(position);
    return expression;
}

IExpression* ParserPrivate::CreateExpression(int* position, int minPrecedence, bool readOnly)
{
    if (!HasTokens(*position, 1))
        return nullptr;
    ++m_nesting;
    IExpression* expression = nullptr;
    if (AllowsLevels(m_nesting))
        expression = CreateOperand(position, minPrecedence, readOnly);
    while (expression && HasTokens(*position, 2)) {
        const int precedence = m_tokens.at(*position)->GetPrecedence();
        if (precedence <= minPrecedence)
            break;
        IExpression* const left = expression;
        expression = CreateBinOpExpression(position, precedence, readOnly, left);
        if (!expression)
            delete left;
    }
    --m_nesting;
    return expression;
}

IExpression* ParserPrivate::CreateOperand(int* position, int minPrecedence, bool readOnly)
{
    const int start = *position;
    IExpression* operand = CreateParenthesisedExpression(position, readOnly);
    if (!operand)
        operand = CreatePrefixExpression(position, minPrecedence, readOnly);
    if (operand)
        return operand;

    operand = CreateAtomicExpression(position, readOnly);
    if (operand)
        operand = CreateVariableExpression(position, readOnly, operand);
    if (m_tooDeep) {
        delete operand;
        return nullptr;
    }
    if (!operand)
        NoteFailure(start, IsAt(start, Token::TT_VARIABLE) ? ParserReport::UnknownObject : ParserReport::OperandWanted);
    return operand;
}

IExpression* ParserPrivate::CreateBinOpExpression(int* position, int precedence, bool readOnly, IExpression* left)
{
    const int token = *position;
    if (!HasTokens(token, 2))
        return nullptr;
    const Language::Row* const row = Language::Find(m_tokens.at(token)->GetTokenType());
    if (!row || !row->IsBinary()) {
        NoteFailure(token, ParserReport::OperatorWanted);
        return nullptr;
    }
    const int leftLevels = m_levels;
    int next = token + 1;
    IExpression* const right = CreateExpression(&next, precedence, readOnly);
    const int levels = qMax(leftLevels, m_levels) + 1;
    if (!right || !AllowsLevels(levels)) {
        delete right;
        return nullptr;
    }
    *position = next;
    return Built(ParsedNode::Binary, token, levels, row->createBinary(left, right), left, right);
}

IExpression* ParserPrivate::CreateAtomicExpression(int* position, bool readOnly)
{
    IExpression* const node = CreateLeaf(*position, readOnly);
    if (!node)
        return nullptr;
    Built(ParsedNode::Operand, *position, 1, node, nullptr, nullptr);
    ++*position;
    return node;
}

IExpression* ParserPrivate::CreateLeaf(int position, bool readOnly)
{
    const Token* const token = m_tokens.at(position);
    const bool isReference = token->GetTokenType() == Token::TT_VARIABLE;
    if (m_listener && isReference) {
        const VariableToken& reference = *static_cast<const VariableToken*>(token);
        if (IExpression* const node = m_listener->CreateReference(reference, PlaceOf(position), readOnly))
            return node;
    }
    IExpression* const node
        = token->CreateExpression(m_dataPeer, m_dataObserver, m_widget, m_topWidget, m_defaultPackage, readOnly);
    if (node && isReference && static_cast<const VariableToken*>(token)->HasPackage())
        NoteReference(node);
    return node;
}

void ParserPrivate::NoteReference(const IExpression* node)
{
    if (const ExprObjectProperty* const property = dynamic_cast<const ExprObjectProperty*>(node))
        m_referencedProperties.insert(qMakePair(property->GetTargetObject(), property->GetPropertyName()));
}

IExpression* ParserPrivate::CreateParenthesisedExpression(int* position, bool readOnly)
{
    const int token = *position;
    if (!HasTokens(token, 3) || !IsAt(token, Token::TT_LEFT_PARENTHESIS))
        return nullptr;
    int next = token + 1;
    IExpression* const inner = CreateExpression(&next, Language::None, readOnly);
    if (!inner)
        return nullptr;
    const int levels = m_levels + 1;
    if (!ExpectClosing(next, Token::TT_RIGHT_PARENTHESIS, ParenthesisedOperation) || !AllowsLevels(levels)) {
        delete inner;
        return nullptr;
    }
    *position = next + 1;
    return Built(ParsedNode::Parentheses, token, levels, new ExprParentheses(inner), inner, nullptr);
}

IExpression* ParserPrivate::CreatePrefixExpression(int* position, int minPrecedence, bool readOnly)
{
    const int token = *position;
    const Language::Row* const row = HasTokens(token, 2) ? Language::Find(m_tokens.at(token)->GetTokenType()) : nullptr;
    if (!row || !row->createPrefix)
        return nullptr;
    int next = token + 1;
    IExpression* const operand = CreateExpression(&next, minPrecedence, readOnly || row->isOperandReadOnly);
    const int levels = m_levels + 1;
    if (!operand || !AllowsLevels(levels)) {
        delete operand;
        return nullptr;
    }
    *position = next;
    return Built(ParsedNode::Prefix, token, levels, row->createPrefix(operand), operand, nullptr);
}

IExpression* ParserPrivate::CreateVariableExpression(int* position, bool readOnly, IExpression* left)
{
    // A loop, since chains of members add no nesting that would bound a recursion.
    IExpression* base = left;
    for (;;) {
        if (IExpression* const array = CreateArrayExpression(position, readOnly, base))
            base = array;
        IExpression* const property = CreatePropertyExpression(position, readOnly, base);
        if (!property)
            return base;
        base = property;
    }
}

IExpression* ParserPrivate::CreateArrayExpression(int* position, bool readOnly, IExpression* left)
{
    IExpression* array = nullptr;
    int baseLevels = m_levels;
    int next = *position;
    while (HasTokens(next, 3) && IsAt(next, Token::TT_LEFT_BRACKET)) {
        const int token = next;
        IExpression* const index = CreateIndex(&next, readOnly);
        const int levels = qMax(baseLevels, m_levels) + 1;
        if (!index || !AllowsLevels(levels)) {
            delete index;
            if (++m_failedIndexes > MaxFailedIndexes)
                RefuseDepth();
            break;
        }
        IExpression* const collection = array ? array : left;
        array = new ExprArray(collection, index, readOnly);
        Built(ParsedNode::Subscript, token, levels, array, collection, index);
        baseLevels = levels;
    }
    m_levels = baseLevels;
    if (array)
        *position = next;
    return array;
}

// Unlike the others it moves the position also when it fails: past the "[" and what it read behind it.
IExpression* ParserPrivate::CreateIndex(int* position, bool readOnly)
{
    ++*position;
    IExpression* const index = CreateExpression(position, Language::None, readOnly);
    if (!index)
        return nullptr;
    if (!ExpectClosing(*position, Token::TT_RIGHT_BRACKET, ArrayOperation)) {
        delete index;
        return nullptr;
    }
    ++*position;
    return index;
}

IExpression* ParserPrivate::CreatePropertyExpression(int* position, bool readOnly, IExpression* left)
{
    const int token = *position;
    if (!HasTokens(token, 2) || !IsAt(token, Token::TT_DOT))
        return nullptr;
    const int levels = m_levels + 1;
    int next = token + 1;
    IExpression* const member = CreateAtomicExpression(&next, readOnly);
    if (!member || !AllowsLevels(levels)) {
        delete member;
        return nullptr;
    }
    *position = next;
    return Built(ParsedNode::Member, token, levels, new ExprProperty(left, member, readOnly), left, member);
}

/// Notes the height of a tree that is finished, and tells of its root, which it answers.
IExpression* ParserPrivate::Built(ParsedNode::Kind kind, int token, int levels, IExpression* node,
                                  const IExpression* left, const IExpression* right)
{
    m_levels = levels;
    if (m_listener) {
        const ParsedNode told = {kind, token, node, left, right};
        m_listener->OnNode(told);
    }
    return node;
}

bool ParserPrivate::ExpectClosing(int position, Token::TOKEN_TYPE type, const char* operation)
{
    if (HasTokens(position, 1) && IsAt(position, type))
        return true;
    const QString closing = Language::GetText(*Language::Find(type));
    const bool isMissing = !HasTokens(position, 1);
    const QString message = isMissing
        ? QString::fromLatin1(MissingClosingMessage).arg(closing)
        : QString::fromLatin1(WrongClosingMessage).arg(m_tokens.at(position)->GetLexeme(), closing);
    ReportError(operation, __LINE__, message, isMissing ? ParserReport::MissingClosing : ParserReport::WrongClosing,
                PlaceOf(position));
    return false;
}

/// False, with the error in the record, when a tree of that height is refused.
bool ParserPrivate::AllowsLevels(int levels)
{
    if (levels > MaxLevels)
        RefuseDepth();
    return levels <= MaxLevels;
}

void ParserPrivate::RefuseDepth()
{
    if (!m_tooDeep)
        ReportError(ExpressionOperation, __LINE__, QString::fromLatin1(TooDeepMessage), ParserReport::TooDeep,
                    TextPlace(0, PlaceOf(m_tokens.count()).offset));
    m_tooDeep = true;
}

void ParserPrivate::NoteFailure(int position, ParserReport::Cause cause)
{
    if (position < m_failure)
        return;
    m_failure = position;
    m_failureCause = cause;
}

void ParserPrivate::ReportNoExpression()
{
    const bool isExplained = !m_result.HasSucceeded();
    m_result.SetParsedCharacters(0);
    ReportError(ParseOperation, __LINE__, QString::fromLatin1(UnknownErrorMessage),
                isExplained ? ParserReport::Consequence : m_failureCause, PlaceOf(qMax(0, m_failure)));
}

void ParserPrivate::ReportLeftOver(int position)
{
    const Token* const leftOver = m_tokens.at(position);
    const QString message = QString::fromLatin1(LeftOverMessage).arg(leftOver->GetLexeme());
    m_result.SetParsedCharacters(leftOver->GetLexemeOffset());
    m_result.AddWarning(QLatin1String(ParseOperation), SourceFile(), __LINE__, message);
    Tell(ParserReport::LeftOver, false, message, PlaceOf(position));
}

void ParserPrivate::ReportError(const char* operation, int line, const QString& message, ParserReport::Cause cause,
                                const TextPlace& place)
{
    m_result.SetError(QLatin1String(operation), SourceFile(), line, message);
    Tell(cause, true, message, place);
}

void ParserPrivate::Tell(ParserReport::Cause cause, bool isError, const QString& message, const TextPlace& place)
{
    if (!m_listener)
        return;
    const ParserReport report = {cause, isError, message, place};
    m_listener->OnReport(report);
}

/// The end of the statement for a position behind the last token.
TextPlace ParserPrivate::PlaceOf(int position) const
{
    if (position < m_places.count())
        return m_places.at(position);
    return TextPlace(m_places.isEmpty() ? 0 : m_places.last().End(), 0);
}

Parser::Parser() : d(new ParserPrivate) {}

Parser::~Parser() {}

IParser* Parser::NewParser() const
{
    return new Parser;
}

IParsingResult* Parser::CopyResult() const
{
    return new ParsingResult(d->m_result);
}

void Parser::Reset()
{
    d->Reset();
}

void Parser::Tokenize(const QString& statement)
{
    Reset();
    d->Tokenize(statement);
}

IExpression* Parser::Parse(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                           const QString& defaultPackage, bool readOnly)
{
    d->m_dataPeer = dataPeer;
    d->m_dataObserver = dataObserver;
    d->m_widget = widget;
    d->m_topWidget = topWidget;
    d->m_defaultPackage = defaultPackage;
    d->m_readOnly = readOnly;
    return d->Parse();
}

QSet<QPair<QObject*, QString>> Parser::GetReferencedProperties() const
{
    return d->m_referencedProperties;
}

void Parser::SetListener(ParserListener* listener)
{
    d->m_listener = listener;
}
