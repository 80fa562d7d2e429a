#ifndef QTVERSION_H
#define QTVERSION_H

#include <QDataStream>
#include <QIODevice>
#include <QLibraryInfo>
#include <QMetaType>
#include <QTextStream>
#include <QVariant>

#if QT_VERSION >= 0x060000
#include <QStringConverter>
#else
#include <QTextCodec>
#endif

/// The places where Qt 5 and Qt 6 are written differently, for all that stands outside src/.
namespace QtVersion {

/// A null value of the type with that number.
inline QVariant NullOf(int type)
{
#if QT_VERSION >= 0x060000
    return QVariant(QMetaType(type));
#else
    return QVariant(static_cast<QVariant::Type>(type));
#endif
}

/// Makes it a value of the type with that number. False, with a value that is undefined, when it is none.
inline bool Convert(QVariant* value, int type)
{
#if QT_VERSION >= 0x060000
    return value->convert(QMetaType(type));
#else
    return value->convert(type);
#endif
}

/// Whether a value of its type can become one of the type with that number.
inline bool CanConvert(const QVariant& value, int type)
{
#if QT_VERSION >= 0x060000
    return value.canConvert(QMetaType(type));
#else
    return value.canConvert(type);
#endif
}

/// The number of a type; 0 for a name that is not registered.
inline int TypeNumber(const char* name)
{
#if QT_VERSION >= 0x060000
    return QMetaType::fromName(name).id();
#else
    return QMetaType::type(name);
#endif
}

/// Makes values of a host's own type compare by what they hold. Qt 6 does so without.
template<typename Value>
bool RegisterComparison()
{
#if QT_VERSION >= 0x060000
    return true;
#else
    return QMetaType::registerEqualsComparator<Value>();
#endif
}

/// Where moc, rcc and their like of this Qt are.
inline QString ToolsFolder()
{
#if QT_VERSION >= 0x060000
    return QLibraryInfo::path(QLibraryInfo::LibraryExecutablesPath);
#else
    return QLibraryInfo::location(QLibraryInfo::BinariesPath);
#endif
}

/// Makes a stream write UTF-8.
inline void UseUtf8(QTextStream& stream)
{
#if QT_VERSION >= 0x060000
    stream.setEncoding(QStringConverter::Utf8);
#else
    stream.setCodec("UTF-8");
#endif
}

/// Writes what \a value holds, without its type. False for a type that cannot be written.
inline bool Save(QDataStream& stream, const QVariant& value)
{
#if QT_VERSION >= 0x060000
    return value.metaType().save(stream, value.constData());
#else
    return QMetaType::save(stream, value.userType(), value.constData());
#endif
}

/// The text of a file, by its byte order mark, or else in the encoding of that name, or else in UTF-8.
inline QString Decode(const QByteArray& content, const QByteArray& encoding)
{
#if QT_VERSION >= 0x060000
    const auto marked = QStringConverter::encodingForData(content);
    const auto named = QStringConverter::encodingForName(encoding.constData());
    QStringDecoder decoder(marked.value_or(named.value_or(QStringConverter::Utf8)));
    return decoder(content);
#else
    QTextCodec* const named = QTextCodec::codecForName(encoding);
    return QTextCodec::codecForUtfText(content, named ? named : QTextCodec::codecForName("UTF-8"))->toUnicode(content);
#endif
}

} // namespace QtVersion

#endif
