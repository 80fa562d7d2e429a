#ifndef VALUEGENERATOR_H
#define VALUEGENERATOR_H

#include <QString>
#include <QVariant>
#include <QVector>

/// What stands in a data file for a variable that moves: { "$ramp": { "from": 0, "to": 100, "seconds": 10 } }.
///
/// Its value depends on the time alone, so that the same time always shows the same.
class ValueGenerator
{
public:
    /// Whether the value is an object with a single member whose name starts with "$" and which holds an object,
    /// or a member with the name of a generator. Nothing else counts as one.
    static bool IsMeant(const QVariantMap& object);

    /// False, with the reason in \a error, when the object is no sound generator. \a name is the variable's: two
    /// of "$random" differ by it.
    bool Read(const QVariantMap& object, const QString& name, QString* error);

    /// "ramp", "sine", "random" or "toggle".
    QString Kind() const;
    /// The object that was read.
    QVariantMap Object() const { return m_object; }
    /// The value so many seconds after the start, 0 or more. Its type never changes but with the values of
    /// "$toggle".
    QVariant Value(double seconds) const;

private:
    double Position(double seconds) const;
    QVariant Number(double value) const;

    QVariantMap m_object;
    double m_from = 0;
    double m_to = 0;
    double m_seconds = 1;
    int m_decimals = 0;
    bool m_back = false;
    QVector<uint> m_seeds;
    QVariantList m_values;
};

#endif
