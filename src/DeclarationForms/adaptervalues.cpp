#include "DeclarationForms/adaptervalues.h"

#include <QImage>
#include <QPixmap>

namespace {

bool IsList(const QVariant& value)
{
    const int type = value.userType();
    // A text and an array of bytes are sequences too.
    return value.canConvert<QVariantList>() && type != QMetaType::QString && type != QMetaType::QByteArray
        && !AdapterValues::IsMap(value);
}

} // namespace

bool AdapterValues::ToList(const QVariant& value, QVariantList* list)
{
    if (!IsList(value))
        return false;
    *list = value.toList();
    return list->count() <= MaxItems;
}

bool AdapterValues::IsMap(const QVariant& value)
{
    return value.userType() == QMetaType::QVariantMap || value.userType() == QMetaType::QVariantHash;
}

bool AdapterValues::IsScalar(const QVariant& value)
{
    // A null of JSON converts to an empty text.
    return value.userType() != QMetaType::Nullptr && value.canConvert<QString>() && !IsList(value) && !IsMap(value)
        && !IsImage(value);
}

bool AdapterValues::IsImage(const QVariant& value)
{
    const int type = value.userType();
    return type == QMetaType::QIcon || type == QMetaType::QPixmap || type == QMetaType::QImage;
}

QIcon AdapterValues::ToIcon(const QVariant& value)
{
    if (value.userType() == QMetaType::QIcon)
        return value.value<QIcon>();
    if (value.userType() == QMetaType::QImage)
        return QPixmap::fromImage(value.value<QImage>());
    const QPixmap image = IsImage(value) ? value.value<QPixmap>() : QPixmap(value.toString());
    return image.isNull() ? QIcon() : QIcon(image);
}
