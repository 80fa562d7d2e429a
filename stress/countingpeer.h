#ifndef COUNTINGPEER_H
#define COUNTINGPEER_H

#include <QHash>
#include <QThread>

#include <atomic>
#include <memory>
#include <vector>

#include "DataLayer/idataobserver.h"
#include "DataLayer/memorydatapeer.h"

/// The data layer in memory, with somebody who counts between it and its observers.
class CountingPeer : public IDataPeer
{
public:
    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override
    {
        if (QThread::currentThread() == m_gui)
            ++m_reads;
        return m_peer.GetValue(identifier, defaultValue);
    }

    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value, ChangeValueFlags flags) override
    {
        return m_peer.ChangeValue(identifier, value, flags);
    }

    /// Of each observer one variable.
    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override
    {
        m_relays[observer] = new Relay(observer);
        return m_peer.AddObserver(identifier, m_relays[observer]);
    }

    void RemoveObserver(IDataObserver* observer) override
    {
        Relay* const relay = m_relays.take(observer);
        if (!relay)
            return;
        m_peer.RemoveObserver(relay);
        relay->m_removed = true;
        m_removed.emplace_back(relay);
    }

    bool AddReference(const VariableIdentifier& identifier) override { return m_peer.AddReference(identifier); }

    /// Reads in the thread that made this.
    qint64 Reads() const { return m_reads; }

    int Observers() const { return m_relays.size(); }

    /// Notifications of the observers that are there now.
    qint64 Notifications() const
    {
        qint64 count = 0;
        for (const Relay* const relay : m_relays)
            count += relay->m_calls;
        return count;
    }

    /// Notifications that end after the removal of their observer.
    qint64 LateNotifications() const
    {
        qint64 count = 0;
        for (const auto& relay : m_removed)
            count += relay->m_lateCalls;
        return count;
    }

private:
    /// Outlives its observer, so that a late call is counted and does no harm.
    class Relay : public IDataObserver
    {
    public:
        explicit Relay(IDataObserver* observer) : m_observer(observer) {}

        void OnNotify(const VariableIdentifier& identifier) override
        {
            if (m_removed.load(std::memory_order_relaxed)) {
                m_lateCalls.fetch_add(1, std::memory_order_relaxed);
                return;
            }
            m_calls.fetch_add(1, std::memory_order_relaxed);
            m_observer->OnNotify(identifier);
            // Whoever removes an observer is to wait for its calls.
            m_lateCalls.fetch_add(m_removed.load(std::memory_order_relaxed), std::memory_order_relaxed);
        }

        IDataObserver* const m_observer;
        std::atomic<qint64> m_calls{0};
        std::atomic<qint64> m_lateCalls{0};
        std::atomic<bool> m_removed{false};
    };

    MemoryDataPeer m_peer;
    QThread* const m_gui = QThread::currentThread();
    qint64 m_reads = 0;
    QHash<IDataObserver*, Relay*> m_relays;
    std::vector<std::unique_ptr<Relay>> m_removed;
};

#endif
