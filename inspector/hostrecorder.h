#ifndef HOSTRECORDER_H
#define HOSTRECORDER_H

#include <QVector>

#include <mutex>

#include "DataLayer/idataobserver.h"
#include "common/datarecording.h"

class IDataPeer;

/// Records the values of a host's variables, whichever thread changes them. The peer must outlive the recording.
class HostRecorder : private IDataObserver
{
public:
    HostRecorder() = default;
    ~HostRecorder() override;

    /// Writes the values at present and from then on each change. False, with the reason, when the file cannot be
    /// written. \a data must not be null.
    bool Start(const QString& fileName, IDataPeer* data, const QVector<VariableIdentifier>& variables, QString* error);
    /// False, with the reason, when something could not be written.
    bool Stop(QString* error);
    bool IsRecording() const { return m_data; }

private:
    Q_DISABLE_COPY(HostRecorder)

    void OnNotify(const VariableIdentifier& identifier) override;

    IDataPeer* m_data = nullptr;
    std::mutex m_mutex; ///< Guards what follows.
    DataRecorder m_recorder;
};

#endif
