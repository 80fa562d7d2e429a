#ifndef COMPARENUMBERS_H
#define COMPARENUMBERS_H

#include "DeclarationHandler/Expressions/numericoperand.h"

/// The rule of the four ordering operators: the left operand is evaluated first; one value that
/// converts to a number is enough, the other then counts as 0 if it does not. Invalid when neither
/// converts, else a truth value. Texts always convert, and compare by the number they spell.
template<typename Comparison>
QVariant CompareNumbers(const IExpression& left, const IExpression& right, Comparison comparison)
{
    const NumericOperand leftOperand(left);
    const NumericOperand rightOperand(right);
    if (!leftOperand.IsNumber() && !rightOperand.IsNumber())
        return QVariant();
    return comparison(leftOperand.GetNumber(), rightOperand.GetNumber());
}

#endif
