#ifndef IDENTIFIERTOKEN_H
#define IDENTIFIERTOKEN_H

#include "DeclarationHandler/Tokens/token.h"

/// A name: a letter, then letters, digits, "_" and ".". Names are the parts of references; alone they
/// are no operand.
class DECLARATIONHANDLER_EXPORT IdentifierToken : public Token
{
public:
    explicit IdentifierToken(const QString& lexeme);

    static Token* Parse(const QString& text);
};

#endif
