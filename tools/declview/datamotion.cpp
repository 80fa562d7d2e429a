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
    connect(&m_timer, &QTimer::timeout, this, &DataMotion::Show);
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
    m_variables->Move(Time());
}

double DataMotion::Time() const
{
    return IsRunning() ? m_start + m_running.elapsed() / MillisecondsPerSecond : m_start;
}
