#ifndef IEXPRESSION_H
#define IEXPRESSION_H

#include <QVariant>

#include "DeclarationHandler/declarationhandler_export.h"

/// One node of the tree that a statement is parsed into. Trees live on the heap; a node owns its
/// children, so deleting the root deletes the tree. Both operations belong in the thread of the
/// objects that the tree reads.
class DECLARATIONHANDLER_EXPORT IExpression
{
public:
    virtual ~IExpression() {}

    /// The node's value, computed afresh at each call; invalid when none can be formed.
    virtual QVariant Retrieve() const = 0;

    /// Sends \a value back to where the node's own value comes from. True when it was passed on, false
    /// when the node refused it or its destination did.
    virtual bool Store(const QVariant& value) = 0;
};

#endif
