#include "DeclarationHandler/Expressions/Comparison/exprequal.h"

#include "Common/qtcompat.h"

ExprEqual::ExprEqual(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprEqual::Retrieve() const
{
    // The order matters: operands may have effects, and QVariant's equality is not symmetric.
    const QVariant right = m_right->Retrieve();
    return QtCompat::AreEqual(m_left->Retrieve(), right);
}

bool ExprEqual::Store(const QVariant&)
{
    return false;
}
