#include "declview/messagelog.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMutex>

#include <utility>

#include "DeclarationForms/formbinding.h"

namespace {

const int FlushInterval = 50;
const char* const FormsCategory = "declarationforms";

/// Guards all below and the log's pending messages, which come from any thread.
QBasicMutex mutex;
MessageLog* activeLog = nullptr;
QtMessageHandler previousHandler = nullptr;
thread_local int silences = 0;

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

MessageLog::Silence::Silence()
{
    ++silences;
}

MessageLog::Silence::~Silence()
{
    --silences;
}

void MessageLog::Note(QtMsgType type, const QString& text, int declaration)
{
    const QMutexLocker lock(&mutex);
    Append({QDateTime::currentDateTime(), type, text, declaration, nullptr, QString()});
}

void MessageLog::Flush()
{
    QVector<LogMessage> messages;
    {
        const QMutexLocker lock(&mutex);
        messages.swap(m_pending);
        m_announced = false;
    }
    if (!messages.isEmpty())
        Q_EMIT Arrived(messages);
}

void MessageLog::Handle(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (silences > 0)
        return;
    QtMessageHandler next = nullptr;
    {
        const QMutexLocker lock(&mutex);
        next = previousHandler;
        if (activeLog && qstrcmp(context.category, FormsCategory) != 0) {
            activeLog->Append({QDateTime::currentDateTime(), type, text, -1, FormBinding::EvaluatedObject(),
                               FormBinding::EvaluatedProperty()});
        }
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
