#pragma once
// One retrieval run: every document of the selected station is downloaded by child
// processes, at most four at a time, handed to its parser, and the interface, tray,
// alerts and maps are refreshed through the hooks of run/runhooks.h. Progress goes out
// through run/runprogress.h.
//
// A job has 30 seconds and the downloads of a run 90 seconds in all; both limits follow
// the fetch layer's time scale (setFetchTimeScale), so tests can shorten them. The
// station is read from the settings (CityCode), not from the process values.

namespace Tarnby
{

// The timers a run stops and restarts around itself; the scheduler installs itself.
class RetrievalTimers
{
public:
    virtual ~RetrievalTimers() = default;
    virtual bool realtimeTimerActive() const = 0;
    virtual void setRealtimeTimerEnabled(bool enabled) = 0;
    virtual void setTimer1Enabled(bool enabled) = 0;
};

// nullptr: no timers (the command line). Not owned.
void setRetrievalTimers(RetrievalTimers *timers);

// The front door from the timers, menus and interface: stops the timers, runs
// DownloadTheWeather (twice for a manual run whose token was refused), stores the time
// stamps LastUpdated/Weather (not for alertsOnly) and LastUpdated/Alerts and restarts
// the timers. A manual run (automatic false) clears the failure flags of Conditions,
// Detailed and NwsDetailed first. resetFailures also zeroes the realtime error count,
// and asks the parsers to take every document as new.
void UpdateTheWeather(bool automatic, bool alertsOnly, bool resetFailures);

// The run itself. Returns at once when the map drawer is missing (with the
// missing-file message) or a run is already in progress. False only when the token was
// refused for a WeatherBug station; true in every other case, failures included. A
// failed manual run shows its message through ShowMessageBox.
bool DownloadTheWeather(bool automatic, bool alertsOnly, bool force);

} // namespace Tarnby
