#include "DeclarationHandler/atomicexpression.h"

AtomicExpression::AtomicExpression(IExpression* expression, bool readOnly)
    : Expression(readOnly), m_expression(expression)
{
}

AtomicExpression::~AtomicExpression()
{
    delete m_expression;
}
