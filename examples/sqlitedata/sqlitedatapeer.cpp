#include "sqlitedatapeer.h"

#include <QDataStream>

#include <chrono>

#include "DataLayer/idataobserver.h"
#include "qtversion.h"
#include "sqliteconnection.h"

namespace {

QVariant Decode(const QByteArray& stored)
{
    QVariant value;
    QDataStream stream(stored);
    stream.setVersion(QDataStream::Qt_5_15);
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : QVariant();
}

/// Empty for an invalid value, and null for one that the file cannot keep.
QByteArray Encode(const QVariant& value)
{
    QByteArray stored("");
    if (!value.isValid())
        return stored;
    QDataStream probe(&stored, QIODevice::WriteOnly);
    if (!QtVersion::Save(probe, value))
        return QByteArray();
    stored.clear();
    QDataStream stream(&stored, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << value;
    return Decode(stored).userType() == value.userType() ? stored : QByteArray();
}

} // namespace

SqliteDataPeer::SqliteDataPeer() = default;

SqliteDataPeer::~SqliteDataPeer()
{
    Close();
}

QString SqliteDataPeer::Open(const QString& file)
{
    Close();
    SqliteConnection connection(file);
    QList<VariableIdentifier> found;
    m_variables.clear();
    m_revision = 0;
    if (!connection.LastError().isEmpty() || !TakeOver(&connection, &found))
        return connection.LastError();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_file = file;
    }
    m_watcher = std::thread([this, file] { Watch(file); });
    return QString();
}

void SqliteDataPeer::Close()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_file.clear();
    }
    m_closing.notify_all();
    if (m_watcher.joinable())
        m_watcher.join();
}

QVariant SqliteDataPeer::GetValue(const VariableIdentifier& identifier, const QVariant& defaultValue)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const QVariant value = m_variables.value(identifier).value;
    return value.isValid() ? value : defaultValue;
}

bool SqliteDataPeer::ChangeValue(const VariableIdentifier& identifier, const QVariant& value,
                                 QFlags<IDataPeer::ChangeValueFlag> flags)
{
    const QByteArray stored = Encode(value);
    if (stored.isNull())
        return false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        Variable& variable = m_variables[identifier];
        const bool changes = variable.stored != stored;
        if (m_file.isEmpty() || (changes && !SqliteConnection(m_file).Write(identifier, stored)))
            return false;
        variable = {value, stored};
        if (!changes && !flags.testFlag(ForceNotification))
            return true;
    }
    Notify(identifier);
    return true;
}

bool SqliteDataPeer::AddObserver(const VariableIdentifier& identifier, IDataObserver* observer)
{
    if (!observer)
        return false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    QList<IDataObserver*>& observers = m_observers[identifier];
    if (!observers.contains(observer))
        observers.append(observer);
    return true;
}

void SqliteDataPeer::RemoveObserver(IDataObserver* observer)
{
    const std::lock_guard<std::recursive_mutex> noCalls(m_notifying);
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (QList<IDataObserver*>& observers : m_observers)
        observers.removeOne(observer);
}

bool SqliteDataPeer::AddReference(const VariableIdentifier&)
{
    // All variables of the file are read anyway.
    return true;
}

void SqliteDataPeer::Watch(const QString& file)
{
    SqliteConnection connection(file);
    std::optional<qint64> seen;
    while (WaitForNextLook()) {
        const std::optional<qint64> version = connection.DataVersion();
        if (!version || version == seen)
            continue;
        QList<VariableIdentifier> changed;
        // The version was asked for first: what is written in between shows in the next one.
        if (TakeOver(&connection, &changed))
            seen = version;
        for (const VariableIdentifier& identifier : qAsConst(changed))
            Notify(identifier);
    }
}

/// False when the peer is closed.
bool SqliteDataPeer::WaitForNextLook()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return !m_closing.wait_for(lock, std::chrono::milliseconds(PollInterval), [this] { return m_file.isEmpty(); });
}

/// What this process has written itself is there already, and no change.
bool SqliteDataPeer::TakeOver(SqliteConnection* connection, QList<VariableIdentifier>* changed)
{
    // Before the rows are read: what is written after that must not be undone by them.
    const std::lock_guard<std::mutex> lock(m_mutex);
    const std::optional<QVector<SqliteConnection::Row>> rows = connection->ReadSince(m_revision);
    if (!rows)
        return false;
    for (const SqliteConnection::Row& row : *rows) {
        m_revision = row.revision;
        Variable& variable = m_variables[row.identifier];
        if (variable.stored == row.value)
            continue;
        variable = {Decode(row.value), row.value};
        changed->append(row.identifier);
    }
    return true;
}

void SqliteDataPeer::Notify(const VariableIdentifier& identifier)
{
    const std::lock_guard<std::recursive_mutex> calling(m_notifying);
    std::unique_lock<std::mutex> lock(m_mutex);
    const QList<IDataObserver*> observers = m_observers.value(identifier);
    lock.unlock();
    for (IDataObserver* const observer : observers) {
        // One called before may have removed it.
        if (Observes(observer, identifier))
            observer->OnNotify(identifier);
    }
}

bool SqliteDataPeer::Observes(IDataObserver* observer, const VariableIdentifier& identifier)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_observers.value(identifier).contains(observer);
}
