#ifndef DATAMOTION_H
#define DATAMOTION_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include "common/datarecording.h"

class VariableStore;

/// The clock of the variables that a generator or a recording moves. It stands at 0 at first.
class DataMotion : public QObject
{
    Q_OBJECT

public:
    /// The variables outlive this.
    explicit DataMotion(VariableStore* variables);

    /// Moves variables as they were recorded, from the time of the clock on.
    void SetRecording(const DataRecording& recording);
    /// Whether there is anything that moves.
    bool AnyMoves() const;

    /// Lets the clock run, or stand where it is.
    void SetRunning(bool running);
    bool IsRunning() const { return m_timer.isActive(); }
    /// Sets the clock, in seconds from 0 on.
    void SetTime(double seconds);
    /// Gives the variables their values of now, as when they have been read anew.
    void Show();

private:
    double Time() const;
    void Advance();

    VariableStore* const m_variables;
    DataRecording m_recording;
    int m_next = 0; ///< The first change of the recording that is to come.
    QTimer m_timer;
    QElapsedTimer m_running; ///< Since the clock was set or started.
    double m_start = 0;      ///< The time then, in seconds.
};

#endif
