#ifndef EXPRCONSTANT_H
#define EXPRCONSTANT_H

#include "DeclarationHandler/expression.h"

/// A literal. Cannot be written.
class DECLARATIONHANDLER_EXPORT ExprConstant : public Expression
{
public:
    /// Keeps a copy of \a value, which may be invalid.
    explicit ExprConstant(const QVariant& value);
    /// A number literal: its value is the text, and \a number what the text spells.
    ExprConstant(const QString& text, double number);

    QVariant Retrieve() const override;
    bool Store(const QVariant& value) override;

private:
    friend class NumericOperand;

    bool m_isNumeral;
    QVariant m_value;
    double m_number;
};

#endif
