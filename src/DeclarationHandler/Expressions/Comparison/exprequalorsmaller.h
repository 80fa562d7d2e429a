#ifndef EXPREQUALORSMALLER_H
#define EXPREQUALORSMALLER_H

#include "DeclarationHandler/binaryexpression.h"

/// «left <= right»: the numbers compared, as CompareNumbers() does it. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprEqualOrSmaller : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprEqualOrSmaller(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
