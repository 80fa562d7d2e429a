#ifndef NUMBERTOKEN_H
#define NUMBERTOKEN_H

#include "DeclarationHandler/Tokens/token.h"

/// A number: an optional "-", then digits with at most one "."; neither exponents nor a leading "+".
class DECLARATIONHANDLER_EXPORT NumberToken : public Token
{
public:
    /// \a lexeme is the number as it was written, its sign included.
    explicit NumberToken(const QString& lexeme);

    /// A constant holding the number's text, not a number: converted to a double and written with six
    /// significant digits, so that «007» gives «7» and «1.50» gives «1.5». The arguments are not used.
    IExpression* CreateExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                                  const QString& defaultPackage, bool readOnly) const override;

    /// Null also for a sign or a "." alone.
    static Token* Parse(const QString& text);
};

#endif
