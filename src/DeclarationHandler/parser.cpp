#include "DeclarationHandler/parser.h"

#include "DeclarationHandler/Expressions/Arithmetic/expradd.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprdivide.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprmultiply.h"
#include "DeclarationHandler/Expressions/Arithmetic/exprsubstract.h"
#include "DeclarationHandler/Expressions/Comparison/exprequal.h"
#include "DeclarationHandler/Expressions/Comparison/exprequalorgreater.h"
#include "DeclarationHandler/Expressions/Comparison/exprequalorsmaller.h"
#include "DeclarationHandler/Expressions/Comparison/exprgreater.h"
#include "DeclarationHandler/Expressions/Comparison/exprnotequal.h"
#include "DeclarationHandler/Expressions/Comparison/exprsmaller.h"
#include "DeclarationHandler/Expressions/Logic/exprand.h"
#include "DeclarationHandler/Expressions/Logic/exprnand.h"
#include "DeclarationHandler/Expressions/Logic/exprnor.h"
#include "DeclarationHandler/Expressions/Logic/exprnot.h"
#include "DeclarationHandler/Expressions/Logic/expror.h"
#include "DeclarationHandler/Expressions/Logic/exprxor.h"
#include "DeclarationHandler/Expressions/exprarray.h"
#include "DeclarationHandler/Expressions/exprexistence.h"
#include "DeclarationHandler/Expressions/exprobjectproperty.h"
#include "DeclarationHandler/Expressions/exprparentheses.h"
#include "DeclarationHandler/Expressions/exprproperty.h"
#include "DeclarationHandler/Tokens/doublequotetoken.h"
#include "DeclarationHandler/Tokens/numbertoken.h"
#include "DeclarationHandler/Tokens/singlequotetoken.h"
#include "DeclarationHandler/Tokens/textview.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

// The grammar. expression(p) is an expression in a place of precedence p; q is the operator's own.
//
//   statement      expression(0)
//   expression(p)  operand { operator expression(q) }        while q > p
//   operand        parenthesised | existence | negation | atomic selectors
//   parenthesised  "(" expression(0) ")"
//   existence      "HASVALUE" expression(p)
//   negation       "NOT" expression(p)
//   atomic         text | number | "TRUE" | "FALSE" | reference
//   selectors      { "[" expression(0) "]" | "." atomic }
//
// The prefix operators take the precedence of their place, so their operand reaches as far right as
// that allows. Parentheses take no selectors.

namespace {

const char* const ParseOperation = "Parser::Parse(...)";

const char* const UnrecognisedMessage = "Unrecognised token at \"%1\".";
const char* const UnknownErrorMessage = "Unknown parsing error; the expression is not created.";
const char* const LeftOverMessage = "Did not expect token: \"%1\".";
const char* const WrongClosingMessage = "Encountered \"%1\" instead of \"%2\".";
const char* const MissingClosingMessage = "Missing: \"%1\".";
const char* const TooDeepMessage = "Expression is nested too deeply.";

const int MaxLevels = 1000;
const int UsualTokens = 64;

QLatin1String SourceFile()
{
    return QLatin1String("DeclarationHandler/parser");
}

template<typename Node>
IExpression* NewNode(IExpression* left, IExpression* right)
{
    return new Node(left, right);
}

struct BinaryNode
{
    Token::TOKEN_TYPE type;
    IExpression* (*create)(IExpression* left, IExpression* right);
};

const BinaryNode BinaryNodes[] = {
    {Token::TT_PLUS, NewNode<ExprAdd>},
    {Token::TT_MINUS, NewNode<ExprSubstract>},
    {Token::TT_MULTIPLY, NewNode<ExprMultiply>},
    {Token::TT_DIVIDE, NewNode<ExprDivide>},
    {Token::TT_EQUAL, NewNode<ExprEqual>},
    {Token::TT_NOT_EQUAL, NewNode<ExprNotEqual>},
    {Token::TT_SMALLER, NewNode<ExprSmaller>},
    {Token::TT_GREATER, NewNode<ExprGreater>},
    {Token::TT_EQUAL_OR_SMALLER, NewNode<ExprEqualOrSmaller>},
    {Token::TT_EQUAL_OR_GREATER, NewNode<ExprEqualOrGreater>},
    {Token::TT_OR, NewNode<ExprOr>},
    {Token::TT_AND, NewNode<ExprAnd>},
    {Token::TT_XOR, NewNode<ExprXor>},
    {Token::TT_NOR, NewNode<ExprNor>},
    {Token::TT_NAND, NewNode<ExprNand>},
};

IExpression* NewBinaryNode(Token::TOKEN_TYPE type, IExpression* left, IExpression* right)
{
    const BinaryNode* row = BinaryNodes;
    while (row->type != type)
        ++row;
    return row->create(left, right);
}

} // namespace

Parser::Parser()
    : m_dataPeer(nullptr),
      m_dataObserver(nullptr),
      m_widget(nullptr),
      m_topWidget(nullptr),
      m_nesting(0),
      m_levels(0),
      m_tooDeep(false),
      m_failedIndexes(0)
{
}

Parser::~Parser()
{
    Parser::Reset();
}

IParser* Parser::NewParser() const
{
    return new Parser;
}

IParsingResult* Parser::CopyResult() const
{
    return new ParsingResult(m_result);
}

void Parser::Reset()
{
    qDeleteAll(m_tokens);
    m_tokens.clear();
    m_dataPeer = nullptr;
    m_dataObserver = nullptr;
    m_widget = nullptr;
    m_topWidget = nullptr;
    m_result.Reset();
    m_referencedProperties.clear();
}

void Parser::Tokenize(const QString& statement)
{
    Reset();
    int position = TextView::SkipSpace(statement, 0);
    QString unread;
    m_tokens.reserve(qMin(statement.length() / 3, UsualTokens));
    while (position < statement.length()) {
        unread.setRawData(statement.constData() + position, statement.length() - position);
        Token* const token = GetToken(unread);
        if (!token) {
            const QString rest = statement.mid(position);
            m_result.SetParsedCharacters(position);
            ReportError(QString::fromLatin1("Parser::Tokenize(\"%1\")").arg(statement), __LINE__,
                        QString::fromLatin1(UnrecognisedMessage).arg(rest));
            return;
        }
        m_tokens.append(token);
        position = TextView::SkipSpace(statement, position + token->GetLexemeLength());
    }
}

IExpression* Parser::Parse(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                           const QString& defaultPackage, bool readOnly)
{
    m_dataPeer = dataPeer;
    m_dataObserver = dataObserver;
    m_widget = widget;
    m_topWidget = topWidget;
    m_referencedProperties.clear();
    m_tooDeep = false;
    m_failedIndexes = 0;

    int position = 0;
    IExpression* const expression = CreateExpression(&position, 0, defaultPackage, readOnly);
    if (!expression) {
        m_result.SetParsedCharacters(0);
        ReportError(QLatin1String(ParseOperation), __LINE__, QString::fromLatin1(UnknownErrorMessage));
    }
    if (HasTokens(position, 1)) {
        const Token* const leftOver = m_tokens.at(position);
        m_result.SetParsedCharacters(leftOver->GetLexemeOffset());
        m_result.AddWarning(QLatin1String(ParseOperation), SourceFile(), __LINE__,
                            QString::fromLatin1(LeftOverMessage).arg(leftOver->GetLexeme()));
    }
    return expression;
}

QSet<QPair<QObject*, QString>> Parser::GetReferencedProperties() const
{
    return m_referencedProperties;
}

Token* Parser::GetToken(const QString& text)
{
    Token* token = NumberToken::Parse(text);
    if (!token)
        token = Token::Parse(text);
    if (!token)
        token = SingleQuoteToken::Parse(text);
    if (!token)
        token = DoubleQuoteToken::Parse(text);
    if (!token)
        token = VariableToken::Parse(text);
    return token;
}

IExpression* Parser::CreateExpression(int* position, int minPrecedence, const QString& defaultPackage, bool readOnly)
{
    if (!HasTokens(*position, 1))
        return nullptr;
    ++m_nesting;
    IExpression* expression = nullptr;
    if (SetLevels(m_nesting))
        expression = CreateOperand(position, minPrecedence, defaultPackage, readOnly);
    while (expression && HasTokens(*position, 2)) {
        const int precedence = m_tokens.at(*position)->GetPrecedence();
        if (precedence <= minPrecedence)
            break;
        IExpression* const left = expression;
        expression = CreateBinOpExpression(position, precedence, defaultPackage, readOnly, left);
        if (!expression)
            delete left;
    }
    --m_nesting;
    return expression;
}

IExpression* Parser::CreateOperand(int* position, int minPrecedence, const QString& defaultPackage, bool readOnly)
{
    IExpression* operand = CreateParenthesisedExpression(position, defaultPackage, readOnly);
    if (!operand)
        operand = CreateExistenceExpression(position, minPrecedence, defaultPackage);
    if (!operand)
        operand = CreateNegatedExpression(position, minPrecedence, defaultPackage, readOnly);
    if (operand)
        return operand;

    operand = CreateAtomicExpression(position, defaultPackage, readOnly);
    if (operand)
        operand = CreateVariableExpression(position, defaultPackage, readOnly, operand);
    if (!m_tooDeep)
        return operand;
    delete operand;
    return nullptr;
}

IExpression* Parser::CreateBinOpExpression(int* position, int precedence, const QString& defaultPackage, bool readOnly,
                                           IExpression* left)
{
    if (!HasTokens(*position, 2) || !m_tokens.at(*position)->IsBinOp())
        return nullptr;
    const Token::TOKEN_TYPE type = m_tokens.at(*position)->GetTokenType();
    const int leftLevels = m_levels;
    int next = *position + 1;
    IExpression* const right = CreateExpression(&next, precedence, defaultPackage, readOnly);
    if (!right || !SetLevels(qMax(leftLevels, m_levels) + 1)) {
        delete right;
        return nullptr;
    }
    *position = next;
    return NewBinaryNode(type, left, right);
}

IExpression* Parser::CreateAtomicExpression(int* position, const QString& defaultPackage, bool readOnly)
{
    const Token* const token = m_tokens.at(*position);
    IExpression* const node
        = token->CreateExpression(m_dataPeer, m_dataObserver, m_widget, m_topWidget, defaultPackage, readOnly);
    if (!node)
        return nullptr;
    if (token->GetTokenType() == Token::TT_VARIABLE && static_cast<const VariableToken*>(token)->HasPackage())
        NoteReference(node);
    m_levels = 1;
    ++*position;
    return node;
}

void Parser::NoteReference(const IExpression* node)
{
    if (const ExprObjectProperty* const property = dynamic_cast<const ExprObjectProperty*>(node))
        m_referencedProperties.insert(qMakePair(property->GetTargetObject(), property->GetPropertyName()));
}

IExpression* Parser::CreateParenthesisedExpression(int* position, const QString& defaultPackage, bool readOnly)
{
    if (!HasTokens(*position, 3) || !IsAt(*position, Token::TT_LEFT_PARENTHESIS))
        return nullptr;
    int next = *position + 1;
    IExpression* const inner = CreateExpression(&next, 0, defaultPackage, readOnly);
    if (!inner)
        return nullptr;
    if (!ExpectClosing(next, Token::TT_RIGHT_PARENTHESIS, ")", "Parser::CreateParenthesisedExpression(...)")
        || !SetLevels(m_levels + 1)) {
        delete inner;
        return nullptr;
    }
    *position = next + 1;
    return new ExprParentheses(inner);
}

IExpression* Parser::CreateExistenceExpression(int* position, int minPrecedence, const QString& defaultPackage)
{
    // Asking for a value never writes it, whatever the rest of the statement may do.
    IExpression* const operand = CreatePrefixOperand(position, Token::TT_HASVALUE, minPrecedence, defaultPackage, true);
    return operand ? new ExprExistence(operand) : nullptr;
}

IExpression* Parser::CreateNegatedExpression(int* position, int minPrecedence, const QString& defaultPackage,
                                             bool readOnly)
{
    IExpression* const operand = CreatePrefixOperand(position, Token::TT_NOT, minPrecedence, defaultPackage, readOnly);
    return operand ? new ExprNot(operand, false) : nullptr;
}

// Reads a prefix operator and its operand, and counts the level of the node to be built for both.
IExpression* Parser::CreatePrefixOperand(int* position, Token::TOKEN_TYPE prefix, int minPrecedence,
                                         const QString& defaultPackage, bool readOnly)
{
    if (!HasTokens(*position, 2) || !IsAt(*position, prefix))
        return nullptr;
    int next = *position + 1;
    IExpression* const operand = CreateExpression(&next, minPrecedence, defaultPackage, readOnly);
    if (!operand || !SetLevels(m_levels + 1)) {
        delete operand;
        return nullptr;
    }
    *position = next;
    return operand;
}

IExpression* Parser::CreateVariableExpression(int* position, const QString& defaultPackage, bool readOnly,
                                              IExpression* left)
{
    // A loop, since chains of members add no nesting that would bound a recursion.
    IExpression* base = left;
    for (;;) {
        if (IExpression* const array = CreateArrayExpression(position, defaultPackage, readOnly, base))
            base = array;
        IExpression* const property = CreatePropertyExpression(position, defaultPackage, readOnly, base);
        if (!property)
            return base;
        base = property;
    }
}

IExpression* Parser::CreateArrayExpression(int* position, const QString& defaultPackage, bool readOnly,
                                           IExpression* left)
{
    IExpression* array = nullptr;
    int levels = m_levels;
    int next = *position;
    while (HasTokens(next, 3) && IsAt(next, Token::TT_LEFT_BRACKET)) {
        IExpression* const index = CreateIndex(&next, defaultPackage, readOnly);
        if (!index || !SetLevels(qMax(levels, m_levels) + 1)) {
            delete index;
            // What was read of it may be read again as something else, twice as often at each level.
            if (++m_failedIndexes > MaxLevels)
                RefuseDepth();
            break;
        }
        levels = m_levels;
        array = new ExprArray(array ? array : left, index, readOnly);
    }
    m_levels = levels;
    if (array)
        *position = next;
    return array;
}

// Unlike the others it moves the position also when it fails: past the "[" and what it read behind it.
IExpression* Parser::CreateIndex(int* position, const QString& defaultPackage, bool readOnly)
{
    ++*position;
    IExpression* const index = CreateExpression(position, 0, defaultPackage, readOnly);
    if (!index)
        return nullptr;
    if (!ExpectClosing(*position, Token::TT_RIGHT_BRACKET, "]", "Parser::CreateArrayExpression(...)")) {
        delete index;
        return nullptr;
    }
    ++*position;
    return index;
}

IExpression* Parser::CreatePropertyExpression(int* position, const QString& defaultPackage, bool readOnly,
                                              IExpression* left)
{
    if (!HasTokens(*position, 2) || !IsAt(*position, Token::TT_DOT))
        return nullptr;
    const int leftLevels = m_levels;
    int next = *position + 1;
    IExpression* const member = CreateAtomicExpression(&next, defaultPackage, readOnly);
    if (!member || !SetLevels(leftLevels + 1)) {
        delete member;
        return nullptr;
    }
    *position = next;
    return new ExprProperty(left, member, readOnly);
}

bool Parser::HasTokens(int position, int count) const
{
    return position + count <= m_tokens.count();
}

bool Parser::IsAt(int position, Token::TOKEN_TYPE type) const
{
    return m_tokens.at(position)->GetTokenType() == type;
}

bool Parser::ExpectClosing(int position, Token::TOKEN_TYPE type, const char* text, const char* operation)
{
    const QLatin1String closing(text);
    if (!HasTokens(position, 1)) {
        ReportError(QLatin1String(operation), __LINE__, QString::fromLatin1(MissingClosingMessage).arg(closing));
        return false;
    }
    if (!IsAt(position, type)) {
        ReportError(QLatin1String(operation), __LINE__,
                    QString::fromLatin1(WrongClosingMessage).arg(m_tokens.at(position)->GetLexeme(), closing));
        return false;
    }
    return true;
}

// Notes the height of a tree; false, with the error in the record, when it exceeds the limit.
bool Parser::SetLevels(int levels)
{
    m_levels = levels;
    if (levels <= MaxLevels)
        return true;
    RefuseDepth();
    return false;
}

void Parser::RefuseDepth()
{
    if (!m_tooDeep)
        ReportError(QString::fromLatin1("Parser::CreateExpression(...)"), __LINE__,
                    QString::fromLatin1(TooDeepMessage));
    m_tooDeep = true;
}

void Parser::ReportError(const QString& operation, int line, const QString& message)
{
    m_result.SetError(operation, SourceFile(), line, message);
}
