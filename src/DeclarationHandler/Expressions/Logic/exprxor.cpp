#include "DeclarationHandler/Expressions/Logic/exprxor.h"

#include "Common/qtcompat.h"

ExprXor::ExprXor(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprXor::Retrieve() const
{
    const bool left = QtCompat::ToBool(m_left->Retrieve());
    return left != QtCompat::ToBool(m_right->Retrieve());
}

bool ExprXor::Store(const QVariant&)
{
    return false;
}
