#include "hostrecorder.h"

#include "DataLayer/idatapeer.h"

HostRecorder::~HostRecorder()
{
    QString error;
    Stop(&error);
}

bool HostRecorder::Start(const QString& fileName, QString* error)
{
    if (!Stop(error))
        return false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_written.clear();
    m_withoutForm.clear();
    m_isRecording = m_recorder.Start(fileName, error);
    return m_isRecording;
}

void HostRecorder::Follow(IDataPeer* data, const QVector<VariableIdentifier>& variables)
{
    Leave();
    m_data = data;
    for (const VariableIdentifier& identifier : variables) {
        data->AddObserver(identifier, this);
        OnNotify(identifier);
    }
}

void HostRecorder::Leave()
{
    if (IDataPeer* const data = m_data.exchange(nullptr))
        data->RemoveObserver(this);
}

bool HostRecorder::Flush()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_recorder.Flush();
}

bool HostRecorder::Stop(QString* error)
{
    Leave();
    m_isRecording = false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_recorder.Stop(error);
}

QStringList HostRecorder::WithoutForm()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_withoutForm;
}

void HostRecorder::OnNotify(const VariableIdentifier& identifier)
{
    IDataPeer* const data = m_data;
    if (!data)
        return;
    const quint64 reading = ++m_lastReading;
    // Not while the lock is held: a peer may have one of its own.
    const QVariant value = data->GetValue(identifier, QVariant());
    const std::lock_guard<std::mutex> lock(m_mutex);
    Written& written = m_written[identifier];
    const bool isSame = written.reading > 0 && written.value == value && written.value.userType() == value.userType();
    // What was read later, by another thread, may have been written first.
    if (written.reading > reading || isSame)
        return;
    written = {reading, value};
    if (!m_recorder.Record(identifier, value) && !m_withoutForm.contains(identifier.GetName()))
        m_withoutForm.append(identifier.GetName());
}
