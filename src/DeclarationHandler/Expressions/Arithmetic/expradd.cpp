#include "DeclarationHandler/Expressions/Arithmetic/expradd.h"

ExprAdd::ExprAdd(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprAdd::Retrieve() const
{
    const QVariant left = m_left->Retrieve();
    const QVariant right = m_right->Retrieve();
    const QVariant::Type leftType = left.type();
    const QVariant::Type rightType = right.type();
    if (leftType == QVariant::String || rightType == QVariant::String)
        return left.toString() + right.toString();
    if (leftType == QVariant::Double || rightType == QVariant::Double)
        return left.toDouble() + right.toDouble();
    return QVariant();
}

bool ExprAdd::Store(const QVariant&)
{
    return false;
}
