#ifndef EXPREQUAL_H
#define EXPREQUAL_H

#include "DeclarationHandler/binaryexpression.h"

/// «left = right»: a truth value, whether the operands are equal by QVariant's own rules, asked of the left
/// value. Evaluates the right operand first. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprEqual : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprEqual(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
