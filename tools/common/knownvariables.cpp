#include "common/knownvariables.h"

#include "common/statementtokens.h"

KnownVariables::KnownVariables(const JsonData& data) : m_data(data)
{
    QHash<QString, QStringList> names;
    for (const Variable& variable : data.Variables()) {
        names[variable.package].append(variable.name);
        if (!m_packages.contains(variable.name))
            m_packages.insert(variable.name, variable.package);
    }
    for (auto it = names.constBegin(); it != names.constEnd(); ++it)
        m_names.insert(it.key(), NearestName(StatementTokens::Readable(it.value())));
    m_packageNames = NearestName(names.keys());
}

QString KnownVariables::Hint(const QString& package, const QString& name) const
{
    const QString hint = m_names.value(package).Hint(name);
    if (!hint.isEmpty())
        return hint;
    const QString nearestPackage = m_packageNames.Find(package);
    const QString other = Find(nearestPackage, name) ? nearestPackage : m_packages.value(name);
    return other.isEmpty() ? QString() : QString("; did you mean \"@%1:%2\"?").arg(other, name);
}

QString KnownVariables::OnlyNear(const QString& package, const QString& name) const
{
    return m_names.value(package).FindOnly(name);
}
