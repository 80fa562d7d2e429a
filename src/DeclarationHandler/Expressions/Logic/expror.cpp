#include "DeclarationHandler/Expressions/Logic/expror.h"

#include "Common/qtcompat.h"

ExprOr::ExprOr(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprOr::Retrieve() const
{
    return QtCompat::ToBool(m_left->Retrieve()) || QtCompat::ToBool(m_right->Retrieve());
}

bool ExprOr::Store(const QVariant&)
{
    return false;
}
