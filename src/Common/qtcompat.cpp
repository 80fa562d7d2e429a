#include "Common/qtcompat.h"

#include <QBitArray>
#include <QBitmap>
#include <QBrush>
#include <QColor>
#include <QCursor>
#include <QDateTime>
#include <QDebug>
#include <QIcon>
#include <QJsonDocument>
#include <QLineF>
#include <QLocale>
#include <QMetaEnum>
#include <QPolygonF>
#include <QRegion>
#include <QRegularExpression>
#include <QUuid>
#include <QVector4D>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace {

// A letter, digit, mark or «_» of one QChar.
const QLatin1String WordCharacter("(?:(?![\\x{10000}-\\x{10ffff}])[\\p{L}\\p{N}\\p{M}_])");

// Places in the text of a date and time: where the date ends, in the time where the minutes do, and behind those the
// point of a fraction.
const int DateLength = 10;
const int SecondsStart = 5;
const int FractionPoint = 3;
// How many digits of fractions are read.
const int MinuteDigits = 5;
const int SecondDigits = 4;

typedef QMetaType::Type Type;

template<std::size_t count>
bool IsOneOf(int type, const Type (&types)[count])
{
    return std::find(types, types + count, type) != types + count;
}

bool IsFloatingPoint(int type)
{
    return type == QMetaType::Double || type == QMetaType::Float;
}

bool IsByte(int type)
{
    return type == QMetaType::Char || type == QMetaType::SChar || type == QMetaType::UChar;
}

bool IsInteger(int type)
{
    static const Type types[] = {QMetaType::Int,   QMetaType::UInt,  QMetaType::LongLong, QMetaType::ULongLong,
                                 QMetaType::Long,  QMetaType::ULong, QMetaType::Short,    QMetaType::UShort,
                                 QMetaType::UChar, QMetaType::SChar, QMetaType::Char};
    return IsOneOf(type, types);
}

bool IsNumber(int type)
{
    return IsFloatingPoint(type) || type == QMetaType::Bool || IsInteger(type);
}

bool IsEnumeration(int type)
{
    return QMetaType(type).flags() & QMetaType::IsEnumeration;
}

template<typename Value>
const Value& Content(const QVariant& value)
{
    return *static_cast<const Value*>(value.constData());
}

/// Halves go up. What is no number, or too far below zero, is 0.
template<typename Number>
qint64 Round(Number number)
{
    const Number limit = Number(std::numeric_limits<qint64>::max());
    if (std::isnan(number) || number < -limit)
        return 0;
    if (number >= limit)
        return std::numeric_limits<qint64>::min();
    const qint64 below = number >= 0 ? 0 : static_cast<qint64>(number - 1);
    return static_cast<qint64>(number - Number(below) + Number(0.5)) + below;
}

qint64 Round(const QVariant& value)
{
    return value.userType() == QMetaType::Float ? Round(Content<float>(value)) : Round(Content<double>(value));
}

/// Conversions that Qt 6 has and Qt 5 has not.
struct NewConversion
{
    Type from;
    Type to;
};
const NewConversion NewConversions[] = {{QMetaType::QString, QMetaType::QVariantList},
                                        {QMetaType::QByteArray, QMetaType::QVariantList},
                                        {QMetaType::QDate, QMetaType::QCborValue},
                                        {QMetaType::QJsonArray, QMetaType::QJsonValue},
                                        {QMetaType::QJsonObject, QMetaType::QJsonValue},
                                        {QMetaType::QJsonDocument, QMetaType::QCborArray},
                                        {QMetaType::QJsonDocument, QMetaType::QCborMap},
                                        {QMetaType::QJsonDocument, QMetaType::QJsonArray},
                                        {QMetaType::QJsonDocument, QMetaType::QJsonObject},
                                        {QMetaType::QJsonDocument, QMetaType::QJsonValue},
                                        {QMetaType::QJsonValue, QMetaType::QJsonArray},
                                        {QMetaType::QJsonValue, QMetaType::QJsonObject},
                                        {QMetaType::QObjectStar, QMetaType::Nullptr},
                                        {QMetaType::VoidStar, QMetaType::Nullptr},
                                        {QMetaType::QStringList, QMetaType::QCborArray},
                                        {QMetaType::QStringList, QMetaType::QCborValue},
                                        {QMetaType::QStringList, QMetaType::QJsonArray},
                                        {QMetaType::QStringList, QMetaType::QJsonValue},
                                        {QMetaType::QVariantList, QMetaType::QCborArray},
                                        {QMetaType::QVariantList, QMetaType::QJsonArray},
                                        {QMetaType::QVariantList, QMetaType::QByteArrayList},
                                        {QMetaType::QVariantMap, QMetaType::QCborMap},
                                        {QMetaType::QVariantMap, QMetaType::QJsonObject},
                                        {QMetaType::QVariantHash, QMetaType::QCborMap},
                                        {QMetaType::QVariantHash, QMetaType::QJsonObject},
                                        {QMetaType::Float, QMetaType::QChar}};

bool IsNewConversion(int from, int to)
{
    static const Type fewIntegers[] = {QMetaType::Long, QMetaType::ULong, QMetaType::UChar};
    static const Type notFromFew[] = {QMetaType::QByteArray, QMetaType::QString, QMetaType::QChar, QMetaType::Bool,
                                      QMetaType::Double,     QMetaType::Float,   QMetaType::Char,  QMetaType::UChar,
                                      QMetaType::Long,       QMetaType::ULong,   QMetaType::UShort};
    static const Type notFromEnumeration[] = {QMetaType::QCborValue, QMetaType::QJsonValue, QMetaType::QChar,
                                              QMetaType::Bool,       QMetaType::Double,     QMetaType::Float};
    if (from == QMetaType::QCborSimpleType || to == QMetaType::QCborSimpleType)
        return from != QMetaType::QCborValue && to != QMetaType::QCborValue;
    if (IsOneOf(from, fewIntegers) && IsOneOf(to, notFromFew))
        return true;
    if (IsEnumeration(from) && IsOneOf(to, notFromEnumeration))
        return true;
    return std::any_of(std::begin(NewConversions), std::end(NewConversions),
                       [=](const NewConversion& conversion) { return conversion.from == from && conversion.to == to; });
}

/// Conversions that Qt 5 promises, though they fail.
bool IsFormerConversion(int from, int to)
{
    if (from == QMetaType::QKeySequence)
        return to == QMetaType::Short || IsEnumeration(to);
    return to == QMetaType::QKeySequence && (from == QMetaType::Short || from == QMetaType::UShort);
}

QString TextOf(const QByteArray& bytes)
{
    return bytes.isNull() ? QString(QLatin1String("")) : QString::fromUtf8(bytes.constData());
}

QStringList TextsOf(const QVariantList& list)
{
    QStringList texts;
    for (const QVariant& element : list)
        texts.append(QtCompat::ToString(element));
    return texts;
}

/// Of a number with a fraction.
QVariant ToInteger(const QVariant& value, int type)
{
    QVariant integer(Round(value));
    integer.convert(QMetaType(type));
    return integer;
}

/// Texts that Qt 5 takes for none of that type: an integer with a NUL, and a number beyond the range of float.
bool IsNoNumber(const QVariant& value, int type)
{
    if (value.userType() != QMetaType::QString)
        return false;
    const QString text = Content<QString>(value);
    bool isFloat = true;
    if (type == QMetaType::Float)
        text.toFloat(&isFloat);
    return !isFloat || (IsInteger(type) && text.contains(QChar(0)));
}

bool IsPoint(QChar character)
{
    return character == u',' || character == u'.';
}

/// A number in a time, which Qt 5 takes with a sign, too.
int ReadPart(QStringView text, bool* isRead)
{
    const int number = QLocale::c().toInt(text, isRead);
    *isRead = *isRead && !text.contains(u' ');
    return number;
}

/// What stands behind a point, as a part of one.
double ReadFraction(QStringView text, bool* isRead)
{
    const double fraction = QLocale::c().toDouble(QLatin1String("0.") + text.toString(), isRead);
    *isRead = *isRead && !text.startsWith(u' ');
    return fraction;
}

/// The seconds of a time, and the fraction of one, from its text behind the minutes.
std::pair<int, double> ReadSeconds(QStringView text, bool* isRead)
{
    *isRead = text.isEmpty() || text.at(0) == u':' || IsPoint(text.at(0));
    if (text.isEmpty() || !*isRead)
        return {0, 0};
    if (IsPoint(text.at(0))) {
        const QStringView digits = text.mid(1, MinuteDigits);
        const float seconds = 60.0F * float(ReadPart(digits, isRead) / std::pow(10.0, digits.size()));
        return {int(std::floor(seconds)), seconds - std::floor(seconds)};
    }
    const int second = ReadPart(text.mid(1, 2), isRead);
    if (!*isRead || text.size() <= FractionPoint || !IsPoint(text.at(FractionPoint)))
        return {second, 0};
    return {second, ReadFraction(text.mid(FractionPoint + 1, SecondDigits), isRead)};
}

/// The time that a text tells as Qt 5 reads it: with one digit where two belong, or with more behind the seconds than
/// a fraction, but not without minutes.
QTime ReadTime(QStringView text, bool* isMidnight)
{
    if (text.size() < SecondsStart || text.at(2) != u':')
        return QTime();
    bool hasHour = false;
    bool hasMinute = false;
    bool hasSeconds = false;
    const int hour = ReadPart(text.left(2), &hasHour);
    const int minute = ReadPart(text.mid(3, 2), &hasMinute);
    const std::pair<int, double> seconds = ReadSeconds(text.mid(SecondsStart), &hasSeconds);
    if (!hasHour || !hasMinute || !hasSeconds)
        return QTime();
    const int millisecond = qMin(qRound(seconds.second * 1000), 999);
    *isMidnight = hour == 24 && minute == 0 && seconds.first == 0 && millisecond == 0;
    return *isMidnight ? QTime(0, 0) : QTime(hour, minute, seconds.first, millisecond);
}

/// A date, with a digit in the place of each sign that only Qt 5 takes for a part of a number.
QString WithoutSigns(QString date)
{
    for (const int start : {0, 5, 8}) {
        if (start < date.size() && date.at(start) == u'+')
            date[start] = u'0';
    }
    return date;
}

/// Where the time ends in a text, and what tells its zone begins.
qsizetype ZoneStart(const QString& text)
{
    if (text.endsWith(u'Z'))
        return text.size() - 1;
    const qsizetype sign = qMax(text.lastIndexOf(u'+'), text.lastIndexOf(u'-'));
    return sign > DateLength ? sign : text.size();
}

QDateTime ReadMoment(const QString& text)
{
    if (text.size() <= DateLength + 1)
        return QDateTime::fromString(WithoutSigns(text), Qt::ISODate);
    const qsizetype zone = ZoneStart(text);
    bool isMidnight = false;
    const QTime time = ReadTime(QStringView(text).mid(DateLength + 1, zone - DateLength - 1), &isMidnight);
    if (!time.isValid())
        return QDateTime();
    // Qt reads the rest.
    const QString whole = isMidnight ? QString(QLatin1String("24:00")) : time.toString(Qt::ISODateWithMs);
    return QDateTime::fromString(WithoutSigns(text.left(DateLength + 1)) + whole + text.mid(zone), Qt::ISODate);
}

/// A text as a date or a time, which Qt 6 reads more strictly; invalid for another type.
QVariant ReadText(const QString& text, int type)
{
    bool isMidnight = false;
    switch (type) {
    case QMetaType::QDate:
        return QDate::fromString(WithoutSigns(text), Qt::ISODate);
    case QMetaType::QTime:
        return ReadTime(text, &isMidnight);
    case QMetaType::QDateTime:
        return ReadMoment(text);
    default:
        return QVariant();
    }
}

bool LacksTexture(const QVariant& value, int type)
{
    return value.userType() == QMetaType::QBrush && type == QMetaType::QPixmap
        && Content<QBrush>(value).style() != Qt::TexturePattern;
}

bool IsValidMoment(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QDate:
        return Content<QDate>(value).isValid();
    case QMetaType::QTime:
        return Content<QTime>(value).isValid();
    case QMetaType::QDateTime:
        return Content<QDateTime>(value).isValid();
    default:
        return true;
    }
}

/// The conversions whose results differ. Invalid for all others.
QVariant ConvertAsBefore(const QVariant& value, int type)
{
    const int from = value.userType();
    if (IsFloatingPoint(from) && (IsInteger(type) || type == QMetaType::Bool))
        return ToInteger(value, type);
    if (IsByte(from) && type == QMetaType::QByteArray)
        return QByteArray(1, Content<char>(value));
    if (from == QMetaType::QByteArray && type == QMetaType::QString)
        return TextOf(Content<QByteArray>(value));
    if (from == QMetaType::QByteArray && type == QMetaType::QColor)
        return QColor(QLatin1String(Content<QByteArray>(value)));
    if (from == QMetaType::QVariantList && type == QMetaType::QStringList)
        return TextsOf(Content<QVariantList>(value));
    if (from == QMetaType::QString)
        return ReadText(Content<QString>(value), type);
    return QVariant();
}

bool TryConvert(QVariant& value, int type)
{
    if (value.userType() == type)
        return true;
    const bool isNull = value.data_ptr().is_null && value.userType() != QMetaType::Nullptr;
    if (isNull || type == QMetaType::Nullptr || !QtCompat::CanConvert(value, type))
        return false;
    if (IsNoNumber(value, type) || LacksTexture(value, type))
        return false;
    QVariant converted = ConvertAsBefore(value, type);
    if (converted.isValid()) {
        value = converted;
        return IsValidMoment(value);
    }
    return value.convert(QMetaType(type)) && IsValidMoment(value);
}

bool AreEqualNumbers(const QVariant& left, const QVariant& right)
{
    if (!IsFloatingPoint(left.userType()) && !IsFloatingPoint(right.userType()))
        return left == right;
    const double leftNumber = QtCompat::ToDouble(left);
    const double rightNumber = QtCompat::ToDouble(right);
    if (leftNumber == rightNumber)
        return true;
    return std::isfinite(leftNumber) && std::isfinite(rightNumber) && leftNumber != 0.0 && rightNumber != 0.0
        && qFuzzyCompare(leftNumber, rightNumber);
}

bool AreEqualLists(const QVariantList& left, const QVariantList& right)
{
    // Contents that are shared are equal, even where one in them is no number.
    return left.isSharedWith(right)
        || std::equal(left.begin(), left.end(), right.begin(), right.end(), QtCompat::AreEqual);
}

bool AreEqualMaps(const QVariantMap& left, const QVariantMap& right)
{
    return left.isSharedWith(right) || (left.keys() == right.keys() && AreEqualLists(left.values(), right.values()));
}

bool AreEqualHashes(const QVariantHash& left, const QVariantHash& right)
{
    if (left.isSharedWith(right) || left.size() != right.size())
        return left.isSharedWith(right);
    for (QVariantHash::const_iterator it = left.begin(); it != left.end(); ++it) {
        const QVariantHash::const_iterator other = right.find(it.key());
        if (other == right.end() || !QtCompat::AreEqual(it.value(), other.value()))
            return false;
    }
    return true;
}

/// Of one type, which Qt 6 cannot compare: by all bits, as pointers and shared contents are.
bool AreEqualBytes(const QVariant& left, const QVariant& right)
{
    if (left.isNull() && right.isNull())
        return true;
    return std::memcmp(left.constData(), right.constData(), static_cast<std::size_t>(left.metaType().sizeOf())) == 0;
}

bool AreEqualOfOneType(const QVariant& left, const QVariant& right)
{
    switch (left.userType()) {
    case QMetaType::QVariantList:
        return AreEqualLists(Content<QVariantList>(left), Content<QVariantList>(right));
    case QMetaType::QVariantMap:
        return AreEqualMaps(Content<QVariantMap>(left), Content<QVariantMap>(right));
    case QMetaType::QVariantHash:
        return AreEqualHashes(Content<QVariantHash>(left), Content<QVariantHash>(right));
    case QMetaType::QPixmap:
    case QMetaType::QBitmap:
        return Content<QPixmap>(left).cacheKey() == Content<QPixmap>(right).cacheKey();
    case QMetaType::QIcon:
        return Content<QIcon>(left).cacheKey() == Content<QIcon>(right).cacheKey();
    case QMetaType::QCursor:
        return Content<QCursor>(left).shape() == Content<QCursor>(right).shape();
    default:
        return left.metaType().isEqualityComparable() || !left.isValid() ? left == right : AreEqualBytes(left, right);
    }
}

template<typename Value>
bool IsNullContent(const QVariant& value)
{
    return Content<Value>(value).isNull();
}

template<typename Value>
bool IsEmptyContent(const QVariant& value)
{
    return Content<Value>(value).isEmpty();
}

/// How contents that can be null say so.
struct NullContent
{
    Type type;
    bool (*isNull)(const QVariant& value);
};
const NullContent NullContents[]
    = {{QMetaType::QString, IsNullContent<QString>},       {QMetaType::QByteArray, IsNullContent<QByteArray>},
       {QMetaType::QChar, IsNullContent<QChar>},           {QMetaType::QDate, IsNullContent<QDate>},
       {QMetaType::QTime, IsNullContent<QTime>},           {QMetaType::QDateTime, IsNullContent<QDateTime>},
       {QMetaType::QBitArray, IsNullContent<QBitArray>},   {QMetaType::QUuid, IsNullContent<QUuid>},
       {QMetaType::QPoint, IsNullContent<QPoint>},         {QMetaType::QPointF, IsNullContent<QPointF>},
       {QMetaType::QSize, IsNullContent<QSize>},           {QMetaType::QSizeF, IsNullContent<QSizeF>},
       {QMetaType::QRect, IsNullContent<QRect>},           {QMetaType::QRectF, IsNullContent<QRectF>},
       {QMetaType::QLine, IsNullContent<QLine>},           {QMetaType::QLineF, IsNullContent<QLineF>},
       {QMetaType::QJsonValue, IsNullContent<QJsonValue>}, {QMetaType::QJsonDocument, IsNullContent<QJsonDocument>},
       {QMetaType::QIcon, IsNullContent<QIcon>},           {QMetaType::QPixmap, IsNullContent<QPixmap>},
       {QMetaType::QBitmap, IsNullContent<QBitmap>},       {QMetaType::QImage, IsNullContent<QImage>},
       {QMetaType::QRegion, IsNullContent<QRegion>},       {QMetaType::QPolygon, IsEmptyContent<QPolygon>},
       {QMetaType::QPolygonF, IsEmptyContent<QPolygonF>},  {QMetaType::QVector2D, IsNullContent<QVector2D>},
       {QMetaType::QVector3D, IsNullContent<QVector3D>},   {QMetaType::QVector4D, IsNullContent<QVector4D>}};

/// The number that a value stands for in a property of an enumeration; invalid for none.
QVariant EnumerationValue(const QMetaProperty& property, const QVariant& value)
{
    if (value.userType() == QMetaType::QString) {
        bool isKey = false;
        const QMetaEnum keys = property.enumerator();
        const QByteArray text = value.toByteArray();
        const int number = property.isFlagType() ? keys.keysToValue(text, &isKey) : keys.keyToValue(text, &isKey);
        return isKey ? number : QVariant();
    }
    const bool isNumber = value.userType() == QMetaType::Int || value.userType() == QMetaType::UInt;
    return isNumber || value.metaType() == property.metaType() ? QVariant(value.toInt()) : QVariant();
}

} // namespace

namespace QtCompat {

QStringList Capture(const QString& pattern, const QString& text)
{
    QString unicode = pattern;
    unicode.replace(QLatin1String("\\w"), WordCharacter);
    const QRegularExpression expression(unicode, QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = expression.match(text);
    QStringList captured;
    for (int i = 0; match.hasMatch() && i <= expression.captureCount(); ++i)
        captured.append(match.captured(i));
    return captured;
}

bool Convert(QVariant* value, int type)
{
    const bool isConverted = TryConvert(*value, type);
    if (!isConverted)
        *value = QVariant(QMetaType(type));
    return isConverted;
}

bool CanConvert(const QVariant& value, int type)
{
    const int from = value.userType();
    if (from == type)
        return true;
    if (from == QMetaType::QStringList && type == QMetaType::QString)
        return Content<QStringList>(value).size() == 1;
    if (IsNewConversion(from, type))
        return false;
    return IsFormerConversion(from, type) || value.canConvert(QMetaType(type));
}

bool AreEqual(const QVariant& left, const QVariant& right)
{
    if (IsNumber(left.userType()) && IsNumber(right.userType()))
        return AreEqualNumbers(left, right);
    if (left.metaType() == right.metaType())
        return AreEqualOfOneType(left, right);
    QVariant kept = left;
    QVariant converted = right;
    if (!CanConvert(converted, kept.userType()))
        qSwap(kept, converted);
    return TryConvert(converted, kept.userType()) && AreEqualOfOneType(kept, converted);
}

bool IsNull(const QVariant& value)
{
    const int type = value.userType();
    // Nothing, truth values and the usual numbers, which an evaluation asks for most.
    if (type <= QMetaType::Double)
        return value.isNull();
    for (const NullContent& content : NullContents) {
        if (content.type == type)
            return content.isNull(value);
    }
    return value.isNull();
}

bool ToBool(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::Bool)
        return Content<bool>(value);
    if (IsFloatingPoint(type))
        return Round(value) != 0;
    return !IsEnumeration(type) && value.toBool();
}

double ToDouble(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::Double)
        return Content<double>(value);
    return IsEnumeration(type) ? 0.0 : value.toDouble();
}

int ToInt(const QVariant& value, bool* ok)
{
    if (IsNoNumber(value, QMetaType::Int)) {
        *ok = false;
        return 0;
    }
    return IsFloatingPoint(value.userType()) ? QVariant(Round(value)).toInt(ok) : value.toInt(ok);
}

QString ToString(const QVariant& value)
{
    return value.userType() == QMetaType::QByteArray ? TextOf(Content<QByteArray>(value)) : value.toString();
}

QVariantList ToList(const QVariant& value)
{
    static const Type noLists[] = {QMetaType::QString, QMetaType::QByteArray, QMetaType::QByteArrayList};
    return IsOneOf(value.userType(), noLists) ? QVariantList() : value.toList();
}

QVariant ReadProperty(const QMetaProperty& property, const QObject* object)
{
    const QVariant value = property.read(object);
    return property.isEnumType() ? QVariant(value.toInt()) : value;
}

QVariant ReadProperty(const QByteArray& name, const QObject* object)
{
    const QMetaObject* const metaObject = object->metaObject();
    const int index = metaObject->indexOfProperty(name);
    return index < 0 ? object->property(name) : ReadProperty(metaObject->property(index), object);
}

bool WriteProperty(const QMetaProperty& property, QObject* object, const QVariant& value)
{
    const int type = property.userType();
    if (type == value.userType() && !property.isEnumType())
        return property.write(object, value);
    QVariant converted = value;
    if (property.isEnumType())
        converted = EnumerationValue(property, value);
    else if (type != QMetaType::QVariant && value.isValid() && !TryConvert(converted, type))
        return false;
    return (converted.isValid() || !property.isEnumType()) && property.write(object, converted);
}

QDebug operator<<(QDebug stream, const ShownType& type)
{
    const QDebugStateSaver saver(stream);
    stream.nospace() << "QVariant::" << type.name;
    return stream;
}

ShownType TypeOf(const QVariant& value)
{
    return {value.isValid() ? value.typeName() : "Invalid"};
}

} // namespace QtCompat
