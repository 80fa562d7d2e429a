#ifndef WRITERS_H
#define WRITERS_H

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"

const int VariableCount = 100;
const int WriterCount = 8;

inline VariableIdentifier Variable(int number)
{
    return VariableIdentifier("v" + QString::number(number), "p");
}

/// Threads that write when they are told how much. Counted without ordering their writes, which would hide races.
class Writers
{
public:
    explicit Writers(IDataPeer* peer) : m_peer(*peer)
    {
        for (int i = 0; i < WriterCount; ++i)
            m_threads.emplace_back([this, i] { Run(i); });
    }

    void Start(qint64 writes) { m_granted.fetch_add(writes, std::memory_order_relaxed); }
    bool AreIdle() const { return m_done.load(std::memory_order_acquire) == m_granted.load(std::memory_order_relaxed); }
    qint64 Writes() const { return m_done; }
    int LastValue(int variable) const { return m_lastValues[variable]; }

    void End()
    {
        m_end = true;
        for (std::thread& thread : m_threads)
            thread.join();
    }

private:
    bool TakeWrite()
    {
        qint64 taken = m_taken.load(std::memory_order_relaxed);
        return taken < m_granted.load(std::memory_order_relaxed)
            && m_taken.compare_exchange_strong(taken, taken + 1, std::memory_order_relaxed);
    }

    // Each writer has variables of its own.
    void Run(int writer)
    {
        for (int value = 1; !m_end.load(std::memory_order_relaxed);) {
            if (!TakeWrite()) {
                std::this_thread::sleep_for(std::chrono::microseconds(50));
                continue;
            }
            const int variable = writer + WriterCount * (value % (VariableCount / WriterCount));
            m_lastValues[variable].store(value, std::memory_order_relaxed);
            m_peer.ChangeValue(Variable(variable), value++, IDataPeer::NoFlag);
            m_done.fetch_add(1, std::memory_order_release);
        }
    }

    IDataPeer& m_peer;
    std::atomic<qint64> m_granted{0};
    std::atomic<qint64> m_taken{0};
    std::atomic<qint64> m_done{0};
    std::atomic<bool> m_end{false};
    std::atomic<int> m_lastValues[VariableCount] = {};
    std::vector<std::thread> m_threads; ///< Last, since they use the rest.
};

#endif
