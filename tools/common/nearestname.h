#ifndef NEARESTNAME_H
#define NEARESTNAME_H

#include <QStringList>

/// Finds the name that was probably meant by one that does not exist.
class NearestName
{
public:
    NearestName() = default;
    explicit NearestName(const QStringList& names) : m_names(names) {}

    /// The name that takes the fewest edits, of equal ones the first: inserting, deleting or replacing a
    /// letter, or swapping two neighbours; upper and lower case are alike. Empty when none takes at most one
    /// edit for three letters, and for names of more than 64 letters.
    QString Find(const QString& name) const;
    /// As Find(), but nothing where several are near, however much.
    QString FindOnly(const QString& name) const;
    /// «; did you mean "..."?», or nothing.
    QString Hint(const QString& name) const;

private:
    QStringList m_names;
};

#endif
