#ifndef NUMERICOPERAND_H
#define NUMERICOPERAND_H

#include <QString>

#include <typeinfo>

#include "Common/qtcompat.h"
#include "DeclarationHandler/Expressions/exprconstant.h"

/// An operand as the operators take it that compute with numbers and compare them. Number literals,
/// which are texts, have been read as numbers when the statement was parsed.
class NumericOperand
{
public:
    explicit NumericOperand(const IExpression& node) : m_number(0.0), m_isNumber(false)
    {
        // Only this very class: one derived from it may give another value. By address, since comparing names
        // takes a tenth of an evaluation; where the class has a second address, the text is read once more.
        if (&typeid(node) == &typeid(ExprConstant))
            TakeNumeral(static_cast<const ExprConstant&>(node));
        if (!m_isNumber)
            Read(node.Retrieve());
    }

    /// Whether the value converts to a number.
    bool IsNumber() const { return m_isNumber; }
    /// The number; 0 for a value that spells none.
    double GetNumber() const { return m_number; }
    /// The text of a value that is no number.
    const QString& GetText() const { return m_text; }

private:
    void TakeNumeral(const ExprConstant& constant)
    {
        m_isNumber = constant.m_isNumeral;
        m_number = constant.m_number;
    }

    void Read(const QVariant& value)
    {
        if (value.userType() == QMetaType::Double) {
            m_isNumber = true;
            m_number = *static_cast<const double*>(value.constData());
            return;
        }
        // Not what toDouble() says: it reads some types that do not count as convertible, such as uchar.
        m_isNumber = QtCompat::CanConvert(value, QMetaType::Double);
        m_number = QtCompat::ToDouble(value);
        if (!m_isNumber)
            m_text = QtCompat::ToString(value);
    }

    double m_number;
    bool m_isNumber;
    QString m_text;
};

#endif
