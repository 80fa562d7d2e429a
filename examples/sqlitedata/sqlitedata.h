#ifndef SQLITEDATA_H
#define SQLITEDATA_H

#include <QString>

/// A data layer of a host's own, over SQLite. A program that links this library before
/// libDeclarationHandler, and opens a file, uses it in the place of the one in memory.
namespace SqliteData {

/// Opens the file for all declarations, or makes it; in the main thread, once the QCoreApplication exists.
/// Answers what went wrong; null when nothing did.
QString Open(const QString& file);

} // namespace SqliteData

#endif
