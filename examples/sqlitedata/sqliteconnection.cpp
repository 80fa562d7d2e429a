#include "sqliteconnection.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QUuid>
#include <QVariant>

namespace {

const auto CreateTable = QStringLiteral("CREATE TABLE IF NOT EXISTS variables ("
                                        " package TEXT NOT NULL, name TEXT NOT NULL, value BLOB NOT NULL,"
                                        " revision INTEGER NOT NULL UNIQUE, PRIMARY KEY (package, name))");
const auto WriteRow = QStringLiteral("INSERT INTO variables (package, name, value, revision)"
                                     " VALUES (?, ?, ?, (SELECT coalesce(max(revision), 0) + 1 FROM variables))"
                                     " ON CONFLICT (package, name)"
                                     " DO UPDATE SET value = excluded.value, revision = excluded.revision");
const auto ReadRows = QStringLiteral("SELECT package, name, value, revision FROM variables"
                                     " WHERE revision > ? ORDER BY revision");

/// SQLite tells a null text from an empty one, which variables do not.
QString NotNull(const QString& text)
{
    return text.isNull() ? QString(QLatin1String("")) : text;
}

} // namespace

SqliteConnection::SqliteConnection(const QString& file)
    : m_name(QUuid::createUuid().toString()), m_database(QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name))
{
    m_database.setDatabaseName(file);
    if (!m_database.open()) {
        m_error = m_database.lastError().text();
        return;
    }
    QSqlQuery query(m_database);
    query.prepare(CreateTable);
    Execute(&query);
}

SqliteConnection::~SqliteConnection()
{
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

bool SqliteConnection::Write(const VariableIdentifier& identifier, const QByteArray& value)
{
    QSqlQuery query(m_database);
    query.prepare(WriteRow);
    query.addBindValue(NotNull(identifier.GetPackage()));
    query.addBindValue(NotNull(identifier.GetName()));
    query.addBindValue(value.isNull() ? QByteArray("") : value);
    return Execute(&query);
}

std::optional<QVector<SqliteConnection::Row>> SqliteConnection::ReadSince(qint64 revision)
{
    QSqlQuery query(m_database);
    query.prepare(ReadRows);
    query.addBindValue(revision);
    if (!Execute(&query))
        return std::nullopt;
    QVector<Row> rows;
    while (query.next()) {
        rows.append({VariableIdentifier(query.value(1).toString(), query.value(0).toString()),
                     query.value(2).toByteArray(), query.value(3).toLongLong()});
    }
    if (query.lastError().isValid())
        return std::nullopt;
    return rows;
}

std::optional<qint64> SqliteConnection::DataVersion()
{
    QSqlQuery query(m_database);
    query.prepare(QStringLiteral("PRAGMA data_version"));
    if (!Execute(&query) || !query.next())
        return std::nullopt;
    return query.value(0).toLongLong();
}

bool SqliteConnection::Execute(QSqlQuery* query)
{
    if (query->exec())
        return true;
    m_error = query->lastError().text();
    return false;
}
