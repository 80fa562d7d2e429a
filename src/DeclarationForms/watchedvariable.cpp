#include "DeclarationForms/watchedvariable.h"

#include <algorithm>
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
    m_isObserved = false;
    if (m_peer)
        m_peer->RemoveObserver(this);
}

QVariant WatchedVariable::Read()
{
    static const QVariant none;
    if (!m_peer)
        return none;
    const quint64 reading = MayHaveChanged() ? 0 : m_owner->Reading();
    if (reading != 0 && reading == m_reading)
        return m_value;
    QVariant value = m_peer->GetValue(m_identifier, none);
    // The host's peer may have run anything.
    if (reading != 0 && !MayHaveChanged() && reading == m_owner->Reading()) {
        m_value = value;
        m_reading = reading;
    }
    return value;
}

bool WatchedVariable::Write(const QVariant& value)
{
    const bool isTaken = m_peer && m_peer->ChangeValue(m_identifier, value, IDataPeer::ChangeValueFlags());
    // The peer may tell later.
    m_reading = 0;
    return isTaken;
}

void WatchedVariable::OnNotify(const VariableIdentifier&)
{
    if (!m_isGathered.exchange(true))
        m_owner->Gatherer()->Add(shared_from_this());
}

WatchedVariable* WatchedVariables::Find(IDataPeer* peer, const VariableIdentifier& identifier)
{
    auto known = Position(peer, identifier);
    if (known == m_variables.end())
        known = m_variables.emplace(qHash(identifier), std::make_shared<WatchedVariable>(peer, identifier, this));
    return known->second.get();
}

WatchedVariables::Variables::iterator WatchedVariables::Position(const IDataPeer* peer,
                                                                 const VariableIdentifier& identifier)
{
    const auto range = m_variables.equal_range(qHash(identifier));
    const auto known = std::find_if(range.first, range.second, [&](const Variables::value_type& variable) {
        return variable.second->Peer() == peer && variable.second->Identifier() == identifier;
    });
    return known == range.second ? m_variables.end() : known;
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
    const auto known = Position(variable.Peer(), variable.Identifier());
    if (!variable.readers.empty() || known == m_variables.end())
        return;
    m_discarded.push_back(std::move(known->second));
    m_variables.erase(known);
}

WatchedVariables::Reader::Reader(WatchedVariables* variables)
    : m_variables(*variables), m_isInner(variables->m_reading != 0)
{
    m_variables.m_reading = ++m_variables.m_lastReading;
}

/// One that runs around it goes on with what this has read.
WatchedVariables::Reader::~Reader()
{
    if (!m_isInner)
        m_variables.m_reading = 0;
}
