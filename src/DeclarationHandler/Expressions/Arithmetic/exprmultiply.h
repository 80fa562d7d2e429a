#ifndef EXPRMULTIPLY_H
#define EXPRMULTIPLY_H

#include "DeclarationHandler/binaryexpression.h"

/// «left * right»: the product, by the rule of ExprSubstract.
class DECLARATIONHANDLER_EXPORT ExprMultiply : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprMultiply(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
