#ifndef EXPREQUALORSMALLER_H
#define EXPREQUALORSMALLER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left <= right»: the numbers compared, by the rule of ExprSmaller.
class DECLARATIONHANDLER_EXPORT ExprEqualOrSmaller : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprEqualOrSmaller(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
