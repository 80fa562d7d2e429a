#ifndef QTCOMPAT_H
#define QTCOMPAT_H

#include <QByteArray>
#include <QMetaProperty>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariant>

#if QT_VERSION < 0x060000
#include <QRegExp>
#endif

/// The places where versions of Qt differ. Nothing else in the library asks for the version of Qt.
///
/// The language lives on what a QVariant of Qt 5.15 does; where Qt 6 does something else, it is done here
/// as Qt 5.15 did. With Qt 4.8 and 5 these functions are the calls of QVariant of the same meaning. Types are
/// given by the numbers of QMetaType.
namespace QtCompat {

/// The 8-bit form under which Qt knows a property.
inline QByteArray ToAscii(const QString& text)
{
#if QT_VERSION >= 0x050000
    return text.toLatin1();
#else
    return text.toAscii();
#endif
}

#if QT_VERSION >= 0x060000

/// What the groups of a regular expression take from the text, the whole match first; nothing without a match.
/// To it a word consists of letters, digits, marks and «_».
QStringList Capture(const QString& pattern, const QString& text);

/// Whether \a value converts to the type with that number, a user type's number included.
bool CanConvert(const QVariant& value, int type);
/// Makes \a value one of that type. False, with a default value in it, where it does not convert.
bool Convert(QVariant* value, int type);
/// Whether the values are equal, where needed after the right one is converted to the type of the left one
/// or, if it does not convert, the other way round.
bool AreEqual(const QVariant& left, const QVariant& right);
/// Whether the value is invalid, was made without a content, or has a content that calls itself null.
bool IsNull(const QVariant& value);
/// As the functions of QVariant called "to".
bool ToBool(const QVariant& value);
double ToDouble(const QVariant& value);
int ToInt(const QVariant& value, bool* ok);
QString ToString(const QVariant& value);
QVariantList ToList(const QVariant& value);

/// The property's value, a number for one of an enumeration or of flags.
QVariant ReadProperty(const QMetaProperty& property, const QObject* object);
/// The same of a property of that name, declared or not.
QVariant ReadProperty(const QByteArray& name, const QObject* object);
/// Writes the property, after converting the value to its type. False where it does not convert.
bool WriteProperty(const QMetaProperty& property, QObject* object, const QVariant& value);

/// What is written to the debug stream for the type of a value.
struct ShownType
{
    const char* name;
};
QDebug operator<<(QDebug stream, const ShownType& type);
ShownType TypeOf(const QVariant& value);

inline bool IsRegistered(const char* typeName)
{
    return QMetaType::fromName(typeName).isValid();
}

#else

inline QStringList Capture(const QString& pattern, const QString& text)
{
    QRegExp expression(pattern, Qt::CaseSensitive, QRegExp::RegExp);
    return expression.indexIn(text, 0) < 0 ? QStringList() : expression.capturedTexts();
}

inline bool Convert(QVariant* value, int type)
{
#if QT_VERSION >= 0x050000
    return value->convert(type);
#else
    return value->convert(static_cast<QVariant::Type>(type));
#endif
}

inline bool CanConvert(const QVariant& value, int type)
{
#if QT_VERSION >= 0x050000
    return value.canConvert(type);
#else
    return value.canConvert(static_cast<QVariant::Type>(type));
#endif
}

inline bool AreEqual(const QVariant& left, const QVariant& right)
{
    return left == right;
}

inline bool IsNull(const QVariant& value)
{
    return value.isNull();
}

inline bool ToBool(const QVariant& value)
{
    return value.toBool();
}

inline double ToDouble(const QVariant& value)
{
    return value.toDouble();
}

inline int ToInt(const QVariant& value, bool* ok)
{
    return value.toInt(ok);
}

inline QString ToString(const QVariant& value)
{
    return value.toString();
}

inline QVariantList ToList(const QVariant& value)
{
    return value.toList();
}

inline QVariant ReadProperty(const QMetaProperty& property, const QObject* object)
{
    return property.read(object);
}

inline QVariant ReadProperty(const QByteArray& name, const QObject* object)
{
    return object->property(name);
}

inline bool WriteProperty(const QMetaProperty& property, QObject* object, const QVariant& value)
{
    return property.write(object, value);
}

inline QVariant::Type TypeOf(const QVariant& value)
{
    return value.type();
}

inline bool IsRegistered(const char* typeName)
{
    return QMetaType::type(typeName) != 0;
}

#endif

} // namespace QtCompat

/// A signal and a slot as QObject::connect() takes them: by address, which is found at once, or in Qt 4
/// by name. \a arguments is their list in parentheses.
#if QT_VERSION >= 0x050000
// NOLINTBEGIN(bugprone-macro-parentheses): lists of parameters are no expressions.
#define QTCOMPAT_SIGNAL(Class, name, arguments) static_cast<void(Class::*) arguments>(&Class::name)
#define QTCOMPAT_SLOT(Result, Class, name, arguments) static_cast<Result(Class::*) arguments>(&Class::name)
// NOLINTEND(bugprone-macro-parentheses)
#else
#define QTCOMPAT_SIGNAL(Class, name, arguments) SIGNAL(name arguments)
#define QTCOMPAT_SLOT(Result, Class, name, arguments) SLOT(name arguments)
#endif

#endif
