#ifndef LEXER_H
#define LEXER_H

#include "DeclarationHandler/Tokens/doublequotetoken.h"
#include "DeclarationHandler/Tokens/numbertoken.h"
#include "DeclarationHandler/Tokens/singlequotetoken.h"
#include "DeclarationHandler/Tokens/variabletoken.h"

/// The token at the start of a text, which the caller owns; null when there is none.
inline Token* NextToken(const QString& text)
{
    for (Token* (*parse)(const QString&) :
         {NumberToken::Parse, Token::Parse, SingleQuoteToken::Parse, DoubleQuoteToken::Parse, VariableToken::Parse}) {
        if (Token* const token = parse(text))
            return token;
    }
    return nullptr;
}

#endif
