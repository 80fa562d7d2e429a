#include "DeclarationHandler/Expressions/Logic/exprnor.h"

#include "Common/qtcompat.h"

ExprNor::ExprNor(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprNor::Retrieve() const
{
    return !(QtCompat::ToBool(m_left->Retrieve()) || QtCompat::ToBool(m_right->Retrieve()));
}

bool ExprNor::Store(const QVariant&)
{
    return false;
}
