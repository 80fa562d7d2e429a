#ifndef MESSAGECATCHER_H
#define MESSAGECATCHER_H

#include <QStringList>

#include <utility>

/// Takes what is written to the debug stream in the meantime; one at a time, and for one thread.
class MessageCatcher
{
public:
    MessageCatcher() : m_previous(qInstallMessageHandler(Catch)) { s_lines.clear(); }
    ~MessageCatcher() { qInstallMessageHandler(m_previous); }

    /// The messages since the last time.
    QStringList Take() { return std::exchange(s_lines, QStringList()); }

private:
    static void Catch(QtMsgType, const QMessageLogContext&, const QString& message) { s_lines << message; }

    static inline QStringList s_lines;
    const QtMessageHandler m_previous;
};

#endif
