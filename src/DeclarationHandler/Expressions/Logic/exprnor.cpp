#include "DeclarationHandler/Expressions/Logic/exprnor.h"

ExprNor::ExprNor(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprNor::Retrieve() const
{
    return !(m_left->Retrieve().toBool() || m_right->Retrieve().toBool());
}

bool ExprNor::Store(const QVariant&)
{
    return false;
}
