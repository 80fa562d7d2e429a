#ifndef FUZZING_H
#define FUZZING_H

#include <QByteArray>
#include <QDate>
#include <QSize>
#include <QStringList>
#include <QUrl>
#include <QVariant>

#include <cstdio>
#include <cstdlib>
#include <limits>

#include "Common/variantobject.h"
#include "qtversion.h"

/// What the targets share. A target is one function, which a fuzzer, or replay.cpp, calls for each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

/// Ends the process, which is a finding, where a rule does not hold.
inline void Require(bool holds, const char* rule)
{
    if (holds)
        return;
    std::fprintf(stderr, "Does not hold: %s\n", rule);
    std::abort();
}

/// An input, which is read line by line.
class Input
{
public:
    Input(const uint8_t* data, size_t size)
        : m_rest(QByteArray::fromRawData(reinterpret_cast<const char*>(data), static_cast<int>(size)))
    {
    }

    bool AtEnd() const { return m_rest.isEmpty(); }
    QByteArray TakeRest() { return Take(m_rest.size()); }
    QByteArray TakeLine()
    {
        const int end = m_rest.indexOf('\n');
        return end < 0 ? TakeRest() : Take(end + 1).chopped(1);
    }

private:
    QByteArray Take(int length)
    {
        const QByteArray taken(m_rest.constData(), length);
        m_rest = m_rest.mid(length);
        return taken;
    }

    QByteArray m_rest;
};

/// A value of a type that \a choice decides: texts and numbers at their limits, collections, records, and
/// types that the language does not know.
inline QVariant ChosenValue(uchar choice)
{
    const auto record = [] {
        VariantObject object;
        object.setProperty("k", "field");
        return object.ToVariant();
    };
    static const QVariantMap map = {{"k", QVariantList{1, "two", QVariantMap{{"k", 3}}}}, {"", "%1"}};
    static const QVariantList values = {QVariant(),
                                        QString(),
                                        "",
                                        "text",
                                        "12",
                                        "%1 %2",
                                        "TRUE",
                                        1,
                                        0,
                                        -7,
                                        std::numeric_limits<int>::min(),
                                        3u,
                                        std::numeric_limits<qint64>::max(),
                                        std::numeric_limits<quint64>::max(),
                                        0.5,
                                        1e300,
                                        -0.0,
                                        std::numeric_limits<double>::quiet_NaN(),
                                        std::numeric_limits<double>::infinity(),
                                        1.5f,
                                        true,
                                        false,
                                        QStringList{"a", "b"},
                                        QVariantList{map, 2.0, QVariant()},
                                        map,
                                        QVariantHash(),
                                        record(),
                                        QByteArray("12"),
                                        QChar('x'),
                                        QDate(2026, 11, 24),
                                        QUrl("file:///x"),
                                        QSize(3, 2),
                                        QtVersion::NullOf(QMetaType::QVariantList),
                                        QtVersion::NullOf(QMetaType::Int),
                                        QVariant::fromValue<QObject*>(nullptr)};
    return values.at(choice % values.size());
}

/// Messages are composed, and then dropped.
inline void SilenceMessages()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
}

#endif
