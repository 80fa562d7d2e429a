#include "Common/variantobject.h"

#include <QMetaProperty>

VariantObject::VariantObject() {}

VariantObject::VariantObject(QObject* parent) : QObject(parent) {}

VariantObject::VariantObject(const VariantObject& other) : QObject(other.parent())
{
    CopyProperties(other);
}

VariantObject::VariantObject(const QVariant& value)
{
    CopyProperties(value.value<VariantObject>());
}

QVariant VariantObject::ToVariant() const
{
    return QVariant::fromValue(*this);
}

void VariantObject::CopyProperties(const VariantObject& other)
{
    QList<QByteArray> names = other.dynamicPropertyNames();
    const QMetaObject* const type = other.metaObject();
    for (int i = type->propertyOffset(); i < type->propertyCount(); ++i)
        names.append(type->property(i).name());
    for (int i = 0; i < names.count(); ++i)
        setProperty(names.at(i), other.property(names.at(i)));
}
