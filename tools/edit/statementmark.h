#ifndef STATEMENTMARK_H
#define STATEMENTMARK_H

#include <QString>

#include "Common/textplace.h"
#include "common/checks.h"

/// Something found in a statement.
struct StatementMark
{
    TextPlace place; ///< In the statement.
    Severity severity = Severity::Note;
    QString message;
    QString fix; ///< What belongs in the place, where that is certain; else empty.

    bool operator==(const StatementMark& other) const
    {
        return place.offset == other.place.offset && place.length == other.place.length && severity == other.severity
            && message == other.message && fix == other.fix;
    }
};

#endif
