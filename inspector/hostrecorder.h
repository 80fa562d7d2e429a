#ifndef HOSTRECORDER_H
#define HOSTRECORDER_H

#include <QHash>
#include <QStringList>
#include <QVector>

#include <atomic>
#include <mutex>

#include "DataLayer/idataobserver.h"
#include "common/datarecording.h"

class IDataPeer;

/// Records the values of a host's variables, whichever thread changes them.
class HostRecorder : private IDataObserver
{
public:
    HostRecorder() = default;
    ~HostRecorder() override;

    /// Starts a file, which nothing is written to before Follow(). False, with the reason, when it cannot be written.
    bool Start(const QString& fileName, QString* error);
    /// Writes the values at present, as far as they are not written yet, and from then on each change. \a data must not
    /// be null, and must be there until the next call of Leave() or Stop().
    void Follow(IDataPeer* data, const QVector<VariableIdentifier>& variables);
    /// The peer is not asked any more; the recording goes on with Follow().
    void Leave();
    /// Hands to the file what was written until now. False when that failed; then the recording is to be stopped.
    bool Flush();
    /// False, with the reason, when something could not be written.
    bool Stop(QString* error);

    bool IsRecording() const { return m_isRecording; }
    bool IsFollowing() const { return m_data; }
    /// Variables that have had values without a form in JSON, in whose place null is written.
    QStringList WithoutForm();

private:
    Q_DISABLE_COPY(HostRecorder)

    struct Written
    {
        quint64 reading = 0; ///< Number of the reading that gave the value.
        QVariant value;
    };

    void OnNotify(const VariableIdentifier& identifier) override;

    bool m_isRecording = false;
    std::atomic<IDataPeer*> m_data{nullptr};
    std::atomic<quint64> m_lastReading{0};
    std::mutex m_mutex; ///< Guards what follows.
    DataRecorder m_recorder;
    QHash<VariableIdentifier, Written> m_written;
    QStringList m_withoutForm;
};

#endif
