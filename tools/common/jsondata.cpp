#include "common/jsondata.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

#include <limits>

#include "DataLayer/idatapeer.h"

namespace {

/// Beyond this a double does not hold every whole number.
const double MaxWhole = 9007199254740992.0;

QVariant ToVariant(const QJsonValue& value);

QVariant NumberToVariant(double number)
{
    if (number != static_cast<qint64>(qBound(-MaxWhole, number, MaxWhole)))
        return number;
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max())
        return static_cast<qlonglong>(number);
    return static_cast<int>(number);
}

QVariant ListToVariant(const QJsonArray& array)
{
    QVariantList list;
    for (const QJsonValue& value : array)
        list.append(ToVariant(value));
    return list;
}

QVariant MapToVariant(const QJsonObject& object)
{
    QVariantMap map;
    for (auto it = object.begin(); it != object.end(); ++it)
        map.insert(it.key(), ToVariant(it.value()));
    return map;
}

QVariant ToVariant(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Double:
        return NumberToVariant(value.toDouble());
    case QJsonValue::Array:
        return ListToVariant(value.toArray());
    case QJsonValue::Object:
        return MapToVariant(value.toObject());
    default:
        return value.isNull() ? QVariant() : value.toVariant();
    }
}

QString Place(const QByteArray& text, int offset)
{
    const QByteArray before = text.left(offset);
    const int line = before.count('\n') + 1;
    const int column = QString::fromUtf8(before.mid(before.lastIndexOf('\n') + 1)).size() + 1;
    return QString("%1:%2").arg(line).arg(column);
}

/// Packages and names in the order in which they stand in the text, which QJsonObject does not keep.
/// The text must be sound; a name that stands twice comes twice.
class KeyOrder
{
public:
    explicit KeyOrder(const QByteArray& text) : m_text(text) {}

    QVector<VariableIdentifier> Read()
    {
        for (; m_position < m_text.size(); ++m_position)
            ReadCharacter(m_text.at(m_position));
        return m_keys;
    }

private:
    void ReadCharacter(char character)
    {
        if (character == '"')
            m_string = ReadString();
        else if (character == '{' || character == '[')
            ++m_depth;
        else if (character == '}' || character == ']')
            --m_depth;
        else if (character == ':' && m_depth == 1)
            m_package = Decode(m_string);
        else if (character == ':' && m_depth == 2)
            m_keys.append(VariableIdentifier(Decode(m_string), m_package));
    }

    QByteArray ReadString()
    {
        const int start = m_position++;
        while (m_text.at(m_position) != '"')
            m_position += m_text.at(m_position) == '\\' ? 2 : 1;
        return m_text.mid(start, m_position + 1 - start);
    }

    static QString Decode(const QByteArray& string)
    {
        return QJsonDocument::fromJson('[' + string + ']').array().at(0).toString();
    }

    const QByteArray m_text;
    QByteArray m_string;
    QString m_package;
    QVector<VariableIdentifier> m_keys;
    int m_position = 0;
    int m_depth = 0;
};

bool CheckPackages(const QJsonDocument& document, QString* error)
{
    if (!document.isObject()) {
        *error = "an object of packages is wanted, { \"PACKAGE\": { \"NAME\": VALUE } }";
        return false;
    }
    const QJsonObject packages = document.object();
    for (auto it = packages.begin(); it != packages.end(); ++it) {
        if (!it.value().isObject()) {
            *error = QString("the package \"%1\" is no object of variables").arg(it.key());
            return false;
        }
    }
    return true;
}

/// Makes a generator of the value if it is meant as one. False, with the reason, when that is not sound.
bool ReadGenerator(Variable* variable, QString* error)
{
    const QVariantMap object = variable->value.toMap();
    if (!ValueGenerator::IsMeant(object))
        return true;
    ValueGenerator generator;
    if (!generator.Read(object, variable->package + ':' + variable->name, error))
        return false;
    variable->generator = generator;
    variable->value = generator.Value(0);
    return true;
}

} // namespace

bool JsonData::Read(const QString& fileName, QString* error)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QString("%1: %2").arg(fileName, file.errorString());
        return false;
    }
    return Parse(file.readAll(), fileName, error);
}

bool JsonData::Write(const QString& fileName, QString* error) const
{
    QSaveFile file(fileName);
    if (file.open(QIODevice::WriteOnly)) {
        file.write(ToJson());
        if (file.commit())
            return true;
    }
    *error = QString("%1: %2").arg(fileName, file.errorString());
    return false;
}

bool JsonData::Parse(const QByteArray& text, const QString& source, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        *error = QString("%1:%2: %3").arg(source, Place(text, parseError.offset), parseError.errorString());
        return false;
    }
    QString reason;
    if (!CheckPackages(document, &reason)) {
        *error = QString("%1: %2").arg(source, reason);
        return false;
    }
    JsonData read;
    const QVector<VariableIdentifier> keys = KeyOrder(text).Read();
    for (const VariableIdentifier& key : keys) {
        const QJsonValue value = document.object().value(key.GetPackage()).toObject().value(key.GetName());
        Variable variable{key.GetPackage(), key.GetName(), ToVariant(value)};
        if (!ReadGenerator(&variable, &reason)) {
            *error = QString("%1: %2:%3: %4").arg(source, variable.package, variable.name, reason);
            return false;
        }
        read.Set(variable);
    }
    *this = read;
    return true;
}

QByteArray JsonData::ToJson() const
{
    QStringList packages;
    QHash<QString, QByteArray> bodies;
    for (const Variable& variable : m_variables) {
        QByteArray& body = bodies[variable.package];
        if (body.isEmpty())
            packages.append(variable.package);
        body += (body.isEmpty() ? "" : ",\n") + QByteArray(8, ' ') + ValueToJson(variable.name) + ": "
            + ValueToJson(variable.generator ? variable.generator->Object() : variable.value);
    }
    QByteArray json;
    for (const QString& package : qAsConst(packages)) {
        json += (json.isEmpty() ? "" : ",\n") + QByteArray(4, ' ') + ValueToJson(package) + ": {\n"
            + bodies.value(package) + "\n    }";
    }
    return "{\n" + json + "\n}\n";
}

bool JsonData::Assign(const QString& assignment, const QString& defaultPackage, QString* error)
{
    const int sign = assignment.indexOf('=');
    const QString left = assignment.left(sign).trimmed();
    const int colon = left.lastIndexOf(':');
    const QString name = left.mid(colon + 1);
    if (sign < 0 || name.isEmpty()) {
        *error = QString("\"%1\" is no assignment; [PACKAGE:]NAME=JSON is wanted").arg(assignment);
        return false;
    }
    QVariant value;
    if (!ValueFromJson(assignment.mid(sign + 1).toUtf8(), &value, error)) {
        *error = QString("\"%1\": the value is no JSON: %2 (a text stands in double quotes)").arg(assignment, *error);
        return false;
    }
    Set({colon < 0 ? defaultPackage : left.left(colon), name, value});
    return true;
}

void JsonData::Set(const Variable& variable)
{
    const VariableIdentifier identifier(variable.name, variable.package);
    const auto found = m_index.constFind(identifier);
    if (found != m_index.constEnd()) {
        m_variables[found.value()] = variable;
        return;
    }
    m_index.insert(identifier, m_variables.size());
    m_variables.append(variable);
}

const Variable* JsonData::Find(const QString& package, const QString& name) const
{
    const auto found = m_index.constFind(VariableIdentifier(name, package));
    return found == m_index.constEnd() ? nullptr : &m_variables.at(found.value());
}

void JsonData::Publish(IDataPeer* dataPeer) const
{
    for (const Variable& variable : m_variables)
        dataPeer->ChangeValue(VariableIdentifier(variable.name, variable.package), variable.value, IDataPeer::NoFlag);
}

QByteArray JsonData::ValueToJson(const QVariant& value)
{
    // QJsonDocument takes no single values: one in a list, without the brackets.
    const QByteArray list = QJsonDocument(QJsonArray{QJsonValue::fromVariant(value)}).toJson(QJsonDocument::Compact);
    return list.mid(1, list.size() - 2);
}

bool JsonData::ValueFromJson(const QByteArray& text, QVariant* value, QString* error)
{
    QJsonParseError parseError;
    const QJsonArray list = QJsonDocument::fromJson('[' + text + ']', &parseError).array();
    if (parseError.error != QJsonParseError::NoError || list.size() != 1) {
        *error = list.size() > 1 ? QString("more than one value") : parseError.errorString();
        if (list.isEmpty() && parseError.error == QJsonParseError::NoError)
            *error = "no value";
        return false;
    }
    *value = ToVariant(list.at(0));
    return true;
}

QVariant JsonData::ValueFromJson(const QJsonValue& value)
{
    return ToVariant(value);
}
