#ifndef EXPREXISTENCE_H
#define EXPREXISTENCE_H

#include "DeclarationHandler/atomicexpression.h"

/// «HASVALUE operand»: whether the operand has a valid value, be it empty or null. Cannot be written
/// through.
class DECLARATIONHANDLER_EXPORT ExprExistence : public AtomicExpression
{
public:
    /// Takes ownership of the operand, which must not be null.
    explicit ExprExistence(IExpression* expression);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
