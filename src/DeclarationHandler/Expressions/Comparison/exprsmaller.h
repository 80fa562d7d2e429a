#ifndef EXPRSMALLER_H
#define EXPRSMALLER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left < right»: a truth value, the numbers compared: one operand that converts to a number
/// is enough, the other then counts as 0; invalid where neither converts. Evaluates the left operand
/// first. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprSmaller : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprSmaller(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
