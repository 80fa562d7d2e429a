#ifndef PACKAGETOKEN_H
#define PACKAGETOKEN_H

#include <QList>
#include <QStringList>

#include "DeclarationHandler/Tokens/token.h"

/// The prefix of a reference, «\@Engine\\Left:»: names separated by backslashes between "@" and ":".
/// Alone it is no operand.
class DECLARATIONHANDLER_EXPORT PackageToken : public Token
{
public:
    /// Takes ownership of the tokens in \a identifiers, the names of the path. \a lexeme runs from the
    /// "@" to the ":" inclusive.
    PackageToken(const QString& lexeme, const QList<Token*>& identifiers);
    ~PackageToken() override;

    /// Null also for a path without its ":", or with anything but names in it.
    static Token* Parse(const QString& text);

    /// The names of the path in the order written, without separators.
    QStringList GetPackages() const;

private:
    QList<Token*> m_identifiers;
};

#endif
