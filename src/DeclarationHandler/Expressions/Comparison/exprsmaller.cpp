#include "DeclarationHandler/Expressions/Comparison/exprsmaller.h"

#include <functional>

#include "DeclarationHandler/Expressions/Comparison/comparenumbers.h"

ExprSmaller::ExprSmaller(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprSmaller::Retrieve() const
{
    return CompareNumbers(*m_left, *m_right, std::less<double>());
}

bool ExprSmaller::Store(const QVariant&)
{
    return false;
}
