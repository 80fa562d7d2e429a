#include "common/nearestname.h"

#include <QVarLengthArray>

#include <algorithm>

namespace {

quint64 Letters(const QString& name)
{
    quint64 letters = 0;
    for (const QChar character : name)
        letters |= quint64(1) << (character.toCaseFolded().unicode() % 64);
    return letters;
}

int CommonStart(const QString& left, const QString& right)
{
    int length = 0;
    while (length < left.size() && length < right.size() && left.at(length) == right.at(length))
        ++length;
    return length;
}

using Row = QVarLengthArray<int, 64>;

/// The rows of the table of distances between all starts of two texts, each from the two before it. Only
/// what lies within the limit from the diagonal is computed; the rest is beyond it.
class DistanceTable
{
public:
    DistanceTable(const QStringRef& left, const QStringRef& right, int limit)
        : m_left(left),
          m_right(right),
          m_limit(limit),
          m_rows{Row(right.size() + 1), Row(right.size() + 1), Row(right.size() + 1)}
    {
        for (int j = 0; j <= right.size(); ++j)
            m_rows[0][j] = qMin(j, limit + 1);
    }

    int Distance()
    {
        for (int i = 1; i <= m_left.size(); ++i) {
            if (FillRow(i) > m_limit)
                return m_limit + 1;
        }
        return m_rows[m_left.size() % 3].last();
    }

private:
    /// Answers the smallest number in the row.
    int FillRow(int i)
    {
        Row& row = m_rows[i % 3];
        std::fill(row.begin(), row.end(), m_limit + 1);
        row[0] = qMin(i, m_limit + 1);
        int smallest = row.at(0);
        for (int j = qMax(1, i - m_limit); j <= qMin(m_right.size(), i + m_limit); ++j) {
            row[j] = qMin(Cell(i, j), m_limit + 1);
            smallest = qMin(smallest, row.at(j));
        }
        return smallest;
    }

    int Cell(int i, int j) const
    {
        const Row& row = m_rows[i % 3];
        const Row& last = m_rows[(i + 2) % 3];
        const bool same = m_left.at(i - 1) == m_right.at(j - 1);
        const int distance = qMin(qMin(last.at(j), row.at(j - 1)) + 1, last.at(j - 1) + (same ? 0 : 1));
        const bool swapped
            = i > 1 && j > 1 && m_left.at(i - 1) == m_right.at(j - 2) && m_left.at(i - 2) == m_right.at(j - 1);
        return swapped ? qMin(distance, m_rows[(i + 1) % 3].at(j - 2) + 1) : distance;
    }

    const QStringRef m_left;
    const QStringRef m_right;
    const int m_limit;
    Row m_rows[3];
};

} // namespace

NearestName::NearestName(const QStringList& names)
{
    for (const QString& name : names)
        m_candidates.append({name, name.toCaseFolded(), Letters(name)});
}

QString NearestName::Find(const QString& name) const
{
    const QString folded = name.toCaseFolded();
    const quint64 letters = Letters(name);
    int limit = qMax(1, name.size() / 3);
    QString nearest;
    for (const Candidate& candidate : m_candidates) {
        // One edit changes at most two letters of the set.
        if (qAbs(candidate.folded.size() - folded.size()) > limit
            || int(qPopulationCount(candidate.letters ^ letters)) > 2 * limit || candidate.name == name)
            continue;
        const int distance = Distance(folded, candidate.folded, limit);
        if (distance <= limit) {
            nearest = candidate.name;
            limit = distance - 1;
        }
        if (limit < 0)
            break;
    }
    return nearest;
}

QString NearestName::FindOnly(const QString& name) const
{
    const QString nearest = Find(name);
    QStringList others;
    for (const Candidate& candidate : m_candidates) {
        if (candidate.name != nearest)
            others.append(candidate.name);
    }
    return NearestName(others).Find(name).isEmpty() ? nearest : QString();
}

QString NearestName::Hint(const QString& name) const
{
    const QString nearest = Find(name);
    return nearest.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(nearest);
}

int NearestName::Distance(const QString& left, const QString& right, int limit)
{
    const int start = CommonStart(left, right);
    return DistanceTable(left.midRef(start), right.midRef(start), limit).Distance();
}
