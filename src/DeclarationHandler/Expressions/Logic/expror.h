#ifndef EXPROR_H
#define EXPROR_H

#include "DeclarationHandler/binaryexpression.h"

/// «left OR right»: a truth value. The right operand is evaluated only when the left one is false.
/// Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprOr : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprOr(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
