#ifndef EXPRDIVIDE_H
#define EXPRDIVIDE_H

#include "DeclarationHandler/binaryexpression.h"

/// «left / right»: the quotient, by the rule of ExprSubstract. Dividing by zero gives infinity or NaN.
class DECLARATIONHANDLER_EXPORT ExprDivide : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprDivide(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
