#include "randomvalue.h"

#include <QBitArray>
#include <QBitmap>
#include <QBrush>
#include <QColor>
#include <QCursor>
#include <QDate>
#include <QIcon>
#include <QJsonArray>
#include <QJsonObject>
#include <QKeySequence>
#include <QLine>
#include <QLocale>
#include <QModelIndex>
#include <QPixmap>
#include <QRect>
#include <QRegularExpression>
#include <QSizePolicy>
#include <QStringList>
#include <QUrl>
#include <QUuid>

#include <limits>

#include "Common/variantobject.h"
#include "qtversion.h"
#include "random.h"

/// A host's own type, which compares by what it holds.
struct Amount
{
    double value;
    QString unit;
};
inline bool operator==(const Amount& left, const Amount& right)
{
    return left.value == right.value && left.unit == right.unit;
}
inline bool operator<(const Amount& left, const Amount& right)
{
    return left.value < right.value;
}
Q_DECLARE_METATYPE(Amount)

/// One that compares by nothing.
struct Note
{
    QString text;
};
Q_DECLARE_METATYPE(Note)

namespace {

const char* const Texts[] = {"",
                             "0",
                             "1",
                             "-1",
                             "2",
                             "3",
                             "3.0",
                             "03",
                             " 3",
                             "2.5",
                             "0.1",
                             "1e3",
                             "inf",
                             "nan",
                             "0x10",
                             "1,000",
                             "true",
                             "FALSE",
                             "false",
                             "abc",
                             "red",
                             "a",
                             "ab",
                             "%1",
                             "name",
                             "kW",
                             "%2 %1",
                             "\xc3\xa4\xe2\x82\xac",
                             "9999999999",
                             "-0",
                             "4294967295",
                             "2020-01-02",
                             "12:30:00",
                             "#ff0000",
                             "[1]",
                             "{}",
                             "http://localhost/a",
                             "Ctrl+A",
                             "2020-01-02T12:30:00"};
const int Integers[] = {
    0, 1, 2, 3, -1, 7, 48, 97, 255, 65535, 1000000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
const double Doubles[] = {0.0,
                          -0.0,
                          1.0,
                          2.0,
                          3.0,
                          2.5,
                          -1.0,
                          0.1,
                          0.3,
                          0.1 + 0.2,
                          0.5,
                          -0.5,
                          -2.5,
                          1.0 + 1e-13,
                          1e-12,
                          1e-300,
                          1e15,
                          1e17,
                          1e300,
                          4294967296.0,
                          1.0 / 3,
                          std::numeric_limits<double>::infinity(),
                          -std::numeric_limits<double>::infinity(),
                          std::numeric_limits<double>::quiet_NaN()};
const qint64 Longs[]
    = {0, 1, 3, -1, 97, 4294967295, 4294967296, std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()};
const char* const Names[] = {"name", "kW", "a", "0", "1", "red", ""};

/// Small numbers more often, so that values of different types meet.
int RandomInteger(Random& random)
{
    return random.OneIn(2) ? random.Below(4) : random.Of(Integers);
}

double RandomDouble(Random& random)
{
    return random.OneIn(3) ? random.Below(4) : random.Of(Doubles);
}

QVariantList RandomList(Random& random, int depth)
{
    QVariantList list;
    for (int count = random.Below(4); count > 0; --count)
        list << RandomValue(random, depth - 1);
    return list;
}

QVariantMap RandomMap(Random& random, int depth)
{
    QVariantMap map;
    for (int count = random.Below(4); count > 0; --count)
        map.insert(random.Of(Names), RandomValue(random, depth - 1));
    return map;
}

QStringList RandomTexts(Random& random)
{
    QStringList texts;
    for (int count = random.Below(4); count > 0; --count)
        texts << RandomText(random);
    return texts;
}

QVariant RandomRecord(Random& random, int depth)
{
    VariantObject record;
    for (int count = random.Below(3); count > 0; --count)
        record.setProperty(random.OneIn(2) ? "name" : "kW", RandomValue(random, depth - 1));
    return record.ToVariant();
}

QVariant RandomNumber(Random& random)
{
    const int integer = RandomInteger(random);
    switch (random.Below(12)) {
    case 0:
        return static_cast<uint>(integer);
    case 1:
        return random.Of(Longs);
    case 2:
        return static_cast<quint64>(random.Of(Longs));
    case 3:
        return static_cast<float>(RandomDouble(random));
    case 4:
        return QVariant::fromValue(static_cast<short>(integer));
    case 5:
        return QVariant::fromValue(static_cast<ushort>(integer));
    case 6:
        return QVariant::fromValue(static_cast<char>(integer));
    case 7:
        return QVariant::fromValue(static_cast<signed char>(integer));
    case 8:
        return QVariant::fromValue(static_cast<uchar>(integer));
    case 9:
        return QVariant::fromValue(static_cast<long>(random.Of(Longs)));
    case 10:
        return QVariant::fromValue(static_cast<ulong>(random.Of(Longs)));
    default:
        return QVariant::fromValue(static_cast<Qt::Axis>(random.Below(3)));
    }
}

QVariant RandomMoment(Random& random)
{
    const QDate date = random.OneIn(3) ? QDate() : QDate(2020, 1, 1 + random.Below(3));
    const QTime time = random.OneIn(3) ? QTime() : QTime(12, 30 * random.Below(2), 0, 5 * random.Below(2));
    switch (random.Below(3)) {
    case 0:
        return date;
    case 1:
        return time;
    default:
        return QDateTime(date, time, random.OneIn(2) ? Qt::UTC : Qt::LocalTime);
    }
}

QVariant RandomCoreValue(Random& random)
{
    const int small = random.Below(3);
    switch (random.Below(18)) {
    case 0:
        return QChar(random.OneIn(2) ? 'a' : '0' + small);
    case 1:
        return RandomText(random).toUtf8();
    case 2:
        return QUrl(RandomText(random));
    case 3:
        return QUuid(QString::fromLatin1(small ? "{00000000-0000-0000-0000-000000000001}" : ""));
    case 4:
        return QBitArray(small, true);
    case 5:
        return QLocale(small ? "de_DE" : "C");
    case 6:
        return QPoint(small, 0);
    case 7:
        return QPointF(small, 0.0);
    case 8:
        return QSize(small, 1);
    case 9:
        return QSizeF(small, 1.0);
    case 10:
        return QRect(0, 0, small, 1);
    case 11:
        return QRectF(0.0, 0.0, small, 1.0);
    case 12:
        return QLine(0, 0, small, 1);
    case 13:
        return QRegularExpression(small ? "a" : "");
    case 14:
        return QVariant::fromValue(QJsonValue(small ? QJsonValue(small) : QJsonValue("3")));
    case 15:
        return QVariant::fromValue(QJsonArray::fromStringList(RandomTexts(random)));
    case 16:
        return QVariant::fromValue(QJsonObject{{"name", small}});
    default:
        return QVariant::fromValue(QModelIndex());
    }
}

QVariant RandomGuiValue(Random& random)
{
    static const QPixmap pixmaps[] = {QPixmap(), QPixmap(2, 2), QPixmap(2, 2)};
    const int small = random.Below(3);
    switch (random.Below(8)) {
    case 0:
        return QColor(random.OneIn(3) ? QColor() : QColor(255, small, 0));
    case 1:
        return pixmaps[small];
    case 2:
        return QBitmap(small, 1);
    case 3:
        return QIcon();
    case 4:
        return QKeySequence(small ? "Ctrl+A" : "");
    case 5:
        return QCursor(small ? Qt::ArrowCursor : Qt::WaitCursor);
    case 6:
        return QVariant::fromValue(QSizePolicy(QSizePolicy::Fixed, small ? QSizePolicy::Fixed : QSizePolicy::Maximum));
    default:
        return QBrush(QColor(small, 0, 0));
    }
}

QVariant RandomNull(Random& random)
{
    static const int types[]
        = {QMetaType::Bool,        QMetaType::Int,   QMetaType::Double, QMetaType::QString,     QMetaType::QVariantList,
           QMetaType::QVariantMap, QMetaType::QDate, QMetaType::QColor, QMetaType::QStringList, QMetaType::QByteArray};
    return QtVersion::NullOf(random.Of(types));
}

QVariant RandomOwnValue(Random& random)
{
    static const bool isComparable = QtVersion::RegisterComparison<Amount>();
    Q_UNUSED(isComparable)
    static const QVariant notes[] = {QVariant::fromValue(Note{"a"}), QVariant::fromValue(Note{"a"})};
    switch (random.Below(4)) {
    case 0:
        return QVariant::fromValue(Amount{RandomDouble(random), "m"});
    case 1:
        return random.Of(notes);
    case 2:
        return QVariant::fromValue(nullptr);
    default:
        return QVariant::fromValue(static_cast<QObject*>(nullptr));
    }
}

QVariantHash ToHash(const QVariantMap& map)
{
    QVariantHash hash;
    for (auto it = map.begin(); it != map.end(); ++it)
        hash.insert(it.key(), it.value());
    return hash;
}

QString Exact(double number)
{
    return QString::number(number, 'g', 17);
}

QString Quoted(const QString& text)
{
    return text.isNull() ? "null" : "'" + text + "'";
}

QString DescribeElements(const QVariantList& list)
{
    QStringList parts;
    for (const QVariant& element : list)
        parts << Describe(element);
    return "[" + parts.join(", ") + "]";
}

QString DescribeEntries(const QVariantMap& map)
{
    QStringList parts;
    for (auto it = map.begin(); it != map.end(); ++it)
        parts << it.key() + ": " + Describe(it.value());
    return "{" + parts.join(", ") + "}";
}

QString DescribeRecord(const VariantObject& record)
{
    QVariantMap map;
    for (const QByteArray& name : record.dynamicPropertyNames())
        map.insert(name, record.property(name));
    return DescribeEntries(map);
}

template<typename Number>
QString Decimal(const QVariant& value)
{
    return QString::number(value.value<Number>());
}

QString DescribeNumber(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return value.value<bool>() ? "true" : "false";
    case QMetaType::Int:
        return Decimal<int>(value);
    case QMetaType::UInt:
        return Decimal<uint>(value);
    case QMetaType::LongLong:
        return Decimal<qint64>(value);
    case QMetaType::ULongLong:
        return Decimal<quint64>(value);
    case QMetaType::Long:
        return Decimal<long>(value);
    case QMetaType::ULong:
        return Decimal<ulong>(value);
    case QMetaType::Short:
        return Decimal<short>(value);
    case QMetaType::UShort:
        return Decimal<ushort>(value);
    case QMetaType::Char:
        return QString::number(int(value.value<char>()));
    case QMetaType::SChar:
        return QString::number(int(value.value<signed char>()));
    case QMetaType::UChar:
        return QString::number(int(value.value<uchar>()));
    case QMetaType::Double:
        return Exact(value.value<double>());
    case QMetaType::Float:
        return Exact(static_cast<double>(value.value<float>()));
    default:
        return QString();
    }
}

QString DescribeMoment(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QDate:
        return value.value<QDate>().toString(Qt::ISODate);
    case QMetaType::QTime:
        return value.value<QTime>().toString(Qt::ISODateWithMs);
    case QMetaType::QDateTime:
        return value.value<QDateTime>().toString(Qt::ISODateWithMs);
    default:
        return QString();
    }
}

QString DescribeText(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::QString:
        return Quoted(value.value<QString>());
    case QMetaType::QByteArray:
        return value.value<QByteArray>().toHex();
    case QMetaType::QChar:
        return QString::number(value.value<QChar>().unicode());
    case QMetaType::QUrl:
        return value.value<QUrl>().toString();
    case QMetaType::QColor:
        return value.value<QColor>().name(QColor::HexArgb);
    case QMetaType::QPixmap:
        return QString::number(value.value<QPixmap>().width());
    case QMetaType::QKeySequence:
        return value.value<QKeySequence>().toString();
    default:
        return DescribeMoment(value) + DescribeNumber(value);
    }
}

QString DescribeContent(const QVariant& value)
{
    const int type = value.userType();
    switch (type) {
    case QMetaType::QVariantList:
        return DescribeElements(value.value<QVariantList>());
    case QMetaType::QVariantMap:
        return DescribeEntries(value.value<QVariantMap>());
    case QMetaType::QVariantHash: {
        QVariantMap map;
        const QVariantHash hash = value.value<QVariantHash>();
        for (auto it = hash.begin(); it != hash.end(); ++it)
            map.insert(it.key(), it.value());
        return DescribeEntries(map);
    }
    case QMetaType::QStringList: {
        QStringList parts;
        for (const QString& text : value.value<QStringList>())
            parts << Quoted(text);
        return "[" + parts.join(", ") + "]";
    }
    default:
        break;
    }
    if (type == qMetaTypeId<VariantObject>())
        return DescribeRecord(value.value<VariantObject>());
    if (type == qMetaTypeId<Amount>())
        return Exact(value.value<Amount>().value);
    return DescribeText(value);
}

} // namespace

QVariant RandomValue(Random& random, int depth)
{
    const bool flat = depth <= 0;
    switch (random.Below(flat ? 12 : 18)) {
    case 0:
        return QVariant();
    case 1:
        return random.OneIn(2);
    case 2:
    case 3:
        return RandomInteger(random);
    case 4:
    case 5:
        return RandomDouble(random);
    case 6:
        return RandomNumber(random);
    case 7:
        return random.OneIn(2) ? RandomMoment(random) : RandomCoreValue(random);
    case 8:
        return random.OneIn(2) ? RandomGuiValue(random) : RandomOwnValue(random);
    case 9:
        return RandomNull(random);
    case 10:
    case 11:
        return random.OneIn(12) ? QString() : RandomText(random);
    case 12:
    case 13:
        return RandomList(random, depth);
    case 14:
    case 15:
        return RandomMap(random, depth);
    case 16:
        return random.OneIn(3) ? QVariant(ToHash(RandomMap(random, depth))) : RandomTexts(random);
    default:
        return RandomRecord(random, depth);
    }
}

QString RandomText(Random& random)
{
    if (random.OneIn(200))
        return "3" + QString(QChar(0));
    return random.OneIn(3) ? QString::number(random.Below(4)) : QString::fromUtf8(random.Of(Texts));
}

QString Describe(const QVariant& value)
{
    if (!value.isValid())
        return "-";
    return QString(value.typeName()) + " " + DescribeContent(value);
}
