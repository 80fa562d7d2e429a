#include "DeclarationHandler/Expressions/Comparison/exprequalorsmaller.h"

#include <functional>

#include "DeclarationHandler/Expressions/Comparison/comparenumbers.h"

ExprEqualOrSmaller::ExprEqualOrSmaller(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprEqualOrSmaller::Retrieve() const
{
    return CompareNumbers(*m_left, *m_right, std::less_equal<double>());
}

bool ExprEqualOrSmaller::Store(const QVariant&)
{
    return false;
}
