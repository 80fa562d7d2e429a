#include "common/projectfile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "common/nearestname.h"

namespace {

const char FileName[] = "declcheck.json";

bool TakeText(const QJsonValue& value, const QString& key, QString* text, QString* error)
{
    *text = value.toString();
    if (!value.isString())
        *error = QString("\"%1\" is no text").arg(key);
    return value.isString();
}

bool TakeTexts(const QJsonValue& value, const QString& key, QStringList* texts, QString* error)
{
    const QVariantList entries = value.toArray().toVariantList();
    for (const QVariant& text : entries)
        texts->append(text.userType() == QMetaType::QString ? text.toString() : QString());
    const bool isGood = value.isArray() && !texts->contains(QString());
    if (!isGood)
        *error = QString("\"%1\" is no list of texts").arg(key);
    return isGood;
}

} // namespace

QString ProjectFile::Find(const QString& folder)
{
    QDir directory(QDir(folder).absolutePath());
    do {
        if (directory.exists(FileName))
            return directory.absoluteFilePath(FileName);
    } while (directory.cdUp());
    return QString();
}

bool ProjectFile::Read(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = fileName + ": " + file.errorString();
        return false;
    }
    return Parse(file.readAll(), fileName, error);
}

bool ProjectFile::Parse(const QByteArray& content, const QString& fileName, QString* error)
{
    QString reason;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(content, &parseError);
    if (!document.isObject())
        reason = parseError.error == QJsonParseError::NoError ? "no object" : parseError.errorString();
    const QJsonObject object = document.object();
    for (auto it = object.begin(); it != object.end() && reason.isEmpty(); ++it)
        Take(it.key(), it.value(), QFileInfo(fileName).absolutePath(), &reason);
    if (!reason.isEmpty())
        *error = fileName + ": " + reason;
    return reason.isEmpty();
}

bool ProjectFile::Take(const QString& key, const QJsonValue& value, const QString& folder, QString* error)
{
    static const QStringList keys{"package", "data", "disable", "severities", "host", "handler"};
    QStringList names;
    switch (keys.indexOf(key)) {
    case 0:
        return TakeText(value, key, &package, error);
    case 1:
        if (!TakeText(value, key, &data, error))
            return false;
        data = QDir(folder).absoluteFilePath(data);
        return true;
    case 2:
        return TakeTexts(value, key, &names, error) && AddChecks(names, &disabled, error);
    case 3:
        return TakeSeverities(value, error);
    case 4:
        return TakeHost(value, error);
    case 5:
        usesHandler = value.toBool();
        if (!value.isBool())
            *error = QString("\"%1\" is neither true nor false").arg(key);
        return value.isBool();
    default:
        *error = QString("\"%1\" is not known here%2").arg(key, NearestName(keys).Hint(key));
        return false;
    }
}

bool ProjectFile::TakeSeverities(const QJsonValue& value, QString* error)
{
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        QSet<int> checks;
        if (!AddChecks({it.key()}, &checks, error))
            return false;
        const QStringList words{"note", "warning", "error"};
        const int severity = words.indexOf(it.value().toString());
        if (severity < 0) {
            *error = QString("The severity of \"%1\" is none of note, warning and error").arg(it.key());
            return false;
        }
        severities.insert(*checks.begin(), Severity(severity));
    }
    return true;
}

bool ProjectFile::TakeHost(const QJsonValue& value, QString* error)
{
    const QJsonObject object = value.toObject();
    for (auto it = object.begin(); it != object.end(); ++it) {
        if (it.key() != "variables" && it.key() != "properties") {
            *error = QString("\"%1\" is not known in \"host\"; there are variables and properties").arg(it.key());
            return false;
        }
        if (!TakeTexts(it.value(), it.key(), it.key() == "variables" ? &hostVariables : &hostProperties, error))
            return false;
    }
    return true;
}
