#ifndef EXPRNOTEQUAL_H
#define EXPRNOTEQUAL_H

#include "DeclarationHandler/binaryexpression.h"

/// «left != right»: a truth value, whether the operands differ by QVariant's own rules, asked of the left
/// value. Evaluates the right operand first. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprNotEqual : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprNotEqual(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
