#pragma once
// The timers that drive the program on its one thread: the minute count towards a
// retrieval (Timer1), the realtime updates, the delayed start-up jobs (Timer5), the
// wallpaper minutes (Timer8), the deferred jobs after an options change (Timer10), the
// forced retrieval after a station change (TimerUpdateWeather) and the two alternating
// flushes of the database queue (QueryTimer1, QueryTimer2). Every tick disables its own
// timer while it works, since the work pumps events. The decisions are core/scheduler's;
// the work that belongs to other layers comes through SchedulerHooks.

#include "run/retrievalrun.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>

namespace Tarnby
{

struct SchedulerHooks {
    // Live conditions of the realtime tick, one fetch per station group. Each returns
    // the argument list for the skin's refreshRealtimeData, empty when nothing came.
    std::function<QString()> liveWeatherBug;
    std::function<QString()> liveWUnderground;
    std::function<QString()> liveNws;
    std::function<QString()> liveCwop;
    // The Weather Underground provider's test that its last update came within the time
    // it promised.
    std::function<bool()> recentUpdate;
    // Shows a realtime reading: units appended, the skin's script (or RefreshInterface
    // for a text-only skin), the tray icon, the user's export and log file.
    std::function<void(const QString &arguments)> showRealtimeReading;
    std::function<void()> updateWallpaper;
    std::function<void(const QString &manual)> checkForUpdate;
    // Flushes the queued database statements (RunQueryInsertsNow).
    std::function<void()> runQueryInsertsNow;
    // RefreshInterface(false, true) after an options change that kept the station.
    std::function<void()> refreshInterface;
    std::function<void()> reprocessForecasts;
    std::function<void()> refreshTray;
    std::function<void()> rebuildMapMenu;
    // Whether the options change behind a Timer10 "update" chose another station.
    std::function<bool()> stationChanged;
};

class Scheduler : public QObject, public RetrievalTimers
{
    Q_OBJECT

public:
    // The timers in the state in which the program starts: all off but QueryTimer1.
    // The scheduler installs itself as the retrieval run's timers while it lives.
    explicit Scheduler(SchedulerHooks hooks = {}, QObject *parent = nullptr);
    ~Scheduler() override;
    void setHooks(SchedulerHooks hooks);

    // Reads AutoUpdate/Rate into UpdateRate and returns the rate's text. With
    // startRealtime, a realtime rate starts the realtime timer unless it runs.
    QString ParseUpdateRate(bool startRealtime);
    void StartRealtime();
    void StopRealtime(bool clearFlag);
    // A realtime step: a full or alerts retrieval when one is due, else the live
    // conditions of the station's group.
    void RunRealtimeTimerProcedure(bool alertsOnly);

    // Start-up: the rate starts the realtime timer or, above zero minutes, Timer1.
    void startAutoUpdate();
    // Adds a word ("Update", "Check", "Wallpaper") to Timer5's tag.
    void addTimer5Job(const QString &word);
    // Enables Timer5 when its tag names a job.
    void startTimer5();
    // Runs "reprocess" or "update" a second later.
    void requestTimer10(const QString &tag);
    // A forced retrieval after a station change, as soon as the event loop runs.
    void requestUpdateAfterStationChange();
    void setWallpaperTimerEnabled(bool enabled);

    const QTimer &Timer1() const { return m_timer1; }
    const QTimer &RealtimeTimer() const { return m_realtimeTimer; }
    const QTimer &Timer5() const { return m_timer5; }
    const QTimer &Timer8() const { return m_timer8; }
    const QTimer &Timer10() const { return m_timer10; }
    const QTimer &TimerUpdateWeather() const { return m_timerUpdateWeather; }
    const QTimer &QueryTimer1() const { return m_queryTimer1; }
    const QTimer &QueryTimer2() const { return m_queryTimer2; }
    QString timer5Tag() const { return m_timer5Tag; }

    bool realtimeTimerActive() const override;
    void setRealtimeTimerEnabled(bool enabled) override;
    void setTimer1Enabled(bool enabled) override;

public slots:
    void Timer1_Timer();
    void RealtimeTimer_Timer();
    void Timer5_Timer();
    void Timer8_Timer();
    void Timer10_Timer();
    void TimerUpdateWeather_Timer();
    void QueryTimer1_Timer();
    void QueryTimer2_Timer();

private:
    void setUpTimer(QTimer &timer, int intervalMs, void (Scheduler::*tick)());
    void fetchLiveConditions();
    bool recentUpdate() const;
    void updateWallpaperWhenOnline();

    SchedulerHooks m_hooks;
    QTimer m_timer1;
    QTimer m_realtimeTimer;
    QTimer m_timer5;
    QTimer m_timer8;
    QTimer m_timer10;
    QTimer m_timerUpdateWeather;
    QTimer m_queryTimer1;
    QTimer m_queryTimer2;
    QString m_timer5Tag;
    QString m_timer10Tag;
};

} // namespace Tarnby
