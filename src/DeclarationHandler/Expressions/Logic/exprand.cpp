#include "DeclarationHandler/Expressions/Logic/exprand.h"

#include "Common/qtcompat.h"

ExprAnd::ExprAnd(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprAnd::Retrieve() const
{
    return QtCompat::ToBool(m_left->Retrieve()) && QtCompat::ToBool(m_right->Retrieve());
}

bool ExprAnd::Store(const QVariant&)
{
    return false;
}
