#ifndef EXPRNOR_H
#define EXPRNOR_H

#include "DeclarationHandler/binaryexpression.h"

/// «left NOR right»: a truth value, true only when both operands are false. The right operand is
/// evaluated only when the left one is false. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprNor : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprNor(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
