#include "DeclarationHandler/binaryexpression.h"

BinaryExpression::BinaryExpression(IExpression* left, IExpression* right, bool readOnly)
    : Expression(readOnly), m_left(left), m_right(right)
{
}

BinaryExpression::~BinaryExpression()
{
    delete m_left;
    delete m_right;
}
