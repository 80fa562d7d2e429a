#include "DeclarationHandler/Expressions/exprobjectproperty.h"

#include "Common/qtcompat.h"

ExprObjectProperty::ExprObjectProperty(QObject* object, const QString& propertyName, bool readOnly)
    : Expression(readOnly), m_object(object), m_propertyName(propertyName)
{
}

QVariant ExprObjectProperty::Retrieve() const
{
    return m_object ? m_object->property(QtCompat::ToAscii(m_propertyName)) : QVariant();
}

bool ExprObjectProperty::Store(const QVariant& value)
{
    return !m_readOnly && m_object && m_object->setProperty(QtCompat::ToAscii(m_propertyName), value);
}

QString ExprObjectProperty::GetPropertyName() const
{
    return m_propertyName;
}

QObject* ExprObjectProperty::GetTargetObject() const
{
    return m_object;
}
