#ifndef COMPUTENUMBERS_H
#define COMPUTENUMBERS_H

#include <QString>

#include "DeclarationHandler/iexpression.h"

/// The texts of two values that are no numbers, put together. Place markers («%1») in the left text
/// take part in the second substitution.
inline QString JoinTexts(const QVariant& left, const QVariant& right)
{
    const QLatin1Char fill(' ');
    return QString::fromLatin1("%1%2").arg(left.toString(), 0, fill).arg(right.toString(), 0, fill);
}

/// The rule of «-», «*» and «/»: the left operand is evaluated first; one value that converts to a
/// number is enough, the other then counts as 0 if it does not, and the result is a double. Values
/// that are both no numbers give the text of JoinTexts().
template<typename Operation>
QVariant ComputeNumbers(const IExpression& left, const IExpression& right, Operation operation)
{
    const QVariant leftValue = left.Retrieve();
    const QVariant rightValue = right.Retrieve();
    if (!leftValue.canConvert(QVariant::Double) && !rightValue.canConvert(QVariant::Double))
        return JoinTexts(leftValue, rightValue);
    return operation(leftValue.toDouble(), rightValue.toDouble());
}

#endif
