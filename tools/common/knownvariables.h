#ifndef KNOWNVARIABLES_H
#define KNOWNVARIABLES_H

#include "common/jsondata.h"
#include "common/nearestname.h"

/// The variables that there are, to look others up in.
class KnownVariables
{
public:
    /// The data must outlive this object.
    explicit KnownVariables(const JsonData& data);

    /// Null when there is none.
    const Variable* Find(const QString& package, const QString& name) const { return m_data.Find(package, name); }
    /// «; did you mean "..."?» for a variable that does not exist, or nothing.
    QString Hint(const QString& package, const QString& name) const;
    /// The variable of the package that is meant, where no other is near; else nothing.
    QString OnlyNear(const QString& package, const QString& name) const;

private:
    const JsonData& m_data;
    QHash<QString, NearestName> m_names; ///< By package.
    QHash<QString, QString> m_packages;  ///< The first package with a variable of that name.
    NearestName m_packageNames;
};

#endif
