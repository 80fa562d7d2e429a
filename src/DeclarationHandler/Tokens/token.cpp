#include "DeclarationHandler/Tokens/token.h"

#include "DeclarationHandler/Tokens/language.h"

namespace {

Token* NewToken(const Language::Row* row)
{
    return row ? new Token(Language::GetText(*row), row->type) : nullptr;
}

} // namespace

Token::Token(const QString& lexeme, TOKEN_TYPE type) : m_lexeme(lexeme), m_tokenType(type) {}

Token::~Token() {}

IExpression* Token::CreateExpression(IDataPeer*, IDataObserver*, QObject*, QObject*, const QString&, bool) const
{
    const Language::Row* const row = Language::Find(m_tokenType);
    return row && row->createLiteral ? row->createLiteral() : nullptr;
}

int Token::GetLexemeOffset() const
{
    return 0;
}

int Token::GetPrecedence() const
{
    const Language::Row* const row = Language::Find(m_tokenType);
    return row ? row->precedence : Language::None;
}

bool Token::IsBinOp() const
{
    const Language::Row* const row = Language::Find(m_tokenType);
    return row && row->IsBinary();
}

Token* Token::Parse(const QString& text)
{
    if (text.isEmpty())
        return nullptr;
    Token* const token = ParseString(text);
    return token ? token : ParseChar(text);
}

Token* Token::ParseString(const QString& text)
{
    return NewToken(Language::FindWord(text));
}

Token* Token::ParseChar(const QString& text)
{
    return NewToken(Language::FindChar(text.at(0)));
}
