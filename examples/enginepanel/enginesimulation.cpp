#include "enginesimulation.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "Common/variantobject.h"
#include "DataLayer/idatapeer.h"
#include "DataLayer/idatapeerfactory.h"
#include "DataLayer/variableidentifier.h"

namespace {

const char* const Engine = "Engine";
const char* const Limits = "Engine\\Limits";
const char* const Ship = "Ship";
const char* const Bridge = "Ship\\Bridge";

const double Interval = 0.1;
const double IdleSpeed = 500;
const QStringList CylinderNames{"port 1", "port 2", "port 3", "starboard 1", "starboard 2", "starboard 3"};
const QVector<double> CylinderOffsets{-12, 4, -3, 9, 31, -7};

IDataPeer* Data()
{
    return Ovex_DataPeerFactory(false)->GetDataPeer(0);
}

void Write(const char* package, const char* name, const QVariant& value)
{
    Data()->ChangeValue(VariableIdentifier(name, package), value, IDataPeer::NoFlag);
}

QVariant Read(const char* package, const char* name)
{
    return Data()->GetValue(VariableIdentifier(name, package), QVariant());
}

/// Moves the value towards its target, as far as it gets in one interval.
void Approach(double* value, double target, double secondsToSettle)
{
    *value += (target - *value) * std::min(1.0, 3 * Interval / secondsToSettle);
}

QVariant Identity()
{
    VariantObject identity;
    identity.setProperty("model", "V6 diesel");
    identity.setProperty("serial", "40117");
    return identity.ToVariant();
}

} // namespace

EngineSimulation::EngineSimulation()
{
    Write(Engine, "identity", Identity());
    Write(Engine, "hours", 12480);
    Write(Engine, "mode", "automatic");
    Write(Engine, "running", true);
    Write(Engine, "tank", QVariantMap{{"litres", 2400}});
    Write(Engine, "cylinderNames", CylinderNames);
    Write(Engine, "limits", QVariantList{2000, 95});
    Write(Engine, "quiet", false);
    Write(Engine, "locked", false);
    Write(Limits, "oilPressure", 2.5);
    Write(Limits, "fuel", 15);
    Write(Ship, "vessel", QVariantMap{{"name", "Boreas"}, {"port", "Bergen"}});
    Write(Bridge, "startReleased", true);
    WriteReadings(true);
}

EngineSimulation::~EngineSimulation()
{
    Stop();
}

void EngineSimulation::Stop()
{
    requestInterruption();
    wait();
}

void EngineSimulation::run()
{
    while (!isInterruptionRequested()) {
        Step();
        msleep(ulong(1000 * Interval));
    }
}

void EngineSimulation::Step()
{
    const bool running = Read(Engine, "running").toBool();
    m_time += Interval;
    Approach(&m_speed, running ? 1780 + 14 * std::sin(m_time) : 0, 2);
    Approach(&m_temperature, running ? 83.5 + std::sin(m_time / 4) : 40, running ? 3 : 60);
    Approach(&m_exhaust, running ? 372 + 6 * std::sin(m_time / 2) : 60, running ? 3 : 30);
    m_fuel -= Interval * m_speed / 4000;
    if (m_fuel < 8)
        m_fuel = 96;
    WriteReadings(running);
}

void EngineSimulation::WriteReadings(bool running)
{
    // As the sensors give them; the form rounds what it shows.
    Write(Engine, "rpm", m_speed);
    Write(Engine, "gear", m_speed > 2 * IdleSpeed ? "ahead" : "neutral");
    Write(Engine, "oilPressure", m_speed / 400 + 0.1 * std::sin(3 * m_time));
    Write(Engine, "temperature", m_temperature);
    Write(Engine, "seaTemperature", 7 + std::sin(m_time / 9));
    Write(Engine, "fuel", m_fuel);
    // The valve follows its order a little later.
    Write(Engine, "valve", QVariantMap{{"ordered", running}, {"open", m_speed > IdleSpeed}});
    WriteExhaust();
    WriteMessage();
}

void EngineSimulation::WriteExhaust()
{
    QVariantList rows;
    QVariantList ranking;
    QVector<double> temperatures;
    for (int i = 0; i < CylinderOffsets.count(); ++i) {
        temperatures.append(m_exhaust + CylinderOffsets.at(i) + 2 * std::sin(m_time + i));
        ranking.append(i);
    }
    const double mean = std::accumulate(temperatures.begin(), temperatures.end(), 0.0) / temperatures.count();
    for (int i = 0; i < temperatures.count(); ++i) {
        rows.append(QVariantMap{{"Cylinder", CylinderNames.at(i)},
                                {"Exhaust °C", qRound(temperatures.at(i))},
                                {"to mean", qRound(temperatures.at(i) - mean)}});
    }
    std::sort(ranking.begin(), ranking.end(), [&](const QVariant& left, const QVariant& right) {
        return temperatures.at(left.toInt()) > temperatures.at(right.toInt());
    });
    Write(Engine, "cylinders", rows);
    Write(Engine, "ranking", ranking);
}

/// The variable is empty as long as there is nothing to say.
void EngineSimulation::WriteMessage()
{
    const bool reserve = m_fuel <= Read(Limits, "fuel").toInt();
    Write(Engine, "message", reserve ? QString("The fuel is down to %1 %.").arg(qRound(m_fuel)) : QVariant());
}
