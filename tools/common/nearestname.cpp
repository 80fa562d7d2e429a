#include "common/nearestname.h"

#include <algorithm>
#include <limits>

namespace {

const int LettersPerEdit = 3;
/// Nobody mistypes longer ones by a letter, and comparing two takes time in proportion to its square.
const int LongestName = 64;

/// Whether the letters before \a i and \a j are two neighbours that changed places.
bool IsSwap(const QString& left, int i, const QString& right, int j)
{
    return i > 1 && j > 1 && left.at(i - 1) == right.at(j - 2) && left.at(i - 2) == right.at(j - 1);
}

int CountEdits(const QString& left, const QString& right)
{
    if (left.size() > LongestName || right.size() > LongestName)
        return std::numeric_limits<int>::max();
    // Of the first i letters on the left and the first j on the right.
    int edits[LongestName + 1][LongestName + 1];
    for (int i = 0; i <= left.size(); ++i) {
        for (int j = 0; j <= right.size(); ++j) {
            edits[i][j] = i + j;
            if (i == 0 || j == 0)
                continue;
            const int replacing = left.at(i - 1) == right.at(j - 1) ? 0 : 1;
            edits[i][j] = std::min({edits[i - 1][j] + 1, edits[i][j - 1] + 1, edits[i - 1][j - 1] + replacing});
            if (IsSwap(left, i, right, j))
                edits[i][j] = std::min(edits[i][j], edits[i - 2][j - 2] + 1);
        }
    }
    return edits[left.size()][right.size()];
}

} // namespace

QString NearestName::Find(const QString& name) const
{
    const QString folded = name.toCaseFolded();
    int fewest = std::max(1, int(name.size()) / LettersPerEdit) + 1;
    QString nearest;
    for (const QString& candidate : m_names) {
        if (candidate == name || qAbs(candidate.size() - name.size()) >= fewest)
            continue;
        const int edits = CountEdits(folded, candidate.toCaseFolded());
        if (edits < fewest) {
            fewest = edits;
            nearest = candidate;
        }
    }
    return nearest;
}

QString NearestName::FindOnly(const QString& name) const
{
    const QString nearest = Find(name);
    QStringList others = m_names;
    others.removeAll(nearest);
    return NearestName(others).Find(name).isEmpty() ? nearest : QString();
}

QString NearestName::Hint(const QString& name) const
{
    const QString nearest = Find(name);
    return nearest.isEmpty() ? QString() : QString("; did you mean \"%1\"?").arg(nearest);
}
