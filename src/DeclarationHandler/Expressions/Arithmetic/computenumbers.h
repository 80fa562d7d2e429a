#ifndef COMPUTENUMBERS_H
#define COMPUTENUMBERS_H

#include <QString>

#include "DeclarationHandler/Expressions/numericoperand.h"

/// The texts of two values that are no numbers, put together. Place markers («%1») in the left text
/// take part in the second substitution.
inline QString JoinTexts(const QString& left, const QString& right)
{
    const QLatin1Char fill(' ');
    return QString::fromLatin1("%1%2").arg(left, 0, fill).arg(right, 0, fill);
}

/// The rule of «-», «*» and «/»: the left operand is evaluated first; one value that converts to a
/// number is enough, the other then counts as 0 if it does not, and the result is a double. Values
/// that are both no numbers give the text of JoinTexts().
template<typename Operation>
QVariant ComputeNumbers(const IExpression& left, const IExpression& right, Operation operation)
{
    const NumericOperand leftOperand(left);
    const NumericOperand rightOperand(right);
    if (!leftOperand.IsNumber() && !rightOperand.IsNumber())
        return JoinTexts(leftOperand.GetText(), rightOperand.GetText());
    return operation(leftOperand.GetNumber(), rightOperand.GetNumber());
}

#endif
