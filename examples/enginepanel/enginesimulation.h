#ifndef ENGINESIMULATION_H
#define ENGINESIMULATION_H

#include <QThread>

/// Plays the engine: writes the panel's variables ten times a second, from a thread of its own.
class EngineSimulation : public QThread
{
    Q_OBJECT

public:
    /// Gives all variables their first values. start() sets the engine going.
    EngineSimulation();
    /// Stop().
    ~EngineSimulation() override;

    /// Ends the thread and waits for it.
    void Stop();

protected:
    void run() override;

private:
    void Step();
    void WriteReadings(bool running);
    void WriteExhaust();
    void WriteMessage();

    double m_time = 0;
    double m_speed = 640;
    double m_temperature = 61;
    double m_exhaust = 220;
    double m_fuel = 16.2;
};

#endif
