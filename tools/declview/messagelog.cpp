#include "declview/messagelog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMutex>
#include <QThread>

#include <utility>

namespace {

const int FlushInterval = 50;

/// Guards all below and the log's pending messages, which come from any thread.
QBasicMutex mutex;
MessageLog* activeLog = nullptr;
QtMessageHandler previousHandler = nullptr;

} // namespace

MessageLog::MessageLog()
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(FlushInterval);
    connect(&m_timer, &QTimer::timeout, this, &MessageLog::Flush);
    const QMutexLocker lock(&mutex);
    activeLog = this;
    previousHandler = qInstallMessageHandler(Handle);
}

MessageLog::~MessageLog()
{
    const QMutexLocker lock(&mutex);
    activeLog = nullptr;
    qInstallMessageHandler(previousHandler);
}

void MessageLog::Note(QtMsgType type, const QString& text, int declaration)
{
    const QMutexLocker lock(&mutex);
    Append({QDateTime::currentDateTime(), type, text, declaration, true});
}

void MessageLog::BeginTurn()
{
    const QMutexLocker lock(&mutex);
    m_turn = m_pending.size();
}

void MessageLog::Attribute(int declaration)
{
    const QMutexLocker lock(&mutex);
    for (; m_turn < m_pending.size(); ++m_turn) {
        LogMessage& message = m_pending[m_turn];
        if (message.ownThread && message.declaration < 0)
            message.declaration = declaration;
    }
}

void MessageLog::Flush()
{
    QVector<LogMessage> messages;
    {
        const QMutexLocker lock(&mutex);
        messages.swap(m_pending);
        m_turn = 0;
        m_announced = false;
    }
    if (!messages.isEmpty())
        Q_EMIT Arrived(messages);
}

void MessageLog::Handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (s_silent)
        return;
    QtMessageHandler next = nullptr;
    {
        const QMutexLocker lock(&mutex);
        next = previousHandler;
        if (activeLog)
            activeLog->Append(
                {QDateTime::currentDateTime(), type, text, -1, activeLog->thread() == QThread::currentThread()});
    }
    next(type, context, text);
}

/// With the mutex held.
void MessageLog::Append(const LogMessage& message)
{
    m_pending.append(message);
    if (!std::exchange(m_announced, true))
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
}

void MessageLog::customEvent(QEvent*)
{
    m_timer.start();
}
