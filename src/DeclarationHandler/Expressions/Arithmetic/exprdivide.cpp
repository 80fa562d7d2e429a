#include "DeclarationHandler/Expressions/Arithmetic/exprdivide.h"

#include <functional>

#include "DeclarationHandler/Expressions/Arithmetic/computenumbers.h"

ExprDivide::ExprDivide(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprDivide::Retrieve() const
{
    return ComputeNumbers(*m_left, *m_right, std::divides<double>());
}

bool ExprDivide::Store(const QVariant&)
{
    return false;
}
