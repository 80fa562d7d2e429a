#include "DeclarationHandler/Expressions/Logic/expror.h"

ExprOr::ExprOr(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprOr::Retrieve() const
{
    return m_left->Retrieve().toBool() || m_right->Retrieve().toBool();
}

bool ExprOr::Store(const QVariant&)
{
    return false;
}
