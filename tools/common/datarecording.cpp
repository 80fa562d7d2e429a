#include "common/datarecording.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include "common/jsondata.h"

namespace {

const double MillisecondsPerSecond = 1000;

QString WrongKey(const QJsonObject& object)
{
    static const QStringList known{"t", "package", "name", "value"};
    const QStringList keys = object.keys();
    for (const QString& key : keys) {
        if (!known.contains(key))
            return QString("there is no \"%1\"; a line has \"t\", \"package\", \"name\" and \"value\"").arg(key);
    }
    if (!object.value("t").isDouble() || object.value("t").toDouble() < 0)
        return "\"t\" wants seconds, from 0 on";
    if (!object.value("package").isString())
        return "\"package\" wants a text";
    if (object.value("name").toString().isEmpty())
        return "\"name\" wants the name of a variable";
    return QString();
}

} // namespace

bool DataRecording::Read(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QString("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    Parse(file.readAll(), fileName);
    return true;
}

void DataRecording::Parse(const QByteArray& text, const QString& source)
{
    m_changes.clear();
    m_problems.clear();
    int number = 0;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        ++number;
        if (line.trimmed().isEmpty())
            continue;
        RecordedChange change;
        QString reason;
        if (FromLine(line, &change, &reason))
            m_changes.append(change);
        else
            m_problems.append(QString("%1:%2: %3").arg(source).arg(number).arg(reason));
    }
    std::stable_sort(m_changes.begin(), m_changes.end(), [](const RecordedChange& left, const RecordedChange& right) {
        return left.seconds < right.seconds;
    });
}

/// The keys in an order to read, which QJsonObject does not keep.
QByteArray DataRecording::ToLine(const RecordedChange& change)
{
    QByteArray line = "{\"t\": " + JsonData::ValueToJson(change.seconds)
        + ", \"package\": " + JsonData::ValueToJson(change.identifier.GetPackage())
        + ", \"name\": " + JsonData::ValueToJson(change.identifier.GetName());
    if (change.value.isValid())
        line += ", \"value\": " + JsonData::ValueToJson(change.value);
    return line + "}\n";
}

bool DataRecording::FromLine(const QByteArray& line, RecordedChange* change, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(line, &parseError);
    const QJsonObject object = document.object();
    *error = !document.isNull() && !document.isObject() ? QString("an object is wanted")
        : document.isNull()                             ? parseError.errorString()
                                                        : WrongKey(object);
    if (!error->isEmpty())
        return false;
    change->seconds = object.value("t").toDouble();
    change->identifier = VariableIdentifier(object.value("name").toString(), object.value("package").toString());
    change->value = object.contains("value") ? JsonData::ValueFromJson(object.value("value")) : QVariant();
    return true;
}

bool DataRecorder::Start(const QString& fileName, QString* error)
{
    m_file.close();
    m_file.setFileName(fileName);
    m_failed = false;
    m_running.start();
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return true;
    *error = QString("%1: %2").arg(fileName, m_file.errorString());
    return false;
}

bool DataRecorder::Stop(QString* error)
{
    const bool isWritten = !m_file.isOpen() || Flush();
    if (!isWritten)
        *error = QString("%1: %2").arg(m_file.fileName(), m_file.errorString());
    m_file.close();
    return isWritten;
}

bool DataRecorder::Record(const VariableIdentifier& identifier, const QVariant& value)
{
    if (!IsRecording())
        return true;
    const QByteArray line
        = DataRecording::ToLine({double(m_running.elapsed()) / MillisecondsPerSecond, identifier, value});
    m_failed = m_file.write(line) != line.size() || m_failed;
    return !value.isValid() || JsonData::ValueToJson(value) != "null";
}

bool DataRecorder::Flush()
{
    m_failed = !m_file.flush() || m_failed;
    return !m_failed;
}
