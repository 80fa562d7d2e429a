#include "DeclarationHandler/Expressions/Logic/exprnot.h"

#include "Common/qtcompat.h"

ExprNot::ExprNot(IExpression* expression, bool readOnly) : AtomicExpression(expression, readOnly) {}

QVariant ExprNot::Retrieve() const
{
    return !QtCompat::ToBool(m_expression->Retrieve());
}

bool ExprNot::Store(const QVariant& value)
{
    return !m_readOnly && m_expression->Store(!QtCompat::ToBool(value));
}
