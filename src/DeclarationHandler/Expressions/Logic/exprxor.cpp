#include "DeclarationHandler/Expressions/Logic/exprxor.h"

ExprXor::ExprXor(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprXor::Retrieve() const
{
    const bool left = m_left->Retrieve().toBool();
    return left != m_right->Retrieve().toBool();
}

bool ExprXor::Store(const QVariant&)
{
    return false;
}
