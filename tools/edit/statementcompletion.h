#ifndef STATEMENTCOMPLETION_H
#define STATEMENTCOMPLETION_H

#include "common/statementtokens.h"

class StatementSurroundings;

/// What can stand where a statement is being typed.
struct StatementCompletion
{
    TextPlace place;   ///< What has been typed of it.
    QStringList words; ///< Whole words for the place, that start with what stands there.

    /// At \a offset of the statement. \a surroundings may be null.
    static StatementCompletion At(const QString& statement, int offset, const StatementSurroundings* surroundings);
};

#endif
