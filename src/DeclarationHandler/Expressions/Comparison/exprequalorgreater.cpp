#include "DeclarationHandler/Expressions/Comparison/exprequalorgreater.h"

#include <functional>

#include "DeclarationHandler/Expressions/Comparison/comparenumbers.h"

ExprEqualOrGreater::ExprEqualOrGreater(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprEqualOrGreater::Retrieve() const
{
    return CompareNumbers(*m_left, *m_right, std::greater_equal<double>());
}

bool ExprEqualOrGreater::Store(const QVariant&)
{
    return false;
}
