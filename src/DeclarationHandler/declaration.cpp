#include "DeclarationHandler/declaration.h"

#include "DeclarationHandler/iexpression.h"

Declaration::Declaration(IExpression* condition, QObject* activeObject)
    : m_condition(condition), m_activeObject(activeObject)
{
}

Declaration::~Declaration()
{
    delete m_condition;
}

QObject* Declaration::GetActiveObject() const
{
    return m_activeObject;
}

void Declaration::SetCondition(IExpression* condition)
{
    if (condition == m_condition)
        return;
    delete m_condition;
    m_condition = condition;
}

bool Declaration::Update()
{
    return Update(true);
}
