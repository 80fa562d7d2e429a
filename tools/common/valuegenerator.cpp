#include "common/valuegenerator.h"

#include <QRandomGenerator>
#include <QStringList>
#include <QtMath>

#include <cmath>
#include <limits>

namespace {

const char* const Ramp = "$ramp";
const char* const Sine = "$sine";
const char* const Random = "$random";
const char* const Toggle = "$toggle";

const double MinSeconds = 0.01;
const double MaxSeconds = 1e6;
/// Up to which every whole number is a double.
const double MaxNumber = 9007199254740992.0;
const int DefaultDecimals = 2;
const int MaxDecimals = 9;

/// The members that a kind of generator has, each by itself.
QStringList MembersOf(const QString& kind)
{
    if (kind == Toggle)
        return {"seconds", "values"};
    QStringList members{"from", "to", "seconds", "decimals"};
    if (kind == Ramp)
        members.append("back");
    if (kind == Random)
        members.append("seed");
    return members;
}

bool IsNumber(const QVariant& value)
{
    return value.userType() == QMetaType::Int || value.userType() == QMetaType::LongLong
        || value.userType() == QMetaType::Double;
}

/// Takes the members out of a generator and notes the first that is wrong.
class MemberReader
{
public:
    MemberReader(const QString& kind, const QVariantMap& members) : m_kind(kind), m_members(members)
    {
        const QStringList known = MembersOf(kind);
        for (auto it = members.begin(); it != members.end(); ++it) {
            if (!known.contains(it.key()))
                Refuse(QString("knows no \"%1\"; it has \"%2\"").arg(it.key(), known.join("\", \"")));
        }
    }

    QString Error() const { return m_error; }

    double Number(const QString& name, double least, double most)
    {
        const QVariant value = m_members.value(name);
        const double number = value.toDouble();
        if (!IsNumber(value) || number < least || number > most)
            Refuse(QString("wants \"%1\", a number from %2 to %3").arg(name).arg(least).arg(most));
        return number;
    }

    int Whole(const QString& name, int defaultValue, int most)
    {
        const QVariant value = m_members.value(name, defaultValue);
        if (value.userType() != QMetaType::Int || value.toInt() < 0 || value.toInt() > most)
            Refuse(QString("wants \"%1\", a whole number from 0 to %2").arg(name).arg(most));
        return value.toInt();
    }

    bool Truth(const QString& name)
    {
        const QVariant value = m_members.value(name, false);
        if (value.userType() != QMetaType::Bool)
            Refuse(QString("wants \"%1\", true or false").arg(name));
        return value.toBool();
    }

    QVariantList List(const QString& name, const QVariantList& defaultValue)
    {
        const QVariant value = m_members.value(name, defaultValue);
        if (value.userType() != QMetaType::QVariantList || value.toList().size() < 2)
            Refuse(QString("wants \"%1\", a list of two values or more").arg(name));
        return value.toList();
    }

private:
    void Refuse(const QString& reason)
    {
        if (m_error.isEmpty())
            m_error = QString("\"%1\" %2").arg(m_kind, reason);
    }

    const QString m_kind;
    const QVariantMap m_members;
    QString m_error;
};

bool IsKind(const QString& name)
{
    return name == Ramp || name == Sine || name == Random || name == Toggle;
}

} // namespace

bool ValueGenerator::IsMeant(const QVariantMap& object)
{
    return object.size() == 1 && object.firstKey().startsWith('$')
        && (object.first().userType() == QMetaType::QVariantMap || IsKind(object.firstKey()));
}

bool ValueGenerator::Read(const QVariantMap& object, const QString& name, QString* error)
{
    const QString& kind = object.firstKey();
    if (!IsKind(kind)) {
        *error = QString("there is no generator \"%1\"; there are \"$ramp\", \"$sine\", \"$random\" and \"$toggle\"")
                     .arg(kind);
        return false;
    }
    m_object = object;
    if (object.first().userType() != QMetaType::QVariantMap) {
        *error = QString("\"%1\" wants an object with \"%2\"").arg(kind, MembersOf(kind).join("\", \""));
        return false;
    }
    MemberReader reader(kind, object.first().toMap());
    m_seconds = reader.Number("seconds", MinSeconds, MaxSeconds);
    if (kind == Toggle) {
        m_values = reader.List("values", {false, true});
    } else {
        m_from = reader.Number("from", -MaxNumber, MaxNumber);
        m_to = reader.Number("to", -MaxNumber, MaxNumber);
        m_decimals = reader.Whole("decimals", DefaultDecimals, MaxDecimals);
        m_back = reader.Truth("back");
        m_seeds = name.toUcs4();
        m_seeds.append(uint(reader.Whole("seed", 0, std::numeric_limits<int>::max())));
    }
    *error = reader.Error();
    return error->isEmpty();
}

QString ValueGenerator::Kind() const
{
    return m_object.firstKey().mid(1);
}

QVariant ValueGenerator::Value(double seconds) const
{
    if (m_object.firstKey() == Toggle)
        return m_values.at(int(std::fmod(std::floor(seconds / m_seconds), m_values.size())));
    return Number(m_from + (m_to - m_from) * Position(seconds));
}

/// Between "from", which is 0, and "to", which is 1.
double ValueGenerator::Position(double seconds) const
{
    const double periods = seconds / m_seconds;
    const double rest = periods - std::floor(periods);
    if (m_object.firstKey() == Ramp)
        return m_back && std::fmod(std::floor(periods), 2) == 1 ? 1 - rest : rest;
    if (m_object.firstKey() == Sine)
        return (1 - std::cos(2 * M_PI * rest)) / 2;
    QVector<uint> seeds = m_seeds;
    seeds.append(uint(std::fmod(periods, std::numeric_limits<uint>::max())));
    return QRandomGenerator(seeds.constData(), seeds.size()).generateDouble();
}

QVariant ValueGenerator::Number(double value) const
{
    if (m_decimals > 0) {
        const double factor = std::pow(10, m_decimals);
        return std::round(value * factor) / factor;
    }
    const qlonglong whole = std::llround(value);
    const bool fits = qMax(std::abs(m_from), std::abs(m_to)) < std::numeric_limits<int>::max();
    return fits ? QVariant(int(whole)) : QVariant(whole);
}
