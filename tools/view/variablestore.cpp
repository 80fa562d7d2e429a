#include "view/variablestore.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "common/jsondata.h"

VariableStore::VariableStore() : m_data(Ovex_DataPeerFactory(false)->GetDataPeer(0)) {}

VariableStore::~VariableStore()
{
    m_data->RemoveObserver(this);
}

void VariableStore::Load(const JsonData& file)
{
    Flush();
    Q_EMIT AboutToReset();
    m_loading = true;
    for (StoredVariable& variable : m_variables) {
        const Variable* const found = file.Find(variable.identifier.GetPackage(), variable.identifier.GetName());
        if (variable.inFile && !found && !variable.edited)
            m_data->ChangeValue(variable.identifier, QVariant(), IDataPeer::NoFlag);
        variable.inFile = found;
        variable.generator.reset();
    }
    for (const Variable& variable : file.Variables()) {
        const VariableIdentifier identifier(variable.name, variable.package);
        StoredVariable& stored = Find(identifier);
        stored.inFile = true;
        stored.generator = variable.generator;
        if (!stored.edited)
            m_data->ChangeValue(identifier, variable.value, IDataPeer::NoFlag);
    }
    m_loading = false;
    RemoveUnused();
}

void VariableStore::Set(const JsonData& values)
{
    Q_EMIT AboutToReset();
    for (const Variable& variable : values.Variables())
        Find(VariableIdentifier(variable.name, variable.package)).edited = true;
    values.Publish(m_data);
    RemoveUnused();
}

bool VariableStore::SetValue(int position, const QVariant& value)
{
    return m_data->ChangeValue(m_variables.at(position).identifier, value, IDataPeer::NoFlag);
}

void VariableStore::Move(double seconds)
{
    // An edit that is under way stops its variable now.
    Flush();
    m_loading = true;
    for (const StoredVariable& variable : qAsConst(m_variables)) {
        if (variable.generator && !variable.edited)
            m_data->ChangeValue(variable.identifier, variable.generator->Value(seconds), IDataPeer::NoFlag);
    }
    m_loading = false;
}

void VariableStore::Replay(const QHash<VariableIdentifier, QVariant>& values)
{
    Flush();
    m_loading = true;
    for (auto it = values.constBegin(); it != values.constEnd(); ++it) {
        const int position = m_positions.value(it.key(), -1);
        if (position < 0 || !m_variables.at(position).edited)
            m_data->ChangeValue(it.key(), it.value(), IDataPeer::NoFlag);
    }
    m_loading = false;
}

bool VariableStore::AnyMoves() const
{
    return std::any_of(m_variables.begin(), m_variables.end(),
                       [](const StoredVariable& variable) { return variable.generator.has_value(); });
}

void VariableStore::SetRead(const QSet<VariableIdentifier>& identifiers)
{
    Flush();
    Q_EMIT AboutToReset();
    for (StoredVariable& variable : m_variables)
        variable.isRead = false;
    QVector<VariableIdentifier> sorted(identifiers.begin(), identifiers.end());
    std::sort(sorted.begin(), sorted.end());
    for (const VariableIdentifier& identifier : qAsConst(sorted))
        Find(identifier).isRead = true;
    RemoveUnused();
}

bool VariableStore::Save(const QString& fileName, QString* error)
{
    Flush();
    JsonData data;
    for (int i = 0; i < m_variables.size(); ++i) {
        StoredVariable& variable = m_variables[i];
        if (variable.edited)
            variable.generator.reset();
        const QVariant value = Value(i);
        if (value.isValid() || variable.inFile)
            data.Set({variable.identifier.GetPackage(), variable.identifier.GetName(), value, variable.generator});
    }
    if (!data.Write(fileName, error))
        return false;
    QVector<int> positions;
    for (StoredVariable& variable : m_variables) {
        variable.inFile = data.Find(variable.identifier.GetPackage(), variable.identifier.GetName());
        variable.edited = false;
        positions.append(positions.size());
    }
    Q_EMIT Changed(positions);
    return true;
}

QVariant VariableStore::Value(int position) const
{
    return Value(m_variables.at(position).identifier);
}

QVariant VariableStore::Value(const VariableIdentifier& identifier) const
{
    return m_data->GetValue(identifier, QVariant());
}

bool VariableStore::IsMissing(int position) const
{
    return IsMissing(m_variables.at(position));
}

bool VariableStore::IsMissing(const StoredVariable& variable) const
{
    return variable.isRead && !variable.inFile && !Value(variable.identifier).isValid();
}

void VariableStore::Flush()
{
    QHash<VariableIdentifier, bool> notified;
    {
        const QMutexLocker lock(&m_mutex);
        notified.swap(m_notified);
    }
    QVector<int> positions;
    for (auto it = notified.constBegin(); it != notified.constEnd(); ++it) {
        const int position = m_positions.value(it.key(), -1);
        if (position < 0)
            continue;
        if (it.value())
            m_variables[position].edited = true;
        positions.append(position);
    }
    if (!positions.isEmpty())
        Q_EMIT Changed(positions);
}

void VariableStore::OnNotify(const VariableIdentifier& identifier)
{
    const QMutexLocker lock(&m_mutex);
    if (m_notified.isEmpty())
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    bool& edited = m_notified[identifier];
    edited = edited || !m_loading;
}

void VariableStore::customEvent(QEvent*)
{
    Flush();
}

StoredVariable& VariableStore::Find(const VariableIdentifier& identifier)
{
    const auto found = m_positions.constFind(identifier);
    if (found != m_positions.constEnd())
        return m_variables[found.value()];
    m_positions.insert(identifier, m_variables.size());
    m_variables.append({identifier, false, false, false, {}});
    m_data->AddObserver(identifier, this);
    return m_variables.last();
}

void VariableStore::RemoveUnused()
{
    QVector<StoredVariable> missing;
    QVector<StoredVariable> others;
    for (const StoredVariable& variable : qAsConst(m_variables)) {
        if (variable.inFile || variable.edited || variable.isRead)
            (IsMissing(variable) ? missing : others).append(variable);
    }
    m_variables = missing + others;
    m_positions.clear();
    for (int i = 0; i < m_variables.size(); ++i)
        m_positions.insert(m_variables.at(i).identifier, i);
    Q_EMIT Reset();
}
