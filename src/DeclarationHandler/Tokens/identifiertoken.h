#ifndef IDENTIFIERTOKEN_H
#define IDENTIFIERTOKEN_H

#include "DeclarationHandler/Tokens/token.h"

/// A name: a letter, then letters, digits, "_" and ".". Names are the parts of references; alone they
/// are no operand.
class DECLARATIONHANDLER_EXPORT IdentifierToken : public Token
{
public:
    /// \a lexeme is the name.
    explicit IdentifierToken(const QString& lexeme);

    /// Null for a text that does not start with a letter.
    static Token* Parse(const QString& text);
};

#endif
