#include "DeclarationHandler/Expressions/exprparentheses.h"

ExprParentheses::ExprParentheses(IExpression* expression) : AtomicExpression(expression, false) {}

QVariant ExprParentheses::Retrieve() const
{
    return m_expression->Retrieve();
}

bool ExprParentheses::Store(const QVariant& value)
{
    return m_expression->Store(value);
}
