#ifndef CHANGEGATHERER_H
#define CHANGEGATHERER_H

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class WatchedVariable;

/// Gathers changes from any thread, and asks for a delivery of all of them from the event loop of the thread
/// that it was made in: once, with the next turn or, after a delivery, not before the interval has passed.
class ChangeGatherer : public QObject
{
public:
    typedef std::vector<std::shared_ptr<WatchedVariable>> Variables;

    /// \a deliver is called for each delivery; it may delete this.
    explicit ChangeGatherer(std::function<void()> deliver);

    /// From any thread, as is Schedule(). A variable is added once until it is taken.
    void Add(const std::shared_ptr<WatchedVariable>& variable);
    void Schedule();

    /// Whether anything has changed since the last time.
    bool HasChanges();
    /// There was nothing to deliver.
    void Skip();
    /// What has changed since the last time. The interval counts from now on.
    Variables Take();

    /// In milliseconds; a time that is being waited for is taken anew.
    void SetInterval(int interval);

    /// No delivery is asked for any more.
    void Close();

protected:
    bool event(QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    void DeliverInTime();

    std::function<void()> m_deliver;
    int m_interval = 0;
    QElapsedTimer m_lastDelivery;
    QBasicTimer m_timer;

    std::mutex m_mutex; ///< Guards what follows.
    Variables m_changed;
    bool m_isScheduled = false; ///< The event is posted, or the timer runs.
};

#endif
