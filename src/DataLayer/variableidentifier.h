#ifndef VARIABLEIDENTIFIER_H
#define VARIABLEIDENTIFIER_H

#include <QHash>
#include <QMetaType>
#include <QString>

#include <cstring>

/// Names one data variable: a name within a package. Names and packages are case-sensitive, and a
/// null text equals an empty one. A plain value; copies may be used in different threads.
class VariableIdentifier
{
public:
    /// Empty name and package; the meta-type system needs it.
    VariableIdentifier() : m_hash(HashOf(QString(), QString())) {}
    /// Texts are taken as they are, of any length.
    VariableIdentifier(const QString& name, const QString& package)
        : m_name(name), m_package(package), m_hash(HashOf(name, package))
    {
    }

    /// The name within the package.
    QString GetName() const { return m_name; }
    /// The package; empty for variables that stand in none.
    QString GetPackage() const { return m_package; }

private:
    friend bool operator==(const VariableIdentifier& left, const VariableIdentifier& right);
    friend bool operator<(const VariableIdentifier& left, const VariableIdentifier& right);
    friend uint qHash(const VariableIdentifier& identifier);

    // Identifiers of one variable often share their texts.
    static bool AreSame(const QString& left, const QString& right)
    {
        return left.size() == right.size()
            && (left.constData() == right.constData()
                || std::memcmp(left.constData(), right.constData(), left.size() * sizeof(QChar)) == 0);
    }
    static uint HashOf(const QString& name, const QString& package) { return 31 * qHash(package) + qHash(name); }

    QString m_name;
    QString m_package;
    uint m_hash; ///< Kept, since identifiers are made once and looked up for as long as the form lives.
};

/// Whether name and package are equal.
inline bool operator==(const VariableIdentifier& left, const VariableIdentifier& right)
{
    return left.m_hash == right.m_hash && VariableIdentifier::AreSame(left.m_name, right.m_name)
        && VariableIdentifier::AreSame(left.m_package, right.m_package);
}

/// Whether name or package differ.
inline bool operator!=(const VariableIdentifier& left, const VariableIdentifier& right)
{
    return !(left == right);
}

/// Orders by package, then by name.
inline bool operator<(const VariableIdentifier& left, const VariableIdentifier& right)
{
    if (left.m_package == right.m_package)
        return left.m_name < right.m_name;
    return left.m_package < right.m_package;
}

/// For QHash and QSet.
inline uint qHash(const VariableIdentifier& identifier)
{
    return identifier.m_hash;
}

Q_DECLARE_METATYPE(VariableIdentifier)

#endif
