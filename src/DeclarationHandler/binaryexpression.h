#ifndef BINARYEXPRESSION_H
#define BINARYEXPRESSION_H

#include "DeclarationHandler/expression.h"

/// The base of nodes with two operands.
class DECLARATIONHANDLER_EXPORT BinaryExpression : public Expression
{
public:
    /// Takes ownership of both operands.
    BinaryExpression(IExpression* left, IExpression* right, bool readOnly);
    ~BinaryExpression() override;

protected:
    IExpression* m_left;  ///< The left operand, owned.
    IExpression* m_right; ///< The right operand, owned.
};

#endif
