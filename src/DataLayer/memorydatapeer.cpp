#include "DataLayer/memorydatapeer.h"

#include <QSet>
#include <QThread>

#include <algorithm>

#include "Common/qtcompat.h"
#include "DataLayer/idataobserver.h"

namespace {

bool AreSame(const QVariant& left, const QVariant& right);

bool AreSame(const QVariantList& left, const QVariantList& right)
{
    int i = 0;
    while (i < left.count() && i < right.count() && AreSame(left.at(i), right.at(i)))
        ++i;
    return i == left.count() && i == right.count();
}

/// QVariant alone calls a text and a number equal, which differ to a statement, and two numbers that are
/// nearly so, which would let a slow drift go unnoticed.
bool AreSame(const QVariant& left, const QVariant& right)
{
    if (left.userType() != right.userType())
        return false;
    switch (left.userType()) {
    case QMetaType::Double:
        return left.toDouble() == right.toDouble();
    case QMetaType::QVariantList:
        return AreSame(left.toList(), right.toList());
    case QMetaType::QVariantMap: {
        const QVariantMap leftMap = left.toMap();
        const QVariantMap rightMap = right.toMap();
        return leftMap.keys() == rightMap.keys() && AreSame(leftMap.values(), rightMap.values());
    }
    default:
        return QtCompat::AreEqual(left, right);
    }
}

} // namespace

MemoryDataPeer::MemoryDataPeer() : m_removalCount(0) {}

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
    // Swapped, so that comparing and destroying a host's own types happens outside the lock.
    QVariant previous = value;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        variable = Find(identifier);
        qSwap(variable->value, previous);
    }
    if (!AreSame(previous, value) || flags.testFlag(ForceNotification))
        Notify(identifier, variable);
    return true;
}

bool MemoryDataPeer::AddObserver(const VariableIdentifier& identifier, IDataObserver* observer)
{
    if (!observer)
        return false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    Variable* const variable = Find(identifier);
    Variables& observed = m_subscriptions[observer];
    if (std::find(observed.constBegin(), observed.constEnd(), variable) == observed.constEnd()) {
        observed.append(variable);
        variable->observers.append(observer);
    }
    return true;
}

void MemoryDataPeer::RemoveObserver(IDataObserver* observer)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const Variables observed = m_subscriptions.take(observer);
    for (int i = 0; i < observed.count(); ++i)
        observed.at(i)->observers.removeOne(observer);

    if (m_calls.isEmpty())
        return;
    const Qt::HANDLE thread = QThread::currentThreadId();
    const Removal removal = {observer, ++m_removalCount};
    m_removals.insert(thread, removal);
    while (MustWait(removal, thread))
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

// By value: an observer may destroy the identifier that ChangeValue() was given.
void MemoryDataPeer::Notify(VariableIdentifier identifier, Variable* variable)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    const QList<IDataObserver*> observers = variable->observers;
    const Qt::HANDLE thread = QThread::currentThreadId();
    for (int i = 0; i < observers.count(); ++i) {
        const Call call = {observers.at(i), thread};
        // It may have been removed, and destroyed, while the ones before it were called.
        if (!variable->observers.isSharedWith(observers) && !variable->observers.contains(call.observer))
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
    m_calls.remove(last);
    if (!m_removals.isEmpty())
        m_callEnded.notify_all();
}

bool MemoryDataPeer::MustWait(const Removal& removal, Qt::HANDLE thread) const
{
    for (int i = 0; i < m_calls.count(); ++i) {
        const Call& call = m_calls.at(i);
        if (call.observer == removal.observer && call.thread != thread && !WaitsFor(call.thread, thread, removal))
            return true;
    }
    return false;
}

// Whether the thread \a waiting waits, through any number of others, for \a thread. Only removals that
// began before \a removal count: of those in a circle the youngest alone gives way.
bool MemoryDataPeer::WaitsFor(Qt::HANDLE waiting, Qt::HANDLE thread, const Removal& removal) const
{
    QSet<Qt::HANDLE> seen;
    QList<Qt::HANDLE> open;
    open.append(waiting);
    while (!open.isEmpty()) {
        const Qt::HANDLE current = open.takeLast();
        if (current == thread)
            return true;
        const Removal next = m_removals.value(current);
        if (seen.contains(current) || !next.observer || next.number > removal.number)
            continue;
        seen.insert(current);
        for (int i = 0; i < m_calls.count(); ++i) {
            if (m_calls.at(i).observer == next.observer && m_calls.at(i).thread != current)
                open.append(m_calls.at(i).thread);
        }
    }
    return false;
}
