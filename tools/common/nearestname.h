#ifndef NEARESTNAME_H
#define NEARESTNAME_H

#include <QStringList>
#include <QVector>

/// Finds the name that was probably meant by one that does not exist.
class NearestName
{
public:
    NearestName() = default;
    explicit NearestName(const QStringList& names);

    /// The name with the smallest edit distance, of equal ones the first; empty when none is near: up
    /// to a third of the letters may differ, and any in upper and lower case.
    QString Find(const QString& name) const;
    /// As Find(), but nothing where several are near, however much.
    QString FindOnly(const QString& name) const;
    /// «; did you mean "..."?», or nothing.
    QString Hint(const QString& name) const;

    /// How many letters must be inserted, deleted, replaced or swapped with their neighbour; \a limit + 1
    /// when it is more than \a limit.
    static int Distance(const QString& left, const QString& right, int limit);

private:
    struct Candidate
    {
        QString name;
        QString folded;  ///< Without upper case.
        quint64 letters; ///< A bit for each letter that occurs, which rules out most names at once.
    };

    QVector<Candidate> m_candidates;
};

#endif
