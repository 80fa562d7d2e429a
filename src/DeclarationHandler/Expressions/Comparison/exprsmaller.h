#ifndef EXPRSMALLER_H
#define EXPRSMALLER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left < right»: the numbers compared, as CompareNumbers() does it. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprSmaller : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprSmaller(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
