#include "DeclarationHandler/Expressions/Arithmetic/exprsubstract.h"

#include <functional>

#include "DeclarationHandler/Expressions/Arithmetic/computenumbers.h"

ExprSubstract::ExprSubstract(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprSubstract::Retrieve() const
{
    return ComputeNumbers(*m_left, *m_right, std::minus<double>());
}

bool ExprSubstract::Store(const QVariant&)
{
    return false;
}
