#ifndef MESSAGELOG_H
#define MESSAGELOG_H

#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVector>

/// A line of the debug stream, or a note of the program's own.
struct LogMessage
{
    QDateTime time;
    QtMsgType type;
    QString text;
    int declaration = -1;     ///< Position among the form's declarations; -1 where none is known.
    QPointer<QObject> object; ///< While whose property was evaluated it was written; null for none.
    QString property;         ///< That property, with its marker.
};

/// Listens to Qt's messages, of all threads, from construction to destruction, and hands them on to the
/// message handler that was installed before. One at a time.
///
/// What the forms library writes about its problems is left out: it tells them by a signal as well.
class MessageLog : public QObject
{
    Q_OBJECT

public:
    MessageLog();
    ~MessageLog() override;

    /// A note that does not appear on the debug stream.
    void Note(QtMsgType type, const QString& text, int declaration = -1);

    /// While one lives, what its thread writes to the debug stream goes nowhere.
    class Silence
    {
    public:
        Silence();
        ~Silence();
        Q_DISABLE_COPY(Silence)
    };

    /// Hands over what has come in, at once.
    void Flush();

Q_SIGNALS:
    /// Several at once, a moment after they were written.
    void Arrived(const QVector<LogMessage>& messages);

private:
    static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text);
    void Append(const LogMessage& message);
    void customEvent(QEvent* event) override;

    QVector<LogMessage> m_pending;
    bool m_announced = false; ///< Whether an event is under way, or the timer runs.
    QTimer m_timer;
};

#endif
