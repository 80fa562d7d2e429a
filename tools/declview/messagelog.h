#ifndef MESSAGELOG_H
#define MESSAGELOG_H

#include <QDateTime>
#include <QObject>
#include <QTimer>
#include <QVector>

/// A line of the debug stream, or a note of the program's own.
struct LogMessage
{
    QDateTime time;
    QtMsgType type;
    QString text;
    int declaration; ///< Position among the form's declarations; -1 where none is known.
    bool ownThread;  ///< Whether it was written in the log's thread.
};

/// Listens to Qt's messages, of all threads, from construction to destruction, and hands them on to the
/// message handler that was installed before. One at a time.
///
/// A message does not say which declaration it is about. But a declaration announces the end of each of
/// its evaluations: what was written since the turn began, or since the announcement before, is its own.
class MessageLog : public QObject
{
    Q_OBJECT

public:
    MessageLog();
    ~MessageLog() override;

    /// A note that does not appear on the debug stream.
    void Note(QtMsgType type, const QString& text, int declaration = -1);

    /// What was written before belongs to no declaration. Called in the log's thread, as the rest is.
    void BeginTurn();
    /// What this thread wrote since the last call, or since BeginTurn(), is about that declaration.
    void Attribute(int declaration);
    /// Hands over what has come in, at once.
    void Flush();

    /// Keeps this thread's messages to itself while it lives: for what is done a second time and has
    /// said everything before.
    class Silence
    {
    public:
        Silence() { s_silent = true; }
        ~Silence() { s_silent = false; }
    };

Q_SIGNALS:
    /// Several at once, a moment after they were written.
    void Arrived(const QVector<LogMessage>& messages);

private:
    static void Handle(QtMsgType type, const QMessageLogContext& context, const QString& text);
    void Append(const LogMessage& message);
    void customEvent(QEvent* event) override;

    static inline thread_local bool s_silent = false;

    QVector<LogMessage> m_pending;
    int m_turn = 0;           ///< Where in m_pending the turn begins.
    bool m_announced = false; ///< Whether an event is under way, or the timer runs.
    QTimer m_timer;
};

#endif
