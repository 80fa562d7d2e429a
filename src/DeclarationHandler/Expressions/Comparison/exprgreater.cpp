#include "DeclarationHandler/Expressions/Comparison/exprgreater.h"

#include <functional>

#include "DeclarationHandler/Expressions/Comparison/comparenumbers.h"

ExprGreater::ExprGreater(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprGreater::Retrieve() const
{
    return CompareNumbers(*m_left, *m_right, std::greater<double>());
}

bool ExprGreater::Store(const QVariant&)
{
    return false;
}
