#ifndef EXPRESSION_H
#define EXPRESSION_H

#include "DeclarationHandler/iexpression.h"

/// The base of all nodes: it keeps whether the node may be written through.
class DECLARATIONHANDLER_EXPORT Expression : public IExpression
{
public:
    /// A read-only node refuses Store() and has no effect then.
    explicit Expression(bool readOnly);

protected:
    bool m_readOnly; ///< Whether Store() refuses.

private:
    Q_DISABLE_COPY(Expression)
};

#endif
