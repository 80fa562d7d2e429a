#include "Common/propertyaccess.h"

#include <QObject>

#include "Common/qtcompat.h"

PropertyAccess::PropertyAccess(const QObject* object, const QString& name) : m_metaObject(nullptr)
{
    if (!object)
        return;
    const QMetaObject* const metaObject = object->metaObject();
    m_property = metaObject->property(metaObject->indexOfProperty(QtCompat::ToAscii(name)));
    // QObject itself has something to say about the misuse of the others.
    if (m_property.isReadable() && m_property.isWritable())
        m_metaObject = metaObject;
}

QVariant PropertyAccess::Read(const QObject* object, const QString& name) const
{
    if (object->metaObject() == m_metaObject)
        return QtCompat::ReadProperty(m_property, object);
    return QtCompat::ReadProperty(QtCompat::ToAscii(name), object);
}

bool PropertyAccess::Write(QObject* object, const QString& name, const QVariant& value) const
{
    if (object->metaObject() == m_metaObject) {
        // A copy: whoever listens to the property may delete this.
        const QMetaProperty property = m_property;
        return QtCompat::WriteProperty(property, object, value);
    }
    return object->setProperty(QtCompat::ToAscii(name), value);
}
