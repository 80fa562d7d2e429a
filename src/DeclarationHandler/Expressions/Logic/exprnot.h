#ifndef EXPRNOT_H
#define EXPRNOT_H

#include "DeclarationHandler/atomicexpression.h"

/// «NOT operand»: the opposite truth value, and the one operator that can be written through.
class DECLARATIONHANDLER_EXPORT ExprNot : public AtomicExpression
{
public:
    /// Takes ownership of the operand.
    ExprNot(IExpression* expression, bool readOnly);

    QVariant Retrieve() const override;
    /// Stores the opposite truth value in the operand and answers as the operand does.
    bool Store(const QVariant& value) override;
};

#endif
