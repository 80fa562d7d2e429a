#include "DeclarationHandler/Expressions/exprexistence.h"

ExprExistence::ExprExistence(IExpression* expression) : AtomicExpression(expression, true) {}

QVariant ExprExistence::Retrieve() const
{
    return m_expression->Retrieve().isValid();
}

bool ExprExistence::Store(const QVariant&)
{
    return false;
}
