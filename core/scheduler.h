#pragma once
// What the timers decide, apart from the timers themselves: the auto-update rate, the
// minute count towards a retrieval, the realtime intervals and the tags of the timers
// that carry delayed jobs. The timer object of the run layer acts on these decisions;
// here they are plain functions of values and an explicit "now", so they can be tested
// with a fixed clock.

#include <QDateTime>
#include <QString>

#include <functional>

namespace Tarnby
{

// The scheduler's process values. The retrieval run sets LastRunFailed and reads
// TimerRun and RealtimeActive. The realtime error count and the time of the last
// error are process values (core/processvalues.h), since the providers count them.
struct SchedulerValues {
    int UpdateMinutes = 0; // minutes since the last scheduled run
    int UpdateRate = 0;    // minutes between scheduled runs; 0: never
    int WallpaperMinutes = 0;
    bool LastRunFailed = false;
    bool RetryingAfterFailure = false;
    bool TimerRun = false; // the run in progress came from Timer1
    bool RealtimeActive = false;
    int realtimeQueryInterval = 0; // seconds between realtime fetches
    QDateTime LastRealtimeQuery;
    int RealtimeSeconds = 0; // the update interval the Weather Underground provider reports
};

// The one instance. Tests may assign a fresh SchedulerValues{}.
SchedulerValues &schedulerValues();

inline const QString kNeverAutoUpdate = QStringLiteral("Never auto update");

struct UpdateRate {
    QString text; // the rate as stored, "Update automatically" for an empty one
    int minutes = 0;
    bool realtime = false; // one of the two rates served by the realtime timer
};

// AutoUpdate/Rate in minutes: "Update in realtime" and "Update automatically" 5,
// "Never auto update" 0, "Every hour" 60, "Every <n> hours" n * 60 (2 to 5),
// "Every <n> minutes" n. Any other text reads its number the lenient way, which gives
// 0 for a text without one. A count that does not fit 16 bits is 0.
UpdateRate ParseUpdateRateText(const QString &rate);
// Wallpaper/Rate in minutes: "Every minute" 1, otherwise as ParseUpdateRateText.
int ParseWallpaperRate(const QString &rate);

// One Timer1 tick. Counts the minute or decides on a run; true when
// UpdateTheWeather(true, false, false) is to run now. runBlocked is asked only when a
// run is wanted (screen saver with DoNotRetrieve, or offline with UpdateWhenConnected);
// a blocked run leaves the minute count alone, so the run stays due.
bool Timer1Tick(SchedulerValues &values, bool autoRetry, const std::function<bool()> &runBlocked);

enum class RealtimeRun { None, Full, AlertsOnly };

// The realtime tick's choice of RunRealtimeTimerProcedure: Full for (false), AlertsOnly
// for (true). A query interval of 300 becomes 10 while the provider's recent-update
// test holds.
RealtimeRun RealtimeTickRun(SchedulerValues &values, bool recentUpdate, const QString &alertsStamp,
                            const QDateTime &now);
// The realtime timer's next interval in milliseconds.
int NextRealtimeIntervalMs(bool weatherUndergroundStation, bool interfaceShown,
                           int realtimeSeconds);

// The retrieval RunRealtimeTimerProcedure starts, if any: a full run when the last one
// is older than 14 minutes (9 for a station code "p" followed by a number), else an
// alerts run when the last alert check is older than 9 minutes.
RealtimeRun RealtimeProcedureRun(bool alertsOnly, const QString &weatherStamp,
                                 const QString &alertsStamp, const QString &stationCode,
                                 const QDateTime &now);
// Ten realtime failures silence the realtime fetch for 60 minutes after the last one:
// the count is zeroed once that time has passed.
void ResetRealtimeErrorsIfDue(int &errorCount, const QDateTime &lastError, const QDateTime &now);
// connectionAllowed: online, or UpdateWhenConnected off.
bool RealtimeFetchAllowed(int errorCount, bool fullRunMade, bool connectionAllowed);
// The query interval after a realtime fetch for a station group.
int RealtimeQueryIntervalFor(const QString &group, int realtimeSeconds, bool recentUpdate);

// Timer5's tag, in any case, may name several jobs.
struct Timer5Jobs {
    bool update = false;
    bool check = false;
    bool wallpaper = false;
};
Timer5Jobs ParseTimer5Tag(const QString &tag);

enum class Timer10Job { None, Reprocess, Update };
Timer10Job ParseTimer10Tag(const QString &tag);

// One Timer8 tick: true when the wallpaper is due, which restarts the count.
bool Timer8Tick(SchedulerValues &values, int wallpaperRate);

} // namespace Tarnby
