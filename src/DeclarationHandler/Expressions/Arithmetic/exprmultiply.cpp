#include "DeclarationHandler/Expressions/Arithmetic/exprmultiply.h"

#include <functional>

#include "DeclarationHandler/Expressions/Arithmetic/computenumbers.h"

ExprMultiply::ExprMultiply(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprMultiply::Retrieve() const
{
    return ComputeNumbers(*m_left, *m_right, std::multiplies<double>());
}

bool ExprMultiply::Store(const QVariant&)
{
    return false;
}
