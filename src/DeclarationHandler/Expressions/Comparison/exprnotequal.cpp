#include "DeclarationHandler/Expressions/Comparison/exprnotequal.h"

#include "Common/qtcompat.h"

ExprNotEqual::ExprNotEqual(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprNotEqual::Retrieve() const
{
    // The order matters: operands may have effects, and QVariant's equality is not symmetric.
    const QVariant right = m_right->Retrieve();
    return !QtCompat::AreEqual(m_left->Retrieve(), right);
}

bool ExprNotEqual::Store(const QVariant&)
{
    return false;
}
