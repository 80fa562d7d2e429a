#ifndef WATCHEDVARIABLE_H
#define WATCHEDVARIABLE_H

#include <QVariant>

#include <atomic>
#include <memory>
#include <unordered_map>
#include <vector>

#include "DataLayer/idataobserver.h"
#include "DataLayer/variableidentifier.h"
#include "DeclarationForms/variablecache.h"

class ChangeGatherer;
class FormVariable;
class IDataPeer;
class WatchedVariables;

/// A variable that statements of a form read, with the one subscription for all of them.
class WatchedVariable : public IDataObserver, public std::enable_shared_from_this<WatchedVariable>
{
public:
    /// The peer may be null: then the variable has no value and takes none.
    WatchedVariable(IDataPeer* peer, const VariableIdentifier& identifier, WatchedVariables* owner);

    /// Once before the first change is to be heard of.
    void Subscribe();
    /// After this OnNotify() is not called any more.
    void Unsubscribe();

    const VariableIdentifier& Identifier() const { return m_identifier; }
    IDataPeer* Peer() const { return m_peer; }
    /// While a delivery reads, what it has read, unless it has changed since.
    QVariant Read() const;
    bool Write(const QVariant& value);

    void OnNotify(const VariableIdentifier& identifier) override;
    /// From now on a change is a new one.
    void Forget() { m_isGathered = false; }
    /// Whether it may have another value than at the last delivery.
    bool MayHaveChanged() const { return m_isGathered || !m_isObserved; }

    std::vector<FormVariable*> readers; ///< In the thread of the widgets.

private:
    const VariableIdentifier m_identifier;
    IDataPeer* const m_peer;
    WatchedVariables* const m_owner; ///< It need not exist any more once this is not subscribed.
    std::atomic<bool> m_isGathered{false};
    bool m_isObserved = false; ///< The peer answered that it would tell.
};

/// The variables of a form. In the thread of the widgets.
class WatchedVariables
{
public:
    explicit WatchedVariables(ChangeGatherer* gatherer) : m_gatherer(gatherer) {}

    ChangeGatherer* Gatherer() const { return m_gatherer; }
    VariableCache* Cache() { return &m_cache; }

    /// The variable, subscribed to as long as it has readers.
    WatchedVariable* Find(IDataPeer* peer, const VariableIdentifier& identifier);
    static void Add(WatchedVariable* variable, FormVariable* reader);
    void Remove(WatchedVariable* variable, FormVariable* reader);
    /// Forgets a variable that was found and has no reader.
    void Discard(const WatchedVariable& variable);
    /// Deletes what was forgotten; nodes may have used it until now.
    void Release() { m_discarded.clear(); }

private:
    typedef std::pair<IDataPeer*, VariableIdentifier> Key;
    struct KeyHash
    {
        std::size_t operator()(const Key& key) const { return qHash(key.second) ^ std::hash<IDataPeer*>()(key.first); }
    };

    ChangeGatherer* const m_gatherer;
    VariableCache m_cache;
    std::unordered_map<Key, std::shared_ptr<WatchedVariable>, KeyHash> m_variables;
    std::vector<std::shared_ptr<WatchedVariable>> m_discarded;
};

#endif
