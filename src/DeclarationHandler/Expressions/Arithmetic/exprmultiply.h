#ifndef EXPRMULTIPLY_H
#define EXPRMULTIPLY_H

#include "DeclarationHandler/binaryexpression.h"

/// «left * right»: computed in doubles, as ComputeNumbers() does it. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprMultiply : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprMultiply(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
