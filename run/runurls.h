#pragma once
// The addresses of a run's download slots.

#include "run/slots.h"

#include <QString>

#include <array>

namespace Tarnby
{

struct RunUrlInput {
    QString group; // StationGroup of the selection
    bool international = false;
    QString code;
    QString latitude; // as stored in the selection
    QString longitude;
    QString token;    // the Pulse API token; may be empty
    QString pulseUrl; // the Pulse API root in force
};

class RunUrls
{
public:
    const QString &operator[](Slot slot) const { return m_urls[static_cast<int>(slot)]; }
    QString &operator[](Slot slot) { return m_urls[static_cast<int>(slot)]; }

private:
    std::array<QString, kSlotCount> m_urls;
};

// A latitude or longitude cut, not rounded, to three decimals at the position of its
// "."; a value without "." stays whole.
QString CutCoordinate(const QString &value);

// Detailed, Hourly, Alerts and UV from the Pulse API (Alerts of a US station from the
// NWS API, with the full position), Conditions for a CWOP station from MesoWest, Links
// for a WeatherBug station from the WeatherBug web host, and the NWS text forecast
// (NwsDetailed) for a US station. Other slots stay empty. Every address has passed
// RelayIfOldSystem.
RunUrls BuildRunUrls(const RunUrlInput &input);

} // namespace Tarnby
