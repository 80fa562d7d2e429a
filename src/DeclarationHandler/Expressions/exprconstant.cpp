#include "DeclarationHandler/Expressions/exprconstant.h"

ExprConstant::ExprConstant(const QVariant& value) : Expression(true), m_value(value) {}

QVariant ExprConstant::Retrieve() const
{
    return m_value;
}

bool ExprConstant::Store(const QVariant&)
{
    return false;
}
