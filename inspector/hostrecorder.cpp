#include "hostrecorder.h"

#include "DataLayer/idatapeer.h"

HostRecorder::~HostRecorder()
{
    QString error;
    Stop(&error);
}

bool HostRecorder::Start(const QString& fileName, IDataPeer* data, const QVector<VariableIdentifier>& variables,
                         QString* error)
{
    if (!Stop(error))
        return false;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (!m_recorder.Start(fileName, error))
            return false;
    }
    m_data = data;
    for (const VariableIdentifier& identifier : variables) {
        data->AddObserver(identifier, this);
        OnNotify(identifier);
    }
    return true;
}

bool HostRecorder::Stop(QString* error)
{
    if (!m_data)
        return true;
    m_data->RemoveObserver(this);
    m_data = nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_recorder.Stop(error);
}

void HostRecorder::OnNotify(const VariableIdentifier& identifier)
{
    // Not while the lock is held: a peer may have one of its own.
    const QVariant value = m_data->GetValue(identifier, QVariant());
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_recorder.Record(identifier, value);
}
