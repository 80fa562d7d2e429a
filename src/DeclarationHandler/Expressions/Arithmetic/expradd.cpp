#include "DeclarationHandler/Expressions/Arithmetic/expradd.h"

#include "Common/qtcompat.h"

ExprAdd::ExprAdd(IExpression* left, IExpression* right) : BinaryExpression(left, right, true) {}

QVariant ExprAdd::Retrieve() const
{
    const QVariant left = m_left->Retrieve();
    const QVariant right = m_right->Retrieve();
    const int leftType = left.userType();
    const int rightType = right.userType();
    if (leftType == QMetaType::QString || rightType == QMetaType::QString)
        return QString(QtCompat::ToString(left) + QtCompat::ToString(right));
    if (leftType == QMetaType::Double || rightType == QMetaType::Double)
        return QtCompat::ToDouble(left) + QtCompat::ToDouble(right);
    return QVariant();
}

bool ExprAdd::Store(const QVariant&)
{
    return false;
}
