#ifndef EXPRNAND_H
#define EXPRNAND_H

#include "DeclarationHandler/binaryexpression.h"

/// «left NAND right»: a truth value, false only when both operands are true. The right operand is
/// evaluated only when the left one is true. Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprNand : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprNand(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
