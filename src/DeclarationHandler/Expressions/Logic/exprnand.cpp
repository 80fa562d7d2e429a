#include "DeclarationHandler/Expressions/Logic/exprnand.h"

ExprNand::ExprNand(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprNand::Retrieve() const
{
    return !(m_left->Retrieve().toBool() && m_right->Retrieve().toBool());
}

bool ExprNand::Store(const QVariant&)
{
    return false;
}
