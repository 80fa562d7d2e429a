#include "DeclarationForms/formvalues.h"

#include <QIcon>
#include <QImage>
#include <QMetaType>
#include <QPixmap>
#include <QStringList>

#include <algorithm>
#include <cmath>

#include "Common/qtcompat.h"

namespace {

const int LongestText = 60;
/// Relative; a float holds a little over seven digits.
const double FloatPrecision = 1e-6;

bool IsInteger(int type)
{
    switch (type) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
        return true;
    default:
        return false;
    }
}

bool IsFraction(int type)
{
    return type == QMetaType::Double || type == QMetaType::Float;
}

bool IsNumber(int type)
{
    return IsInteger(type) || IsFraction(type);
}

/// That a value of this type holds.
template<typename Type>
const Type& Inside(const QVariant& value)
{
    return *static_cast<const Type*>(value.constData());
}

bool AreSamePixmaps(const QPixmap& left, const QPixmap& right)
{
    if (left.isNull() || right.isNull())
        return left.isNull() == right.isNull();
    return left.cacheKey() == right.cacheKey() || left.toImage() == right.toImage();
}

bool HoldsList(const QVariantList& held, const QVariantList& written, int decimals)
{
    if (held.count() != written.count())
        return false;
    for (int i = 0; i < held.count(); ++i) {
        if (!FormValues::Holds(held.at(i), written.at(i), decimals))
            return false;
    }
    return true;
}

bool HoldsMap(const QVariantMap& held, const QVariantMap& written, int decimals)
{
    if (held.count() != written.count())
        return false;
    for (QVariantMap::const_iterator it = written.constBegin(); it != written.constEnd(); ++it) {
        const QVariantMap::const_iterator entry = held.constFind(it.key());
        if (entry == held.constEnd() || !FormValues::Holds(entry.value(), it.value(), decimals))
            return false;
    }
    return true;
}

bool IsListType(const QVariant& value)
{
    return value.userType() == QMetaType::QVariantList || value.userType() == QMetaType::QStringList;
}

bool HoldsFraction(const QVariant& held, const QVariant& written, int decimals)
{
    bool isNumber = false;
    const double number = written.toDouble(&isNumber);
    if (!isNumber)
        return false;
    if (held.userType() == QMetaType::Float)
        return FormValues::AreEqualFractions(held.toFloat(), static_cast<float>(number));
    // As spin boxes round.
    return FormValues::AreEqualFractions(held.toDouble(), number)
        || (decimals >= 0 && held.toDouble() == QString::number(number, 'f', decimals).toDouble());
}

bool HoldsInteger(const QVariant& held, const QVariant& written)
{
    // QVariant rounds a fraction, but wraps around what is out of range.
    if (IsFraction(written.userType())) {
        const double number = written.toDouble();
        return std::abs(held.toDouble() - number) <= 0.5 + 1e-9;
    }
    bool isNumber = false;
    const qlonglong number = written.toLongLong(&isNumber);
    if (!isNumber)
        return false;
    return held.userType() == QMetaType::ULongLong ? held.toULongLong() == written.toULongLong()
                                                   : held.toLongLong() == number;
}

bool HoldsConverted(const QVariant& held, QVariant written)
{
    const int type = held.userType();
    if (type == QMetaType::Bool)
        return written.canConvert<bool>() && held.toBool() == written.toBool();
    if (type == QMetaType::QString)
        return written.canConvert<QString>() && held.toString() == written.toString();
    // A widget adds the list of families, which makes another font of the same.
    if (type == QMetaType::QFont)
        return QtCompat::Convert(&written, type) && held.toString() == written.toString();
    return QtCompat::Convert(&written, type) && FormValues::AreEqual(held, written);
}

bool ToTruthValue(const QVariant& value, QVariant* result)
{
    const QString text = value.toString().trimmed().toLower();
    const bool isTrue = text == QLatin1String("true") || text == QLatin1String("1");
    if (!isTrue && text != QLatin1String("false") && text != QLatin1String("0"))
        return false;
    *result = isTrue;
    return true;
}

/// There are many ways to write a number or a date. Of integers that are too large QVariant keeps the low bits.
bool IsLosslessText(const QString& text, const QVariant& converted)
{
    // No text makes a null array, which is none too.
    if (converted.userType() == QMetaType::QByteArray)
        return true;
    if (!IsInteger(converted.userType()))
        return !QtCompat::IsNull(converted);
    if (converted.userType() == QMetaType::ULongLong)
        return text.toULongLong() == converted.toULongLong();
    return text.toLongLong() == converted.toLongLong();
}

/// Whether nothing but the type changed on the way.
bool IsLossless(const QVariant& original, const QVariant& converted)
{
    const int from = original.userType();
    const int to = converted.userType();
    if (to == QMetaType::Float && IsNumber(from)) {
        const double difference = std::abs(original.toDouble() - converted.toDouble());
        return difference <= FloatPrecision * std::abs(original.toDouble());
    }
    if (from == QMetaType::QString && !IsListType(converted))
        return IsLosslessText(original.toString(), converted);
    QVariant back = converted;
    return QtCompat::Convert(&back, from) && FormValues::AreEqual(back, original);
}

} // namespace

bool FormValues::AreEqualFractions(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

bool FormValues::AreEqual(const QVariant& left, const QVariant& right)
{
    const int type = left.userType();
    if (type != right.userType())
        return false;
    // Most values are such, of which a null one is no other: an empty text, a zero.
    if (type == QMetaType::QString)
        return Inside<QString>(left) == Inside<QString>(right);
    if (type == QMetaType::Double)
        return AreEqualFractions(Inside<double>(left), Inside<double>(right));
    if (left.isNull() != right.isNull())
        return false;
    switch (type) {
    case QMetaType::UnknownType:
        return true;
    case QMetaType::Float:
        return AreEqualFractions(left.toDouble(), right.toDouble());
    case QMetaType::QPixmap:
        return AreSamePixmaps(left.value<QPixmap>(), right.value<QPixmap>());
    case QMetaType::QIcon:
        return left.value<QIcon>().cacheKey() == right.value<QIcon>().cacheKey();
    case QMetaType::QVariantList: {
        const QVariantList leftList = left.toList();
        const QVariantList rightList = right.toList();
        return leftList.count() == rightList.count()
            && std::equal(leftList.constBegin(), leftList.constEnd(), rightList.constBegin(), AreEqual);
    }
    case QMetaType::QVariantMap: {
        const QVariantMap leftMap = left.toMap();
        const QVariantMap rightMap = right.toMap();
        return leftMap.keys() == rightMap.keys()
            && std::equal(leftMap.constBegin(), leftMap.constEnd(), rightMap.constBegin(), AreEqual);
    }
    default:
        return left == right;
    }
}

bool FormValues::Holds(const QVariant& held, const QVariant& written, int decimals)
{
    if (AreEqual(held, written))
        return true;
    if (!held.isValid() || !written.isValid())
        return false;
    const int type = held.userType();
    // A text that is null and one that is empty look the same.
    if (type == QMetaType::QString && written.userType() == type)
        return Inside<QString>(held) == Inside<QString>(written);
    if (IsListType(held) && IsListType(written))
        return HoldsList(held.toList(), written.toList(), decimals);
    if (type == QMetaType::QVariantMap && written.userType() == type)
        return HoldsMap(held.toMap(), written.toMap(), decimals);
    if (IsFraction(type))
        return HoldsFraction(held, written, decimals);
    if (IsInteger(type))
        return HoldsInteger(held, written);
    return HoldsConverted(held, written);
}

bool FormValues::ConvertWithoutLoss(const QVariant& value, int type, QVariant* result)
{
    *result = value;
    if (value.userType() == type)
        return true;
    if (type == QMetaType::Bool && value.userType() == QMetaType::QString)
        return ToTruthValue(value, result);
    if (type == QMetaType::Double && value.userType() == QMetaType::QString) {
        bool isNumber = false;
        *result = Inside<QString>(value).toDouble(&isNumber);
        return isNumber;
    }
    // QVariant wraps around what an integer cannot hold, and rounds fractions.
    return QtCompat::Convert(result, type) && IsLossless(value, *result);
}

QString FormValues::Describe(const QVariant& value)
{
    if (!value.isValid())
        return QStringLiteral("no value");
    if (IsListType(value))
        return QStringLiteral("a list of %1").arg(value.toList().count());
    if (value.userType() == QMetaType::QVariantMap)
        return QStringLiteral("a map of %1").arg(value.toMap().count());
    const QString text = value.toString();
    if (IsNumber(value.userType()) || value.userType() == QMetaType::Bool)
        return text;
    if (!value.canConvert<QString>())
        return DescribeType(value);
    const bool isLong = text.length() > LongestText;
    return QStringLiteral("\"%1\"").arg(isLong ? text.left(LongestText) + QChar(0x2026) : text);
}

QString FormValues::DescribeRefusal(const QVariant& given, const QVariant& held, const QString& subject)
{
    const QVariantList wanted = IsListType(given) ? given.toList() : QVariantList();
    const QVariantList items = IsListType(held) ? held.toList() : QVariantList();
    for (int i = 0; i < wanted.count() && items.count() == wanted.count(); ++i) {
        if (!Holds(items.at(i), wanted.at(i)))
            return DescribeRefusal(wanted.at(i), items.at(i), QStringLiteral("item %1").arg(i + 1));
    }
    if (given.userType() != QMetaType::QVariantMap || IsListType(held))
        return QStringLiteral("%1 was given %2 and holds %3").arg(subject, Describe(given), Describe(held));
    const QVariantMap map = given.toMap();
    // An item that has nothing else is read as its text.
    const bool isMap = held.userType() == QMetaType::QVariantMap;
    const QVariantMap entries = isMap ? held.toMap() : QVariantMap{{QStringLiteral("text"), held}};
    for (QVariantMap::const_iterator it = map.constBegin(); it != map.constEnd(); ++it) {
        const QVariant entry = entries.value(it.key());
        if (!Holds(entry, it.value()))
            return DescribeRefusal(it.value(), entry, QStringLiteral("\"%1\" of %2").arg(it.key(), subject));
    }
    return QStringLiteral("%1 was given %2 and holds %3").arg(subject, Describe(given), Describe(held));
}

QString FormValues::DescribeType(const QVariant& value)
{
    const int type = value.userType();
    if (IsNumber(type))
        return IsInteger(type) ? QStringLiteral("an integer") : QStringLiteral("a number");
    switch (type) {
    case QMetaType::Bool:
        return QStringLiteral("a truth value");
    case QMetaType::QString:
        return QStringLiteral("a text");
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return QStringLiteral("a list");
    case QMetaType::QVariantMap:
        return QStringLiteral("a map");
    case QMetaType::QDate:
        return QStringLiteral("a date");
    case QMetaType::QTime:
        return QStringLiteral("a time");
    case QMetaType::QDateTime:
        return QStringLiteral("a date with a time");
    case QMetaType::QPixmap:
    case QMetaType::QImage:
    case QMetaType::QIcon:
        return QStringLiteral("an image");
    default:
        return QStringLiteral("a %1").arg(QString::fromLatin1(value.typeName()));
    }
}
