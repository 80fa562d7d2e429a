#ifndef EXPRSUBSTRACT_H
#define EXPRSUBSTRACT_H

#include "DeclarationHandler/binaryexpression.h"

/// «left - right»: computed in doubles, as ComputeNumbers() does it. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprSubstract : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprSubstract(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
