#ifndef MEMORYDATAPEER_H
#define MEMORYDATAPEER_H

#include <QHash>
#include <QList>
#include <QVarLengthArray>
#include <QVector>

#include <condition_variable>
#include <mutex>

#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"

/// A data layer in memory, for hosts that bring none: variables that live as long as the process.
///
/// A write that leaves type and value as they were notifies nobody, unless it is forced. Writing an
/// invalid value empties the variable. An observer is called once for each change, in the order of
/// subscription, however often it was added for the same variable.
///
/// No lock is held while an observer runs. Two observers that each wait, from inside OnNotify(), for
/// the other one's removal would wait for ever; the one that would close such a circle does not wait.
class MemoryDataPeer : public IDataPeer
{
public:
    MemoryDataPeer();
    ~MemoryDataPeer() override;

    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override;
    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                     QFlags<IDataPeer::ChangeValueFlag> flags) override;
    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override;
    void RemoveObserver(IDataObserver* observer) override;
    bool AddReference(const VariableIdentifier& identifier) override;

private:
    Q_DISABLE_COPY(MemoryDataPeer)

    struct Variable
    {
        QVariant value;
        QList<IDataObserver*> observers;
    };

    /// Few statements read more variables than that.
    typedef QVarLengthArray<Variable*, 3> Variables;

    /// A call of OnNotify() that has started and not yet returned.
    struct Call
    {
        IDataObserver* observer;
        Qt::HANDLE thread;
    };

    /// A RemoveObserver() that is running.
    struct Removal
    {
        IDataObserver* observer;
        quint64 number; ///< Later ones have higher numbers.
    };

    Variable* Find(const VariableIdentifier& identifier);
    void Notify(VariableIdentifier identifier, Variable* variable);
    void EndCall(const Call& call);
    bool MustWait(const Removal& removal, Qt::HANDLE thread) const;
    bool WaitsFor(Qt::HANDLE waiting, Qt::HANDLE thread, const Removal& removal) const;

    std::mutex m_mutex; ///< Guards everything below.
    std::condition_variable m_callEnded;
    QHash<VariableIdentifier, Variable*> m_variables; ///< Owned; entries never go away.
    QHash<IDataObserver*, Variables> m_subscriptions; ///< What each observer observes.
    QVector<Call> m_calls;                            ///< Running now, in all threads.
    QHash<Qt::HANDLE, Removal> m_removals;            ///< By the thread that waits.
    quint64 m_removalCount;
};

#endif
