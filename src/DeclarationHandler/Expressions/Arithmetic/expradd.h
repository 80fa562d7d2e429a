#ifndef EXPRADD_H
#define EXPRADD_H

#include "DeclarationHandler/binaryexpression.h"

/// «left + right»: where either value is a text, both texts joined; else, where either is a double,
/// the sum as a double; else invalid. It is the stored type that counts, so two integers have no sum.
/// Cannot be written through.
class DECLARATIONHANDLER_EXPORT ExprAdd : public BinaryExpression
{
public:
    /// Takes ownership of both operands.
    ExprAdd(IExpression* left, IExpression* right);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;
};

#endif
