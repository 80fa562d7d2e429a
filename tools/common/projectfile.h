#ifndef PROJECTFILE_H
#define PROJECTFILE_H

#include <QHash>
#include <QStringList>

#include "common/checks.h"

class QJsonValue;

/// What holds for all forms of a project: the content of a declcheck.json.
///
///     { "package": "Engine", "data": "forms/data.json", "handler": true, "disable": ["never-triggers"],
///       "severities": { "left-over": "error" },
///       "host": { "variables": ["Engine:*"], "properties": ["reading"] } }
struct ProjectFile
{
    QString package;
    QString data;             ///< An absolute path; empty when there is none.
    bool usesHandler = false; ///< Whether the host adds the statements itself.
    QSet<int> disabled;
    QHash<int, Severity> severities;
    QStringList hostVariables;  ///< Patterns of «PACKAGE:NAME» that the host has besides the data.
    QStringList hostProperties; ///< Patterns of properties that the host adds to objects.

    /// The path of the file that holds for what lies in \a folder: there or in the nearest folder above; empty when
    /// there is none.
    static QString Find(const QString& folder);

    /// False, with the reason, when the file cannot be read or says what is not known.
    bool Read(const QString& fileName, QString* error);
    /// As Read(), from what the file contains.
    bool Parse(const QByteArray& content, const QString& fileName, QString* error);

private:
    bool Take(const QString& key, const QJsonValue& value, const QString& folder, QString* error);
    bool TakeSeverities(const QJsonValue& value, QString* error);
    bool TakeHost(const QJsonValue& value, QString* error);
};

#endif
