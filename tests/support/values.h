#ifndef VALUES_H
#define VALUES_H

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTest>
#include <vector>

/// A value and its type as one text: 2 is an int, 2.0 a double, '2' a text, - an invalid value.
/// (QVariant itself takes the text "2" and both numbers for equal.)
inline QString Exact(const QVariant& value)
{
    const int type = value.userType();
    if (type == QMetaType::Double) {
        const QString text = QString::number(value.toDouble(), 'g', 17);
        return text.contains(QRegularExpression("[.en]")) ? text : text + ".0";
    }
    if (type == QMetaType::QString)
        return "'" + value.toString() + "'";
    if (type == QMetaType::Bool || type == QMetaType::Int || type == QMetaType::UnknownType)
        return value.isValid() ? value.toString() : "-";
    QStringList parts;
    for (const QVariant& element : value.toList())
        parts << Exact(element);
    for (const QString& key : value.toMap().keys())
        parts << "'" + key + "': " + Exact(value.toMap().value(key));
    if (type == QMetaType::QVariantMap)
        return "{" + parts.join(", ") + "}";
    return (type == QMetaType::QVariantList ? "" : value.typeName()) + ("[" + parts.join(", ") + "]");
}

/// Turns texts that start with the mark into numbers, in lists and maps too.
inline QVariant WithNumbers(const QVariant& value, QChar mark)
{
    const QString text = value.toString();
    if (value.userType() == QMetaType::Nullptr)
        return QVariant();
    if (text.startsWith(mark))
        return text.contains(QRegularExpression("[.eE]")) ? QVariant(text.mid(1).toDouble()) : text.mid(1).toInt();
    QVariantList list = value.toList();
    for (QVariant& element : list)
        element = WithNumbers(element, mark);
    QVariantMap map = value.toMap();
    for (QVariant& entry : map)
        entry = WithNumbers(entry, mark);
    return value.userType() == QMetaType::QVariantList ? list
        : value.userType() == QMetaType::QVariantMap   ? QVariant(map)
                                                       : value;
}

/// Values in JSON, with commas between them. Numbers without point and exponent are int, others double:
/// QJsonDocument makes no such difference, so they pass through it as marked texts.
inline QVariantList FromJson(QString json)
{
    const QChar mark(0xe000);
    // What stands in quotes is skipped.
    static const QRegularExpression number(R"re("(?:[^"\\]|\\.)*"(*SKIP)(*FAIL)|(-?\d[\d.eE+-]*))re");
    json.replace(number, "\"" + QString(mark) + "\\1\"");
    return WithNumbers(QJsonDocument::fromJson("[" + json.toUtf8() + "]").array().toVariantList(), mark).toList();
}

/// The same with single quotes, and with "-" for an invalid value.
inline QVariantList Operands(QString text)
{
    return FromJson(text.replace('\'', '"').replace(QRegularExpression("(^|, )-(?=,|$)"), "\\1null"));
}

/// Fills a test's table from groups of rows «given => expected»; each row bears its whole text as name.
inline void Rows(const std::vector<std::vector<const char*>>& groups)
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("expected");
    for (const auto& group : groups) {
        for (const QString row : group)
            QTest::newRow(qPrintable(row)) << row.section(" => ", 0, 0) << row.section(" => ", 1);
    }
}

#endif
