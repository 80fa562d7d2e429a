#ifndef VARIANTOBJECT_H
#define VARIANTOBJECT_H

#include <QMetaType>
#include <QObject>
#include <QVariant>

#include "DeclarationHandler/declarationhandler_export.h"

/// A record with named fields that travels by value in a QVariant. The fields are the object's
/// dynamic properties; the statement language reads one as «record .'field'».
///
/// A copy gets the parent of its source. An object that is to travel in a QVariant is therefore made
/// without a parent, or the parent would delete the copy that the QVariant owns.
class DECLARATIONHANDLER_EXPORT VariantObject : public QObject
{
    Q_OBJECT

public:
    /// A record without fields.
    VariantObject();
    /// A record without fields that \a parent, which may be null, owns.
    explicit VariantObject(QObject* parent);
    /// An independent copy with the same parent.
    VariantObject(const VariantObject& other);
    /// A copy of the record that \a value holds; without fields when it holds none.
    explicit VariantObject(const QVariant& value);

    /// A QVariant that holds a copy of this record.
    QVariant ToVariant() const;

    /// Takes over the fields of \a other, and as fields also the properties that the class of
    /// \a other itself declares. Fields that \a other does not have stay.
    void CopyProperties(const VariantObject& other);
};

Q_DECLARE_METATYPE(VariantObject)

#endif
