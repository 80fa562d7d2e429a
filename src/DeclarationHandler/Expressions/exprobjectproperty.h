#ifndef EXPROBJECTPROPERTY_H
#define EXPROBJECTPROPERTY_H

#include <QObject>
#include <QPointer>
#include <QString>

#include "Common/propertyaccess.h"
#include "DeclarationHandler/expression.h"

/// A property of an object, usually of another widget of the form. It notices no change by itself:
/// declarations that read it are connected to the one that writes it.
class DECLARATIONHANDLER_EXPORT ExprObjectProperty : public Expression
{
public:
    /// \a object stays the caller's. Once it is destroyed the node reads as invalid and refuses
    /// Store().
    ExprObjectProperty(QObject* object, const QString& propertyName, bool readOnly);

    /// The property's value; invalid when the object has no such property, declared or dynamic.
    QVariant Retrieve() const override;
    /// Writes the property and answers as QObject::setProperty() does: for a name that the object's
    /// class does not declare it adds a dynamic property and is false.
    bool Store(const QVariant& value) override;

    /// The name given to the constructor.
    virtual QString GetPropertyName() const;
    /// The object given to the constructor; null once it is destroyed.
    virtual QObject* GetTargetObject() const;

private:
    QPointer<QObject> m_object;
    QString m_propertyName;
    PropertyAccess m_property;
};

#endif
