#include "DeclarationHandler/Expressions/Arithmetic/expradd.h"

ExprAdd::ExprAdd(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprAdd::Retrieve() const
{
    const QVariant left = m_left->Retrieve();
    const QVariant right = m_right->Retrieve();
    if (left.type() == QVariant::String || right.type() == QVariant::String)
        return left.toString() + right.toString();
    if (left.type() == QVariant::Double || right.type() == QVariant::Double)
        return left.toDouble() + right.toDouble();
    return QVariant();
}

bool ExprAdd::Store(const QVariant&)
{
    return false;
}
