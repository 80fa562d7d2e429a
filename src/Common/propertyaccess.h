#ifndef PROPERTYACCESS_H
#define PROPERTYACCESS_H

#include <QByteArray>
#include <QMetaProperty>
#include <QObject>
#include <QVariant>

#include "Common/qtcompat.h"

/// A property of one object, by name. A property that the object's class declares is looked up once;
/// others, and all when the object is not of that class any more, at each use.
class PropertyAccess
{
public:
    /// \a object may be null, and is not kept.
    PropertyAccess(const QObject* object, const QString& name) : m_name(QtCompat::ToAscii(name)), m_metaObject(nullptr)
    {
        if (!object)
            return;
        const QMetaObject* const metaObject = object->metaObject();
        m_property = metaObject->property(metaObject->indexOfProperty(m_name));
        // QObject itself has something to say about the misuse of the others.
        if (m_property.isReadable() && m_property.isWritable())
            m_metaObject = metaObject;
    }

    const QByteArray& GetName() const { return m_name; }

    /// As QObject::property().
    QVariant Read(const QObject* object) const
    {
        return object->metaObject() == m_metaObject ? m_property.read(object) : object->property(m_name);
    }

    /// As QObject::setProperty(). What listens to the property may destroy the owner of this.
    bool Write(QObject* object, const QVariant& value) const
    {
        if (object->metaObject() == m_metaObject)
            return QMetaProperty(m_property).write(object, value);
        return object->setProperty(QByteArray(m_name), value);
    }

private:
    QByteArray m_name;
    const QMetaObject* m_metaObject; ///< Of the class that declares the property; else null.
    QMetaProperty m_property;
};

#endif
