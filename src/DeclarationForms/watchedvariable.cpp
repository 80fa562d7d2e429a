#include "DeclarationForms/watchedvariable.h"

#include <utility>

#include "DataLayer/idatapeer.h"
#include "DeclarationForms/changegatherer.h"
#include "DeclarationForms/formreferences.h"

WatchedVariable::WatchedVariable(IDataPeer* peer, const VariableIdentifier& identifier, WatchedVariables* owner)
    : m_identifier(identifier), m_peer(peer), m_owner(owner)
{
}

void WatchedVariable::Subscribe()
{
    m_isObserved = m_peer && m_peer->AddObserver(m_identifier, this);
}

void WatchedVariable::Unsubscribe()
{
    m_owner->Cache()->Forget(this);
    m_isObserved = false;
    if (m_peer)
        m_peer->RemoveObserver(this);
}

QVariant WatchedVariable::Read() const
{
    static const QVariant none;
    if (!m_peer)
        return none;
    if (MayHaveChanged())
        return m_peer->GetValue(m_identifier, none);
    VariableCache* const cache = m_owner->Cache();
    if (const QVariant* const known = cache->Find(this))
        return *known;
    const QVariant value = m_peer->GetValue(m_identifier, none);
    // The host's peer may have run anything.
    if (!MayHaveChanged())
        cache->Put(this, value);
    return value;
}

bool WatchedVariable::Write(const QVariant& value)
{
    const bool isTaken = m_peer && m_peer->ChangeValue(m_identifier, value, IDataPeer::ChangeValueFlags());
    // Its peer may tell later.
    if (m_isObserved)
        m_owner->Cache()->Forget(this);
    return isTaken;
}

void WatchedVariable::OnNotify(const VariableIdentifier&)
{
    if (!m_isGathered.exchange(true))
        m_owner->Gatherer()->Add(shared_from_this());
}

WatchedVariable* WatchedVariables::Find(IDataPeer* peer, const VariableIdentifier& identifier)
{
    std::shared_ptr<WatchedVariable>& variable = m_variables[Key(peer, identifier)];
    if (!variable)
        variable = std::make_shared<WatchedVariable>(peer, identifier, this);
    return variable.get();
}

void WatchedVariables::Add(WatchedVariable* variable, FormVariable* reader)
{
    reader->SetIndex(variable->readers.size());
    variable->readers.push_back(reader);
    if (variable->readers.size() == 1)
        variable->Subscribe();
}

void WatchedVariables::Remove(WatchedVariable* variable, FormVariable* reader)
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
    const auto known = m_variables.find(Key(variable.Peer(), variable.Identifier()));
    if (!variable.readers.empty() || known == m_variables.end())
        return;
    m_discarded.push_back(std::move(known->second));
    m_variables.erase(known);
}
