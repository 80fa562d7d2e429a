#ifndef ROWRANGES_H
#define ROWRANGES_H

#include <QVector>

#include <algorithm>

/// Calls \a announce(first, last) for each run of neighbouring rows. A row may come more than once.
template<typename Announce>
void ForEachRange(QVector<int> rows, Announce announce)
{
    std::sort(rows.begin(), rows.end());
    for (int first = 0, next = 0; first < rows.size(); first = next) {
        for (++next; next < rows.size() && rows.at(next) <= rows.at(next - 1) + 1;)
            ++next;
        announce(rows.at(first), rows.at(next - 1));
    }
}

#endif
