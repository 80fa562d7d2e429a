#ifndef EXPRPARENTHESES_H
#define EXPRPARENTHESES_H

#include "DeclarationHandler/atomicexpression.h"

/// «( operand )»: passes everything through, so it can be written where its operand can.
class DECLARATIONHANDLER_EXPORT ExprParentheses : public AtomicExpression
{
public:
    /// Takes ownership of the operand, which must not be null.
    explicit ExprParentheses(IExpression* expression);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
