#include "common/statementtree.h"

namespace {

const int MaxNesting = 1000;
const int MaxFailedIndexes = 1000;

} // namespace

StatementTree::StatementTree(const StatementTokens& statement)
    : m_tokens(statement.Tokens()), m_end{m_tokens.isEmpty() ? 0 : m_tokens.last().place.End(), 0}
{
    if (statement.Unread().length > 0)
        m_reports.append({statement.Unread(), QString(), true});
    int position = 0;
    m_root = CreateExpression(&position, 0);
    m_consumed = position;
    if (m_root < 0)
        m_reports.append({PlaceOf(qMax(0, m_failure)), FailureDetail(), true});
    if (HasTokens(position, 1))
        m_reports.append({PlaceOf(position), QString(), false});
}

int StatementTree::CreateExpression(int* position, int minPrecedence)
{
    if (!HasTokens(*position, 1) || m_nesting >= MaxNesting || IsRefused())
        return -1;
    ++m_nesting;
    int expression = CreateOperand(position, minPrecedence);
    while (expression >= 0 && HasTokens(*position, 2) && m_tokens.at(*position).precedence > minPrecedence)
        expression = CreateBinary(position, expression);
    --m_nesting;
    return expression;
}

int StatementTree::CreateOperand(int* position, int minPrecedence)
{
    const int start = *position;
    int operand = CreateParenthesised(position);
    if (operand < 0)
        operand = CreatePrefix(position, minPrecedence);
    if (operand >= 0)
        return operand;
    operand = CreateAtomic(position);
    if (operand >= 0)
        operand = CreateSelectors(position, operand);
    if (IsRefused())
        return -1;
    if (operand >= 0)
        return operand;
    Fail(start, "An operand is wanted in place of \"%1\".");
    return -1;
}

int StatementTree::CreateBinary(int* position, int left)
{
    const int token = *position;
    if (!m_tokens.at(token).isBinary) {
        Fail(token, "\"%1\" cannot follow an operand.");
        return -1;
    }
    int next = token + 1;
    const int right = CreateExpression(&next, m_tokens.at(token).precedence);
    if (right < 0)
        return -1;
    *position = next;
    return Add(Binary, token, left, right);
}

int StatementTree::CreateParenthesised(int* position)
{
    const int token = *position;
    if (!HasTokens(token, 3) || !IsAt(token, Token::TT_LEFT_PARENTHESIS))
        return -1;
    int next = token + 1;
    const int inner = CreateExpression(&next, 0);
    if (inner < 0 || !ExpectClosing(next, Token::TT_RIGHT_PARENTHESIS))
        return -1;
    *position = next + 1;
    return Add(Parentheses, token, inner);
}

int StatementTree::CreatePrefix(int* position, int minPrecedence)
{
    const int token = *position;
    if (!HasTokens(token, 2) || !(IsAt(token, Token::TT_HASVALUE) || IsAt(token, Token::TT_NOT)))
        return -1;
    int next = token + 1;
    const int operand = CreateExpression(&next, minPrecedence);
    if (operand < 0)
        return -1;
    *position = next;
    return Add(Prefix, token, operand);
}

int StatementTree::CreateAtomic(int* position)
{
    switch (m_tokens.at(*position).type) {
    case Token::TT_NUMBER:
    case Token::TT_SINGLE_QUOTE:
    case Token::TT_DOUBLE_QUOTE:
    case Token::TT_TRUE:
    case Token::TT_FALSE:
    case Token::TT_VARIABLE:
        return Add(Leaf, (*position)++, -1);
    default:
        return -1;
    }
}

int StatementTree::CreateSelectors(int* position, int base)
{
    for (;;) {
        base = CreateSubscripts(position, base);
        const int member = CreateMember(position, base);
        if (member < 0)
            return base;
        base = member;
    }
}

int StatementTree::CreateSubscripts(int* position, int base)
{
    int subscript = -1;
    int next = *position;
    while (HasTokens(next, 3) && IsAt(next, Token::TT_LEFT_BRACKET)) {
        const int token = next;
        const int index = CreateIndex(&next);
        if (index < 0) {
            ++m_failedIndexes;
            break;
        }
        subscript = Add(Subscript, token, subscript < 0 ? base : subscript, index);
    }
    if (subscript < 0)
        return base;
    *position = next;
    return subscript;
}

int StatementTree::CreateIndex(int* position)
{
    ++*position;
    const int index = CreateExpression(position, 0);
    if (index < 0 || !ExpectClosing(*position, Token::TT_RIGHT_BRACKET))
        return -1;
    ++*position;
    return index;
}

int StatementTree::CreateMember(int* position, int base)
{
    if (!HasTokens(*position, 2) || !IsAt(*position, Token::TT_DOT))
        return -1;
    const int token = *position;
    int next = token + 1;
    const int member = CreateAtomic(&next);
    if (member < 0)
        return -1;
    *position = next;
    return Add(Member, token, base, member);
}

/// As the parser does: what stands behind a failed index is read again, twice as often at each level.
bool StatementTree::IsRefused() const
{
    return m_failedIndexes > MaxFailedIndexes;
}

bool StatementTree::ExpectClosing(int position, Token::TOKEN_TYPE type)
{
    if (HasTokens(position, 1) && IsAt(position, type))
        return true;
    m_reports.append({PlaceOf(position), QString(), true});
    return false;
}

int StatementTree::Add(Kind kind, int token, int left, int right)
{
    m_nodes.append({kind, token, left, right});
    return m_nodes.size() - 1;
}

/// Nothing where an earlier report has told the reason.
QString StatementTree::FailureDetail() const
{
    if (!m_reports.isEmpty())
        return QString();
    return m_failure < 0 ? QString("The statement is empty.")
                         : QString(m_failureDetail).arg(m_tokens.at(m_failure).lexeme);
}

Place StatementTree::PlaceOf(int token) const
{
    return HasTokens(token, 1) ? m_tokens.at(token).place : m_end;
}

void StatementTree::Fail(int position, const char* detail)
{
    if (position < m_failure)
        return;
    m_failure = position;
    m_failureDetail = detail;
}
