#ifndef EXPRXOR_H
#define EXPRXOR_H

#include "DeclarationHandler/binaryexpression.h"

/// «left XOR right»: a truth value, true when the operands differ. Evaluates both, the left one first.
/// Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprXor : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprXor(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
