#ifndef SQLITEDATAPEER_H
#define SQLITEDATAPEER_H

#include <QHash>
#include <QList>
#include <QSet>
#include <QVariant>

#include <condition_variable>
#include <mutex>
#include <thread>

#include "DataLayer/idatapeer.h"
#include "DataLayer/variableidentifier.h"

class SqliteConnection;

/// Variables in an SQLite file, which several processes may use at a time. What another one writes is
/// noticed within PollInterval and announced like any change, in a thread of the peer's own.
///
/// Values are kept with their types, as QDataStream writes them; a value that it cannot write is refused.
/// Reading needs no access to the file. Observers are called one at a time: an observer must not wait for a
/// thread that may be inside an operation of the peer.
class SqliteDataPeer : public IDataPeer
{
public:
    /// How often the file is looked at, in milliseconds.
    static constexpr int PollInterval = 100;

    SqliteDataPeer();
    ~SqliteDataPeer() override;

    /// Opens the file, or makes it, and reads its variables, before the peer is used. Answers what went wrong; null
    /// when nothing did. Before, and after Close(), there are only variables without a value, and nothing is written.
    QString Open(const QString& file);
    /// Ends the peer's thread. What was read can still be asked for.
    void Close();

    //! [contract]
    QVariant GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue) override;
    /// False, with nothing changed, when the file cannot be written or the value not be kept.
    bool ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                     QFlags<IDataPeer::ChangeValueFlag> flags) override;
    bool AddObserver(const VariableIdentifier& identifier, IDataObserver* observer) override;
    void RemoveObserver(IDataObserver* observer) override;
    bool AddReference(const VariableIdentifier& identifier) override;
    //! [contract]

private:
    Q_DISABLE_COPY(SqliteDataPeer)

    struct Variable
    {
        QVariant value;
        QByteArray stored; ///< As in the file; tells whether type or value have changed.
    };

    void Watch(const QString& file);
    bool WaitForNextLook();
    bool TakeOver(SqliteConnection* connection, QList<VariableIdentifier>* changed);
    void Notify(const VariableIdentifier& identifier);
    bool Observes(IDataObserver* observer, const VariableIdentifier& identifier);

    /// Held while an observer is called, so that RemoveObserver() waits for calls in other threads. Taken
    /// before m_mutex, never after it.
    std::recursive_mutex m_notifying;
    std::mutex m_mutex; ///< Guards what follows, down to m_observers.
    std::condition_variable m_closing;
    QString m_file; ///< Empty while closed.
    QHash<VariableIdentifier, Variable> m_variables;
    QHash<VariableIdentifier, QList<IDataObserver*>> m_observers;

    qint64 m_revision = 0; ///< Of the last row taken over; the watcher's, once it runs.
    std::thread m_watcher; ///< Not QThread, which thread sanitizers do not understand.
};

#endif
