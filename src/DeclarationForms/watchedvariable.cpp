#include "DeclarationForms/watchedvariable.h"

#include "DataLayer/idatapeer.h"
#include "DeclarationForms/changegatherer.h"
#include "DeclarationForms/formreferences.h"

WatchedVariable::WatchedVariable(IDataPeer* peer, const VariableIdentifier& identifier, ChangeGatherer* gatherer)
    : m_identifier(identifier), m_peer(peer), m_gatherer(gatherer)
{
}

void WatchedVariable::Subscribe()
{
    m_isObserved = m_peer && m_peer->AddObserver(m_identifier, this);
}

void WatchedVariable::Unsubscribe()
{
    if (m_peer)
        m_peer->RemoveObserver(this);
}

QVariant WatchedVariable::Read() const
{
    static const QVariant none;
    return m_peer ? m_peer->GetValue(m_identifier, none) : QVariant();
}

bool WatchedVariable::Write(const QVariant& value)
{
    return m_peer && m_peer->ChangeValue(m_identifier, value, IDataPeer::ChangeValueFlags());
}

void WatchedVariable::OnNotify(const VariableIdentifier&)
{
    if (!m_isGathered.exchange(true))
        m_gatherer->Add(shared_from_this());
}

std::shared_ptr<WatchedVariable> WatchedVariables::Find(IDataPeer* peer, const VariableIdentifier& identifier)
{
    std::weak_ptr<WatchedVariable>& known = m_variables[Key(peer, identifier)];
    std::shared_ptr<WatchedVariable> variable = known.lock();
    if (!variable) {
        variable = std::make_shared<WatchedVariable>(peer, identifier, m_gatherer);
        known = variable;
    }
    return variable;
}

void WatchedVariables::Add(const std::shared_ptr<WatchedVariable>& variable, FormVariable* reader)
{
    reader->SetIndex(variable->readers.size());
    variable->readers.push_back(reader);
    if (variable->readers.size() == 1)
        variable->Subscribe();
}

void WatchedVariables::Remove(const std::shared_ptr<WatchedVariable>& variable, FormVariable* reader)
{
    std::vector<FormVariable*>& readers = variable->readers;
    readers.back()->SetIndex(reader->Index());
    readers[reader->Index()] = readers.back();
    readers.pop_back();
    if (!readers.empty())
        return;
    Discard(*variable);
    variable->Unsubscribe();
}

void WatchedVariables::Discard(const WatchedVariable& variable)
{
    if (variable.readers.empty())
        m_variables.erase(Key(variable.Peer(), variable.Identifier()));
}
