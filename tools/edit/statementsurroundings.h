#ifndef STATEMENTSURROUNDINGS_H
#define STATEMENTSURROUNDINGS_H

#include "common/statementtokens.h"

/// What a statement can read where it stands.
class StatementSurroundings
{
public:
    virtual ~StatementSurroundings() = default;

    /// The objects that a widget path can lead to, as «TopWidget\panel».
    virtual QStringList Paths() const = 0;
    /// The properties of the object that such a path leads to.
    virtual QStringList Properties(const QString& path) const = 0;
    /// The variables that there are, as a statement names them: «rpm», «@Engine:rpm».
    virtual QStringList Variables() const = 0;
    /// What is known of what a statement reads, its type and its value, in one line; empty for nothing.
    virtual QString Describe(const Reference& reference) const = 0;
};

#endif
