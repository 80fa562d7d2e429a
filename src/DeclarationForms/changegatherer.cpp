#include "DeclarationForms/changegatherer.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

#include <utility>

#include "DeclarationForms/watchedvariable.h"

ChangeGatherer::ChangeGatherer(std::function<void()> deliver) : m_deliver(std::move(deliver)) {}

void ChangeGatherer::Add(const std::shared_ptr<WatchedVariable>& variable)
{
    bool wasScheduled = false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_changed.push_back(variable);
        wasScheduled = std::exchange(m_isScheduled, true);
    }
    if (!wasScheduled)
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void ChangeGatherer::Schedule()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (std::exchange(m_isScheduled, true))
            return;
    }
    QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

ChangeGatherer::Variables ChangeGatherer::Take()
{
    m_timer.stop();
    m_lastDelivery.start();
    Variables changed;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        changed.swap(m_changed);
        m_isScheduled = false;
    }
    // Before a value is read: a change from now on is one for the next delivery.
    for (const std::shared_ptr<WatchedVariable>& variable : changed)
        variable->Forget();
    return changed;
}

bool ChangeGatherer::HasChanges()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_changed.empty();
}

void ChangeGatherer::Skip()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isScheduled = !m_changed.empty();
    if (m_isScheduled)
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void ChangeGatherer::SetInterval(int interval)
{
    m_interval = qMax(0, interval);
    if (m_timer.isActive())
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    m_timer.stop();
}

void ChangeGatherer::Close()
{
    m_timer.stop();
    m_deliver = nullptr;
    QCoreApplication::removePostedEvents(this);
}

bool ChangeGatherer::event(QEvent* event)
{
    if (event->type() != QEvent::User)
        return QObject::event(event);
    DeliverInTime();
    return true;
}

void ChangeGatherer::timerEvent(QTimerEvent*)
{
    m_timer.stop();
    DeliverInTime();
}

void ChangeGatherer::DeliverInTime()
{
    {
        // A delivery on request may have come first.
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_isScheduled || !m_deliver)
            return;
    }
    const qint64 elapsed = m_lastDelivery.isValid() ? m_lastDelivery.elapsed() : m_interval;
    if (elapsed < m_interval) {
        m_timer.start(static_cast<int>(m_interval - elapsed), Qt::PreciseTimer, this);
        return;
    }
    const std::function<void()> deliver = m_deliver;
    deliver();
}
