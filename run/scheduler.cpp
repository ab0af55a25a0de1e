#include "run/scheduler.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/scheduler.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "providers/stationselection.h"
#include "retrieval/fetch.h"
#include "run/runhooks.h"
#include "run/useractivity.h"

#include <utility>

namespace Tarnby
{

namespace
{

constexpr int kMinuteMs = 60000;
constexpr int kTimer5Ms = 30000;
constexpr int kTimer10Ms = 1000;
constexpr int kAtOnceMs = 1;
constexpr int kDefaultQuerySeconds = 300;

const QString kTrue = QStringLiteral("True");
const QString kLastUpdated = QStringLiteral("LastUpdated");

// A fault inside a tick is logged and passed over, so the tick still re-enables its
// timer and the chain never stops for good.
template <class Work> void guarded(const char *tick, Work work)
{
    LogFaults(QStringLiteral("frmMisc.") + QLatin1String(tick), work);
}

bool connectionAllowed()
{
    return !process().UpdateWhenConnected || IsOnline();
}

} // namespace

Scheduler::Scheduler(SchedulerHooks hooks, QObject *parent)
    : QObject(parent), m_hooks(std::move(hooks))
{
    setUpTimer(m_timer1, kMinuteMs, &Scheduler::Timer1_Timer);
    setUpTimer(m_realtimeTimer, kAtOnceMs, &Scheduler::RealtimeTimer_Timer);
    setUpTimer(m_timer5, kTimer5Ms, &Scheduler::Timer5_Timer);
    setUpTimer(m_timer8, kMinuteMs, &Scheduler::Timer8_Timer);
    setUpTimer(m_timer10, kTimer10Ms, &Scheduler::Timer10_Timer);
    setUpTimer(m_timerUpdateWeather, kAtOnceMs, &Scheduler::TimerUpdateWeather_Timer);
    setUpTimer(m_queryTimer1, kMinuteMs, &Scheduler::QueryTimer1_Timer);
    setUpTimer(m_queryTimer2, kMinuteMs, &Scheduler::QueryTimer2_Timer);
    m_queryTimer1.start();
    setRetrievalTimers(this);
}

Scheduler::~Scheduler()
{
    setRetrievalTimers(nullptr);
}

void Scheduler::setHooks(SchedulerHooks hooks)
{
    m_hooks = std::move(hooks);
}

void Scheduler::setUpTimer(QTimer &timer, int intervalMs, void (Scheduler::*tick)())
{
    timer.setInterval(intervalMs);
    connect(&timer, &QTimer::timeout, this, tick);
}

QString Scheduler::ParseUpdateRate(bool startRealtime)
{
    const UpdateRate rate =
        ParseUpdateRateText(GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("Rate")));
    schedulerValues().UpdateRate = rate.minutes;
    if (startRealtime && rate.realtime && !m_realtimeTimer.isActive()) StartRealtime();
    return rate.text;
}

void Scheduler::StartRealtime()
{
    StopRealtime(false);
    m_realtimeTimer.setInterval(kAtOnceMs);
    m_realtimeTimer.start();
    schedulerValues().RealtimeActive = true;
}

void Scheduler::StopRealtime(bool clearFlag)
{
    m_realtimeTimer.stop();
    schedulerValues().realtimeQueryInterval = 0;
    if (clearFlag) schedulerValues().RealtimeActive = false;
}

void Scheduler::startAutoUpdate()
{
    const bool realtime = ParseUpdateRateText(ParseUpdateRate(true)).realtime;
    if (!realtime && schedulerValues().UpdateRate > 0) m_timer1.start();
}

void Scheduler::addTimer5Job(const QString &word)
{
    m_timer5Tag += word;
}

void Scheduler::startTimer5()
{
    if (!m_timer5Tag.isEmpty()) m_timer5.start();
}

void Scheduler::requestTimer10(const QString &tag)
{
    m_timer10Tag = tag;
    m_timer10.start();
}

void Scheduler::requestUpdateAfterStationChange()
{
    m_timerUpdateWeather.start();
}

void Scheduler::setWallpaperTimerEnabled(bool enabled)
{
    enabled ? m_timer8.start() : m_timer8.stop();
}

bool Scheduler::realtimeTimerActive() const
{
    return m_realtimeTimer.isActive();
}

void Scheduler::setRealtimeTimerEnabled(bool enabled)
{
    enabled ? m_realtimeTimer.start() : m_realtimeTimer.stop();
}

void Scheduler::setTimer1Enabled(bool enabled)
{
    enabled ? m_timer1.start() : m_timer1.stop();
}

bool Scheduler::recentUpdate() const
{
    return m_hooks.recentUpdate && m_hooks.recentUpdate();
}

void Scheduler::updateWallpaperWhenOnline()
{
    if (connectionAllowed()) callHook(m_hooks.updateWallpaper);
}

void Scheduler::Timer1_Timer()
{
    m_timer1.stop();
    guarded("Timer1_Timer", [] {
        SchedulerValues &values = schedulerValues();
        const bool autoRetry =
            GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("AutoRetry")) == kTrue;
        const auto blocked = [] {
            const bool saverBlocks =
                GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("DoNotRetrieve")) == kTrue &&
                ScreenSaverRunning();
            return saverBlocks || !connectionAllowed();
        };
        if (!Timer1Tick(values, autoRetry, blocked)) return;
        values.TimerRun = true;
        UpdateTheWeather(true, false, false);
        values.TimerRun = false;
    });
    m_timer1.start();
}

void Scheduler::RealtimeTimer_Timer()
{
    SchedulerValues &values = schedulerValues();
    m_realtimeTimer.stop();
    if (!values.RealtimeActive) {
        Log(QStringLiteral(" --- frmMisc.RealtimeTimer_Timer (Disabled)"));
        return;
    }
    Log(QStringLiteral(" --- frmMisc.RealtimeTimer_Timer (realtimeQueryInterval = %1)")
            .arg(values.realtimeQueryInterval));
    guarded("RealtimeTimer_Timer", [this, &values] {
        const bool recent = values.realtimeQueryInterval == kDefaultQuerySeconds && recentUpdate();
        const RealtimeRun run = RealtimeTickRun(
            values, recent, GetCache(kLastUpdated, QStringLiteral("Alerts")), clock().now());
        if (run != RealtimeRun::None) RunRealtimeTimerProcedure(run == RealtimeRun::AlertsOnly);
    });
    m_realtimeTimer.setInterval(
        NextRealtimeIntervalMs(StationGroup() == QStringLiteral("WUnderground"),
                               process().InterfaceShown, values.RealtimeSeconds));
    m_realtimeTimer.start();
}

void Scheduler::RunRealtimeTimerProcedure(bool alertsOnly)
{
    SchedulerValues &values = schedulerValues();
    const RealtimeRun run = RealtimeProcedureRun(
        alertsOnly, GetCache(kLastUpdated, QStringLiteral("Weather")),
        GetCache(kLastUpdated, QStringLiteral("Alerts")), process().CityCode, clock().now());
    if (run != RealtimeRun::None) UpdateTheWeather(true, run == RealtimeRun::AlertsOnly, false);
    ProcessValues &pv = process();
    ResetRealtimeErrorsIfDue(pv.RealtimeErrorCount, pv.RealtimeLastError, clock().now());
    if (RealtimeFetchAllowed(pv.RealtimeErrorCount, run == RealtimeRun::Full, connectionAllowed()))
        fetchLiveConditions();
    if (values.realtimeQueryInterval == 0) values.realtimeQueryInterval = kDefaultQuerySeconds;
    if (!alertsOnly) values.LastRealtimeQuery = clock().now();
}

void Scheduler::fetchLiveConditions()
{
    const QString group = StationGroup();
    const bool wunderground = group == QStringLiteral("WUnderground");
    const std::function<QString()> &fetch = wunderground ? m_hooks.liveWUnderground
                                            : group == QStringLiteral("NWS") ? m_hooks.liveNws
                                            : group == QStringLiteral("CWOP")
                                                ? m_hooks.liveCwop
                                                : m_hooks.liveWeatherBug;
    const QString arguments = fetch ? fetch() : QString();
    SchedulerValues &values = schedulerValues();
    values.realtimeQueryInterval =
        RealtimeQueryIntervalFor(group, values.RealtimeSeconds, wunderground && recentUpdate());
    if (!arguments.isEmpty() && m_hooks.showRealtimeReading) m_hooks.showRealtimeReading(arguments);
}

void Scheduler::Timer5_Timer()
{
    m_timer5.stop();
    guarded("Timer5_Timer", [this] {
        const Timer5Jobs jobs = ParseTimer5Tag(m_timer5Tag);
        if (jobs.update) UpdateTheWeather(true, false, false);
        if (jobs.check && m_hooks.checkForUpdate) m_hooks.checkForUpdate(QStringLiteral("No"));
        if (jobs.wallpaper) updateWallpaperWhenOnline();
    });
    m_timer5Tag.clear();
}

void Scheduler::Timer8_Timer()
{
    m_timer8.stop();
    guarded("Timer8_Timer", [this] {
        const int rate =
            ParseWallpaperRate(GetPref(QStringLiteral("Wallpaper"), QStringLiteral("Rate")));
        if (!Timer8Tick(schedulerValues(), rate)) return;
        const bool saverPauses =
            GetPref(QStringLiteral("Wallpaper"), QStringLiteral("ScreenSaverRunning")) == kTrue &&
            ScreenSaverRunning();
        if (!saverPauses) updateWallpaperWhenOnline();
    });
    m_timer8.start();
}

void Scheduler::Timer10_Timer()
{
    m_timer10.stop();
    guarded("Timer10_Timer", [this] {
        switch (ParseTimer10Tag(m_timer10Tag)) {
        case Timer10Job::Reprocess:
            callHook(m_hooks.reprocessForecasts);
            callHook(m_hooks.refreshTray);
            break;
        case Timer10Job::Update:
            if (m_hooks.stationChanged && m_hooks.stationChanged())
                UpdateTheWeather(true, false, false);
            else
                callHook(m_hooks.refreshInterface);
            callHook(m_hooks.rebuildMapMenu);
            break;
        case Timer10Job::None:
            break;
        }
    });
    m_timer10Tag.clear();
}

void Scheduler::TimerUpdateWeather_Timer()
{
    m_timerUpdateWeather.stop();
    guarded("TimerUpdateWeather_Timer", [] {
        // Nothing may count as seen for the new station.
        for (const char *key : {"CurrentTimeStamp", "DetailedTimeStamp", "HourlyTimeStamp", "Links",
                                "Map", "Weather"})
            SaveCache(kLastUpdated, QLatin1String(key), QString());
        UpdateTheWeather(false, false, true);
    });
}

void Scheduler::QueryTimer1_Timer()
{
    m_queryTimer1.stop();
    guarded("QueryTimer1_Timer", [this] { callHook(m_hooks.runQueryInsertsNow); });
    m_queryTimer2.start();
}

void Scheduler::QueryTimer2_Timer()
{
    m_queryTimer2.stop();
    guarded("QueryTimer2_Timer", [this] { callHook(m_hooks.runQueryInsertsNow); });
    m_queryTimer1.start();
}

} // namespace Tarnby
