#include "DeclarationHandler/Expressions/exprconstant.h"

ExprConstant::ExprConstant(const QVariant& value) : Expression(true), m_isNumeral(false), m_value(value), m_number(0.0)
{
}

ExprConstant::ExprConstant(const QString& text, double number)
    : Expression(true), m_isNumeral(true), m_value(text), m_number(number)
{
}

QVariant ExprConstant::Retrieve() const
{
    return m_value;
}

bool ExprConstant::Store(const QVariant&)
{
    return false;
}
