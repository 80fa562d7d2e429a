#ifndef EXPRAND_H
#define EXPRAND_H

#include "DeclarationHandler/binaryexpression.h"

/// «left AND right»: a truth value. The right operand is evaluated only when the left one is true.
/// Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprAnd : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprAnd(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
