#include "DeclarationHandler/Expressions/exprproperty.h"

#include "Common/qtcompat.h"
#include "Common/variantobject.h"

ExprProperty::ExprProperty(IExpression* object, IExpression* member, bool readOnly)
    : BinaryExpression(object, member, readOnly)
{
}

QVariant ExprProperty::Retrieve() const
{
    const QVariant value = m_left->Retrieve();
    if (value.userType() == QMetaType::QVariantMap)
        return value.toMap().value(QtCompat::ToString(m_right->Retrieve()));
    if (value.canConvert<VariantObject>()) {
        const VariantObject object(value);
        return object.property(QtCompat::ToAscii(QtCompat::ToString(m_right->Retrieve())));
    }
    return QVariant();
}

bool ExprProperty::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    const QVariant object = m_left->Retrieve();
    if (object.userType() != QMetaType::QVariantMap)
        return false;
    QVariantMap map = object.toMap();
    map.insert(QtCompat::ToString(m_right->Retrieve()), value);
    return m_left->Store(map);
}
