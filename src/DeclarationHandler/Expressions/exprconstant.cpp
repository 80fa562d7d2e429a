#include "DeclarationHandler/Expressions/exprconstant.h"

ExprConstant::ExprConstant(const QVariant& value) : Expression(true), m_value(value), m_number(0.0), m_isNumeral(false)
{
}

ExprConstant::ExprConstant(const QString& text, double number)
    : Expression(true), m_value(text), m_number(number), m_isNumeral(true)
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
