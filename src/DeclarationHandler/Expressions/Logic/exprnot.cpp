#include "DeclarationHandler/Expressions/Logic/exprnot.h"

ExprNot::ExprNot(IExpression* expression, bool readOnly) : AtomicExpression(expression, readOnly) {}

QVariant ExprNot::Retrieve() const
{
    return !m_expression->Retrieve().toBool();
}

bool ExprNot::Store(const QVariant& value)
{
    return !m_readOnly && m_expression->Store(!value.toBool());
}
