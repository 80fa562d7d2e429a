#include "DeclarationHandler/Tokens/identifiertoken.h"

#include "DeclarationHandler/Tokens/textview.h"

namespace {

bool ContinuesName(QChar character)
{
    return character.isLetterOrNumber() || character == QLatin1Char('_') || character == QLatin1Char('.');
}

} // namespace

IdentifierToken::IdentifierToken(const QString& lexeme) : Token(lexeme, TT_IDENTIFIER) {}

Token* IdentifierToken::Parse(const QString& text)
{
    if (text.isEmpty() || !text.at(0).isLetter())
        return nullptr;
    int length = 1;
    while (length < text.length() && ContinuesName(text.at(length)))
        ++length;
    return new IdentifierToken(TextView::StartOf(text, length));
}
