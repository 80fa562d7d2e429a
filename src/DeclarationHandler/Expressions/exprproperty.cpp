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
    if (value.type() == QVariant::Map)
        return value.toMap().value(m_right->Retrieve().toString());
    if (value.canConvert<VariantObject>()) {
        const VariantObject object(value);
        return object.property(QtCompat::ToAscii(m_right->Retrieve().toString()));
    }
    return QVariant();
}

bool ExprProperty::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    const QVariant object = m_left->Retrieve();
    if (object.type() != QVariant::Map)
        return false;
    QVariantMap map = object.toMap();
    map.insert(m_right->Retrieve().toString(), value);
    return m_left->Store(map);
}
