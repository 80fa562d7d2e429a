#ifndef EXPRGREATER_H
#define EXPRGREATER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left > right»: the numbers compared, by the rule of ExprSmaller.
class DECLARATIONHANDLER_EXPORT ExprGreater : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprGreater(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
