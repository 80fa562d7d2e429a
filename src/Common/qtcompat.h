#ifndef QTCOMPAT_H
#define QTCOMPAT_H

#include <QByteArray>
#include <QString>
#include <QVariant>

/// The places where Qt 4.8 and Qt 5 are written differently. Nothing else in the library asks for
/// the version of Qt.
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

/// Whether \a value converts to the type with that number, a user type's number included.
inline bool CanConvert(const QVariant& value, int userType)
{
#if QT_VERSION >= 0x050000
    return value.canConvert(userType);
#else
    return value.canConvert(static_cast<QVariant::Type>(userType));
#endif
}

/// Makes \a value one of the type with that number. False, with a default value in it, where it is none.
inline bool Convert(QVariant* value, int userType)
{
#if QT_VERSION >= 0x060000
    return value->convert(QMetaType(userType));
#elif QT_VERSION >= 0x050000
    return value->convert(userType);
#else
    return value->convert(static_cast<QVariant::Type>(userType));
#endif
}

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
