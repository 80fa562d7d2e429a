#ifndef SQLITECONNECTION_H
#define SQLITECONNECTION_H

#include <QByteArray>
#include <QSqlDatabase>
#include <QVector>

#include <optional>

#include "DataLayer/variableidentifier.h"

class QSqlQuery;

/// A connection to the file with the table of variables. It belongs to the thread that makes it, as Qt
/// demands of connections, and is closed with the object.
///
/// Every write gives its row the next revision, so that readers ask only for what is new.
class SqliteConnection
{
public:
    struct Row
    {
        VariableIdentifier identifier;
        QByteArray value; ///< Empty for a variable without a value.
        qint64 revision;
    };

    /// Opens the file, or makes it; LastError() tells why this failed.
    explicit SqliteConnection(const QString& file);
    ~SqliteConnection();

    /// Empty as long as nothing has failed.
    QString LastError() const { return m_error; }

    /// False when another process keeps the file locked for longer than some seconds, when the disk is
    /// full, and the like. The table is as before then.
    bool Write(const VariableIdentifier& identifier, const QByteArray& value);

    /// The rows written after that revision, in order; none at all when the file cannot be read.
    std::optional<QVector<Row>> ReadSince(qint64 revision);

    /// A number that changes when another connection, also of another process, has written.
    std::optional<qint64> DataVersion();

private:
    Q_DISABLE_COPY(SqliteConnection)

    bool Execute(QSqlQuery* query);

    QString m_name;
    QSqlDatabase m_database;
    QString m_error;
};

#endif
