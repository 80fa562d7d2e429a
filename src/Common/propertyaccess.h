#ifndef PROPERTYACCESS_H
#define PROPERTYACCESS_H

#include <QMetaProperty>
#include <QVariant>

#include "DeclarationHandler/declarationhandler_export.h"

class QObject;

/// A property of one object. Where the object's class declares it, it is looked up once; else, and when
/// the object is not of that class any more, at each use.
class DECLARATIONHANDLER_EXPORT PropertyAccess
{
public:
    /// \a object, which may be null, is not kept.
    PropertyAccess(const QObject* object, const QString& name);

    /// As QObject::property(). \a name is that given to the constructor.
    QVariant Read(const QObject* object, const QString& name) const;

    /// As QObject::setProperty(), with \a name as for Read(). What listens to the property may destroy
    /// the owner of this object.
    bool Write(QObject* object, const QString& name, const QVariant& value) const;

private:
    const QMetaObject* m_metaObject; ///< Of the class that declares the property; else null.
    QMetaProperty m_property;
};

#endif
