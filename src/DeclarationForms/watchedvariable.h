#ifndef WATCHEDVARIABLE_H
#define WATCHEDVARIABLE_H

#include <QVariant>

#include <atomic>
#include <memory>
#include <unordered_map>
#include <vector>

#include "DataLayer/idataobserver.h"
#include "DataLayer/variableidentifier.h"

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
    /// What it holds. While a delivery reads it is asked for once, unless it changes meanwhile.
    QVariant Read();
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
    QVariant m_value;          ///< As it was read last.
    quint64 m_reading = 0;     ///< In which of the owner's that was; 0 for none.
};

/// The variables of a form. In the thread of the widgets.
class WatchedVariables
{
public:
    explicit WatchedVariables(ChangeGatherer* gatherer) : m_gatherer(gatherer) {}

    ChangeGatherer* Gatherer() const { return m_gatherer; }
    /// The number of the reading that runs; 0 for none.
    quint64 Reading() const { return m_reading; }

    /// The variable, subscribed to as long as it has readers.
    WatchedVariable* Find(IDataPeer* peer, const VariableIdentifier& identifier);
    static void Add(WatchedVariable* variable, FormVariable* reader);
    void Remove(WatchedVariable* variable, FormVariable* reader);
    /// Forgets a variable that was found and has no reader.
    void Discard(const WatchedVariable& variable);
    /// Deletes what was forgotten; nodes may have used it until now.
    void Release() { m_discarded.clear(); }

    /// While one lives, what the variables hold is read once. What was read before it is not known any more.
    class Reader
    {
    public:
        explicit Reader(WatchedVariables* variables);
        ~Reader();

    private:
        Q_DISABLE_COPY(Reader)

        WatchedVariables& m_variables;
        const bool m_isInner;
    };

private:
    typedef std::unordered_multimap<uint, std::shared_ptr<WatchedVariable>> Variables;

    Variables::iterator Position(const IDataPeer* peer, const VariableIdentifier& identifier);

    ChangeGatherer* const m_gatherer;
    quint64 m_reading = 0;
    quint64 m_lastReading = 0;
    Variables m_variables; ///< By their identifiers' hashes: each names itself, and there are thousands.
    std::vector<std::shared_ptr<WatchedVariable>> m_discarded;
};

#endif
