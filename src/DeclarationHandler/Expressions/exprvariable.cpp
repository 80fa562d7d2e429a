#include "DeclarationHandler/Expressions/exprvariable.h"

#include "DataLayer/idatapeer.h"

ExprVariable::ExprVariable(IDataPeer* dataPeer, const VariableIdentifier& identifier, IDataObserver* observer,
                           bool readOnly)
    : Expression(readOnly), m_dataPeer(dataPeer), m_identifier(identifier)
{
    if (observer)
        m_dataPeer->AddObserver(m_identifier, observer);
    else
        m_dataPeer->AddReference(m_identifier);
}

QVariant ExprVariable::Retrieve() const
{
    static const QVariant none;
    return m_dataPeer->GetValue(m_identifier, none);
}

bool ExprVariable::Store(const QVariant& value)
{
    if (m_readOnly)
        return false;
    // A copy: whoever is notified may delete this node.
    const VariableIdentifier identifier = m_identifier;
    m_dataPeer->ChangeValue(identifier, value, IDataPeer::ChangeValueFlags());
    return true;
}
