#include "DataLayer/memorydatapeer.h"

#include <QSet>
#include <QThread>

#include "DataLayer/idataobserver.h"

MemoryDataPeer::MemoryDataPeer() { }

MemoryDataPeer::~MemoryDataPeer()
{
    qDeleteAll(m_variables);
}

QVariant MemoryDataPeer::GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const Variable* const variable = m_variables.value(identifier);
    return variable && variable->value.isValid() ? variable->value : defaultValue;
}

bool MemoryDataPeer::ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                                 QFlags<IDataPeer::ChangeValueFlag> flags)
{
    Variable* variable = nullptr;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        variable = Find(identifier);
        // QVariant alone calls a text and a number equal; to a statement they differ.
        const bool changed = variable->value.userType() != value.userType() || variable->value != value;
        variable->value = value;
        if (!changed && !flags.testFlag(ForceNotification))
            return true;
    }
    Notify(identifier, variable);
    return true;
}

bool MemoryDataPeer::AddObserver(const VariableIdentifier& identifier, IDataObserver* observer)
{
    if (!observer)
        return false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    Variable* const variable = Find(identifier);
    QList<Variable*>& observed = m_subscriptions[observer];
    if (!observed.contains(variable)) {
        observed.append(variable);
        variable->observers.append(observer);
    }
    return true;
}

void MemoryDataPeer::RemoveObserver(IDataObserver* observer)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const QList<Variable*> observed = m_subscriptions.take(observer);
    for (int i = 0; i < observed.count(); ++i)
        observed.at(i)->observers.removeOne(observer);

    const Qt::HANDLE thread = QThread::currentThreadId();
    m_removals.insert(thread, observer);
    while (MustWait(observer, thread))
        m_callEnded.wait(lock);
    m_removals.remove(thread);
}

bool MemoryDataPeer::AddReference(const VariableIdentifier& identifier)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Find(identifier);
    return true;
}

MemoryDataPeer::Variable* MemoryDataPeer::Find(const VariableIdentifier& identifier)
{
    Variable*& variable = m_variables[identifier];
    if (!variable)
        variable = new Variable;
    return variable;
}

void MemoryDataPeer::Notify(const VariableIdentifier& identifier, Variable* variable)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const QList<IDataObserver*> observers = variable->observers;
    for (int i = 0; i < observers.count(); ++i) {
        const Call call = {observers.at(i), QThread::currentThreadId()};
        // It may have been removed, and destroyed, while the ones before it were called.
        if (!m_subscriptions.value(call.observer).contains(variable))
            continue;
        m_calls.append(call);
        lock.unlock();
        call.observer->OnNotify(identifier);
        lock.lock();
        EndCall(call);
    }
}

void MemoryDataPeer::EndCall(const Call& call)
{
    int last = m_calls.count() - 1;
    while (m_calls.at(last).observer != call.observer || m_calls.at(last).thread != call.thread)
        --last;
    m_calls.removeAt(last);
    if (!m_removals.isEmpty())
        m_callEnded.notify_all();
}

bool MemoryDataPeer::MustWait(IDataObserver* observer, Qt::HANDLE thread) const
{
    for (int i = 0; i < m_calls.count(); ++i) {
        const Call& call = m_calls.at(i);
        if (call.observer == observer && call.thread != thread && !WaitsFor(call.thread, thread))
            return true;
    }
    return false;
}

bool MemoryDataPeer::WaitsFor(Qt::HANDLE waiting, Qt::HANDLE thread) const
{
    QSet<Qt::HANDLE> seen;
    QList<Qt::HANDLE> open;
    open.append(waiting);
    while (!open.isEmpty()) {
        const Qt::HANDLE current = open.takeLast();
        if (current == thread)
            return true;
        if (seen.contains(current) || !m_removals.contains(current))
            continue;
        seen.insert(current);
        for (int i = 0; i < m_calls.count(); ++i) {
            if (m_calls.at(i).observer == m_removals.value(current) && m_calls.at(i).thread != current)
                open.append(m_calls.at(i).thread);
        }
    }
    return false;
}
