#include "declview/datamotion.h"

#include "view/variablestore.h"

namespace {

/// About as often as an eye sees a difference.
const int Interval = 50;
const double MillisecondsPerSecond = 1000;

} // namespace

DataMotion::DataMotion(VariableStore* variables) : m_variables(variables)
{
    m_timer.setInterval(Interval);
    connect(&m_timer, &QTimer::timeout, this, &DataMotion::Advance);
}

void DataMotion::SetRecording(const DataRecording& recording)
{
    m_recording = recording;
    Show();
}

bool DataMotion::AnyMoves() const
{
    return m_variables->AnyMoves() || !m_recording.Changes().isEmpty();
}

void DataMotion::SetRunning(bool running)
{
    m_start = Time();
    m_running.restart();
    if (running)
        m_timer.start();
    else
        m_timer.stop();
}

void DataMotion::SetTime(double seconds)
{
    m_start = seconds;
    m_running.restart();
    Show();
}

void DataMotion::Show()
{
    m_next = 0;
    Advance();
}

void DataMotion::Advance()
{
    const double time = Time();
    m_variables->Move(time);
    QHash<VariableIdentifier, QVariant> changes;
    const QVector<RecordedChange>& recorded = m_recording.Changes();
    for (; m_next < recorded.size() && recorded.at(m_next).seconds <= time; ++m_next)
        changes.insert(recorded.at(m_next).identifier, recorded.at(m_next).value);
    if (!changes.isEmpty())
        m_variables->Replay(changes);
}

double DataMotion::Time() const
{
    return IsRunning() ? m_start + m_running.elapsed() / MillisecondsPerSecond : m_start;
}
