#include "DeclarationHandler/Tokens/identifiertoken.h"

#include "DeclarationHandler/Tokens/nametext.h"
#include "DeclarationHandler/Tokens/textview.h"

IdentifierToken::IdentifierToken(const QString& lexeme) : Token(lexeme, TT_IDENTIFIER) {}

Token* IdentifierToken::Parse(const QString& text)
{
    const int length = NameText::Length(text);
    return length == 0 ? nullptr : new IdentifierToken(TextView::StartOf(text, length));
}
