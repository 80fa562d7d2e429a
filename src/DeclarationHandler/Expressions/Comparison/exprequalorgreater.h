#ifndef EXPREQUALORGREATER_H
#define EXPREQUALORGREATER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left >= right»: the numbers compared, by the rule of ExprSmaller.
class DECLARATIONHANDLER_EXPORT ExprEqualOrGreater : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprEqualOrGreater(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
