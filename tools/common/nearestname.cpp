#include "common/nearestname.h"

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

/// The next row of the table of distances between all starts of two texts. \a i is at least 1.
QVector<int> NextRow(const QVector<int>& beforeLast, const QVector<int>& last, const QString& left, int i,
                     const QString& right)
{
    QVector<int> row(last.size());
    row[0] = i;
    for (int j = 1; j < row.size(); ++j) {
        const bool same = left.at(i - 1) == right.at(j - 1);
        row[j] = qMin(qMin(last.at(j), row.at(j - 1)) + 1, last.at(j - 1) + (same ? 0 : 1));
        if (i > 1 && j > 1 && left.at(i - 1) == right.at(j - 2) && left.at(i - 2) == right.at(j - 1))
            row[j] = qMin(row.at(j), beforeLast.at(j - 2) + 1);
    }
    return row;
}

} // namespace

NearestName::NearestName(const QStringList& names)
{
    for (const QString& name : names)
        m_candidates.append({name, Letters(name)});
}

QString NearestName::Find(const QString& name) const
{
    const quint64 letters = Letters(name);
    int limit = qMax(1, name.size() / 3);
    QString nearest;
    for (const Candidate& candidate : m_candidates) {
        // One edit changes at most two letters of the set.
        if (qAbs(candidate.name.size() - name.size()) > limit
            || int(qPopulationCount(candidate.letters ^ letters)) > 2 * limit || candidate.name == name)
            continue;
        const int distance = Distance(name, candidate.name, limit);
        if (distance <= limit) {
            nearest = candidate.name;
            limit = distance - 1;
        }
        if (limit < 0)
            break;
    }
    return nearest;
}

QString NearestName::Hint(const QString& name) const
{
    const QString nearest = Find(name);
    return nearest.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(nearest);
}

int NearestName::Distance(const QString& left, const QString& right, int limit)
{
    const int start = CommonStart(left, right);
    const QString from = left.mid(start).toCaseFolded();
    const QString to = right.mid(start).toCaseFolded();

    QVector<int> beforeLast;
    QVector<int> last(to.size() + 1);
    for (int j = 0; j < last.size(); ++j)
        last[j] = j;
    for (int i = 1; i <= from.size(); ++i) {
        const QVector<int> row = NextRow(beforeLast, last, from, i, to);
        if (*std::min_element(row.begin(), row.end()) > limit)
            return limit + 1;
        beforeLast = last;
        last = row;
    }
    return qMin(last.last(), limit + 1);
}
