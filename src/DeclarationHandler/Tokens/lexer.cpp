#include "DeclarationHandler/Tokens/lexer.h"

#include "DeclarationHandler/Tokens/doublequotetoken.h"
#include "DeclarationHandler/Tokens/numbertoken.h"
#include "DeclarationHandler/Tokens/singlequotetoken.h"
#include "DeclarationHandler/Tokens/textview.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

namespace {

/// The recognisers in the order that decides which kind of token wins.
Token* Recognise(const QString& text)
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

} // namespace

Lexer::Lexer(const QString& statement) : m_statement(statement), m_position(TextView::SkipSpace(statement, 0)) {}

Token* Lexer::ReadToken()
{
    if (m_position == m_statement.length())
        return nullptr;
    m_view.setRawData(m_statement.constData() + m_position, m_statement.length() - m_position);
    Token* const token = Recognise(m_view);
    if (token) {
        m_place = TextPlace(m_position, token->GetLexemeLength());
        m_position = TextView::SkipSpace(m_statement, m_place.End());
    }
    return token;
}
