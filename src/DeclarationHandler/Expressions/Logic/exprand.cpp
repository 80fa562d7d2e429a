#include "DeclarationHandler/Expressions/Logic/exprand.h"

ExprAnd::ExprAnd(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprAnd::Retrieve() const
{
    return m_left->Retrieve().toBool() && m_right->Retrieve().toBool();
}

bool ExprAnd::Store(const QVariant&)
{
    return false;
}
