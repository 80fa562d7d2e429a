#ifndef EXPRCONSTANT_H
#define EXPRCONSTANT_H

#include <typeinfo>

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

    /// Puts the number into \a number when \a node is a number literal, which spares reading its text
    /// again; otherwise false, with \a number left alone.
    static bool GetNumeral(const IExpression& node, double* number)
    {
        // Only this very class: one derived from it may give another value.
        if (&typeid(node) != &typeid(ExprConstant))
            return false;
        const ExprConstant& constant = static_cast<const ExprConstant&>(node);
        if (constant.m_isNumeral)
            *number = constant.m_number;
        return constant.m_isNumeral;
    }

private:
    bool m_isNumeral;
    QVariant m_value;
    double m_number;
};

#endif
