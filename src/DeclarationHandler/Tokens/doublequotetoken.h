#ifndef DOUBLEQUOTETOKEN_H
#define DOUBLEQUOTETOKEN_H

#include "DeclarationHandler/Tokens/token.h"

/// A text between double quotes. There are no escapes: the text ends at the next double quote and may
/// hold anything else.
class DECLARATIONHANDLER_EXPORT DoubleQuoteToken : public Token
{
public:
    /// \a lexeme includes the quotes.
    explicit DoubleQuoteToken(const QString& lexeme);

    /// A constant holding the text between the quotes. The arguments are not used.
    IExpression* CreateExpression(IDataPeer* dataPeer, IDataObserver* dataObserver, QObject* widget, QObject* topWidget,
                                  const QString& defaultPackage, bool readOnly) const override;

    /// Null also for a quote without a closing one.
    static Token* Parse(const QString& text);
};

#endif
