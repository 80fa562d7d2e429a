#ifndef ATOMICEXPRESSION_H
#define ATOMICEXPRESSION_H

#include "DeclarationHandler/expression.h"

/// The base of nodes with one operand.
class DECLARATIONHANDLER_EXPORT AtomicExpression : public Expression
{
public:
    /// Takes ownership of the operand.
    AtomicExpression(IExpression* expression, bool readOnly);
    ~AtomicExpression() override;

protected:
    IExpression* m_expression; ///< The operand, owned; the nodes of the language never have a null one.
};

#endif
