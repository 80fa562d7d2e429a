#ifndef EXPRSUBSTRACT_H
#define EXPRSUBSTRACT_H

#include "DeclarationHandler/binaryexpression.h"

/// «left - right»: computed in doubles: one operand that converts to a number is
/// enough, the other then counts as 0; where neither converts, both texts joined. Evaluates the left
/// operand first. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprSubstract : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprSubstract(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
