#ifndef VARIABLES_H
#define VARIABLES_H

#include <QHash>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <vector>

/// What hand-written code names a variable by. Not the library's own class, so that the floors stay what
/// they are when that one is made faster.
struct DataName
{
    QString name;
    QString package;
};

inline bool operator==(const DataName& left, const DataName& right)
{
    return left.name == right.name && left.package == right.package;
}

inline uint qHash(const DataName& name, uint seed = 0)
{
    return qHash(name.name, seed) ^ (qHash(name.package, seed) * 31u);
}

Q_DECLARE_METATYPE(DataName)

/// One variable that statements read.
struct Variable
{
    DataName name;
    QString script; ///< Its name in JavaScript: a global one, or "object.member".
    QVariant value;
};

using Variables = std::vector<Variable>;

#endif
