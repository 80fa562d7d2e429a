#include "DeclarationHandler/Expressions/Logic/exprnand.h"

#include "Common/qtcompat.h"

ExprNand::ExprNand(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprNand::Retrieve() const
{
    return !(QtCompat::ToBool(m_left->Retrieve()) && QtCompat::ToBool(m_right->Retrieve()));
}

bool ExprNand::Store(const QVariant&)
{
    return false;
}
