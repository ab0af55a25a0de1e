// The timers of the scheduler, ticked by hand, with runs against scripted children.

#include "core/timestamp.h"
#include "core/weathercache.h"
#include "run/retrievalrun.h"
#include "run/scheduler.h"
#include "tests/run/runtest.h"

using namespace Tarnby;
using Tarnby::Test::ChildAnswer;

namespace
{

class SchedulerTest : public Tarnby::Test::RunTest
{
protected:
    SchedulerTest()
    {
        selectStation({"KDSM", "NWS", "50309"});
        hooks.liveNws = [this] {
            calls.append("live nws");
            return QStringLiteral("'12:00','71'");
        };
        hooks.liveWUnderground = [this] {
            calls.append("live wu");
            return QString();
        };
        hooks.recentUpdate = [] { return true; };
        hooks.showRealtimeReading = [this](const QString &arguments) {
            calls.append("show " + arguments);
        };
        hooks.checkForUpdate = [this](const QString &manual) { calls.append("check " + manual); };
        hooks.updateWallpaper = [this] { calls.append("wallpaper"); };
        hooks.runQueryInsertsNow = [this] { calls.append("queries"); };
        hooks.reprocessForecasts = [this] { calls.append("reprocess"); };
        hooks.refreshTray = [this] { calls.append("tray"); };
        hooks.refreshInterface = [this] { calls.append("refresh"); };
        hooks.rebuildMapMenu = [this] { calls.append("map menu"); };
        hooks.stationChanged = [] { return false; };
        scheduler.setHooks(hooks);
    }
    void freshStamps()
    {
        SaveCache("LastUpdated", "Weather", NowStamp());
        SaveCache("LastUpdated", "Alerts", NowStamp());
    }

    Tarnby::Test::ScriptedRunChildren children{
        [](const QString &) { return ChildAnswer::ok("doc"); }};
    SchedulerHooks hooks;
    Scheduler scheduler;
    QStringList calls;
};

TEST_F(SchedulerTest, StartsWithOnlyTheFirstQueryTimerRunning)
{
    EXPECT_TRUE(scheduler.QueryTimer1().isActive());
    for (const QTimer *timer :
         {&scheduler.Timer1(), &scheduler.RealtimeTimer(), &scheduler.Timer5(), &scheduler.Timer8(),
          &scheduler.Timer10(), &scheduler.TimerUpdateWeather(), &scheduler.QueryTimer2()})
        EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(scheduler.Timer1().interval(), 60000);
    EXPECT_EQ(scheduler.Timer5().interval(), 30000);
    EXPECT_EQ(scheduler.Timer10().interval(), 1000);
}

struct AutoUpdateCase {
    const char *rate;
    bool timer1;
    bool realtime;
    int minutes;
};

class AutoUpdateTest : public SchedulerTest, public ::testing::WithParamInterface<AutoUpdateCase>
{
};

TEST_P(AutoUpdateTest, TheRateChoosesTheTimer)
{
    SavePref("AutoUpdate", "Rate", GetParam().rate);
    scheduler.startAutoUpdate();
    EXPECT_EQ(scheduler.Timer1().isActive(), GetParam().timer1);
    EXPECT_EQ(scheduler.RealtimeTimer().isActive(), GetParam().realtime);
    EXPECT_EQ(schedulerValues().RealtimeActive, GetParam().realtime);
    EXPECT_EQ(schedulerValues().UpdateRate, GetParam().minutes);
}

INSTANTIATE_TEST_SUITE_P(Rates, AutoUpdateTest,
                         ::testing::Values(AutoUpdateCase{"Never auto update", false, false, 0},
                                           AutoUpdateCase{"Every 0 minutes", false, false, 0},
                                           AutoUpdateCase{"Every 2 hours", true, false, 120},
                                           AutoUpdateCase{"", false, true, 5},
                                           AutoUpdateCase{"Update in realtime", false, true, 5}));

TEST_F(SchedulerTest, ATimer1RunIsMarkedAsTheTimersAndTimer1GoesOn)
{
    SavePref("AutoUpdate", "Rate", "Every 2 hours");
    schedulerValues().UpdateRate = 120;
    schedulerValues().UpdateMinutes = 120;
    QList<bool> timerRun;
    registerDownloadKind("NDFD", [&](const QString &, bool, bool) {
        timerRun.append(schedulerValues().TimerRun);
        timerRun.append(scheduler.Timer1().isActive());
    });
    scheduler.Timer1_Timer();
    EXPECT_EQ(timerRun, (QList<bool>{true, false}));
    EXPECT_FALSE(schedulerValues().TimerRun);
    EXPECT_TRUE(scheduler.Timer1().isActive());
    EXPECT_EQ(schedulerValues().UpdateMinutes, 0);
}

TEST_F(SchedulerTest, AScreenSaverHoldsTheRunBackWhenAskedTo)
{
    SavePref("AutoUpdate", "DoNotRetrieve", "True");
    activity.saver = true;
    schedulerValues().UpdateRate = 5;
    schedulerValues().UpdateMinutes = 5;
    scheduler.Timer1_Timer();
    EXPECT_TRUE(outcomes.isEmpty());
    EXPECT_EQ(schedulerValues().UpdateMinutes, 5);
    activity.saver = false;
    scheduler.Timer1_Timer();
    EXPECT_EQ(outcomes.size(), 1);
}

TEST_F(SchedulerTest, ARunHoldsTheRealtimeTimerAndStartsItAgain)
{
    SavePref("AutoUpdate", "Rate", "Update in realtime");
    scheduler.StartRealtime();
    QList<bool> during;
    registerDownloadKind("NDFD", [&](const QString &, bool, bool) {
        during.append(scheduler.RealtimeTimer().isActive());
        during.append(scheduler.Timer1().isActive());
    });
    UpdateTheWeather(true, false, true);
    EXPECT_EQ(during, (QList<bool>{false, false}));
    EXPECT_TRUE(scheduler.RealtimeTimer().isActive());
    EXPECT_FALSE(scheduler.Timer1().isActive());
}

TEST_F(SchedulerTest, ADisabledRealtimeTickStopsItsTimer)
{
    scheduler.StartRealtime();
    scheduler.StopRealtime(true);
    scheduler.setRealtimeTimerEnabled(true);
    scheduler.RealtimeTimer_Timer();
    EXPECT_FALSE(scheduler.RealtimeTimer().isActive());
    EXPECT_TRUE(logged(" --- frmMisc.RealtimeTimer_Timer (Disabled)"));
}

TEST_F(SchedulerTest, FreshDataMakeTheRealtimeStepFetchLiveConditions)
{
    freshStamps();
    scheduler.RunRealtimeTimerProcedure(false);
    EXPECT_EQ(calls, (QStringList{"live nws", "show '12:00','71'"}));
    EXPECT_TRUE(children.urls.isEmpty());
    EXPECT_EQ(schedulerValues().realtimeQueryInterval, 300);
    EXPECT_EQ(schedulerValues().LastRealtimeQuery, Tarnby::clock().now());
}

TEST_F(SchedulerTest, StaleDataMakeTheRealtimeStepAFullRunWithoutLiveFetch)
{
    scheduler.RunRealtimeTimerProcedure(false);
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_TRUE(calls.isEmpty());
    EXPECT_EQ(schedulerValues().realtimeQueryInterval, 300);
}

TEST_F(SchedulerTest, AProviderPromisingNineSecondsIsAskedEveryThirtyAndTickedEveryTen)
{
    selectStation({"IAMES12", "PWS (WUnderground)", "50010"});
    freshStamps();
    process().InterfaceShown = true;
    schedulerValues().RealtimeSeconds = 9;
    scheduler.StartRealtime();
    scheduler.RealtimeTimer_Timer();
    EXPECT_EQ(calls, QStringList{"live wu"});
    EXPECT_EQ(schedulerValues().realtimeQueryInterval, 30);
    EXPECT_EQ(scheduler.RealtimeTimer().interval(), 10000);
    EXPECT_TRUE(scheduler.RealtimeTimer().isActive());
    EXPECT_TRUE(logged(" --- frmMisc.RealtimeTimer_Timer (realtimeQueryInterval = 0)"));
}

TEST_F(SchedulerTest, Timer5RunsEveryJobOfItsTagOnce)
{
    scheduler.addTimer5Job("Update");
    scheduler.addTimer5Job("Check");
    scheduler.startTimer5();
    EXPECT_TRUE(scheduler.Timer5().isActive());
    scheduler.Timer5_Timer();
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_EQ(calls, QStringList{"check No"});
    EXPECT_TRUE(scheduler.timer5Tag().isEmpty());
    EXPECT_FALSE(scheduler.Timer5().isActive());
}

TEST_F(SchedulerTest, Timer10ReprocessesOrRefreshes)
{
    scheduler.requestTimer10("reprocess");
    scheduler.Timer10_Timer();
    scheduler.requestTimer10("update");
    scheduler.Timer10_Timer();
    EXPECT_EQ(calls, (QStringList{"reprocess", "tray", "refresh", "map menu"}));
    EXPECT_FALSE(scheduler.Timer10().isActive());
    EXPECT_TRUE(outcomes.isEmpty());
}

TEST_F(SchedulerTest, TheQueryTimersTakeTurns)
{
    scheduler.QueryTimer1_Timer();
    EXPECT_FALSE(scheduler.QueryTimer1().isActive());
    EXPECT_TRUE(scheduler.QueryTimer2().isActive());
    scheduler.QueryTimer2_Timer();
    EXPECT_TRUE(scheduler.QueryTimer1().isActive());
    EXPECT_FALSE(scheduler.QueryTimer2().isActive());
    EXPECT_EQ(calls, (QStringList{"queries", "queries"}));
}

TEST_F(SchedulerTest, AStationChangeForgetsWhatWasSeenAndRetrieves)
{
    SaveCache("LastUpdated", "HourlyTimeStamp", "stamp");
    schedulerValues().RealtimeErrorCount = 10;
    scheduler.requestUpdateAfterStationChange();
    scheduler.TimerUpdateWeather_Timer();
    EXPECT_EQ(GetCache("LastUpdated", "HourlyTimeStamp"), "");
    EXPECT_EQ(schedulerValues().RealtimeErrorCount, 0);
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_FALSE(scheduler.TimerUpdateWeather().isActive());
}

TEST_F(SchedulerTest, WallpaperFollowsItsRateAndTheScreenSaver)
{
    SavePref("Wallpaper", "Rate", "Every minute");
    scheduler.Timer8_Timer();
    SavePref("Wallpaper", "ScreenSaverRunning", "True");
    activity.saver = true;
    scheduler.Timer8_Timer();
    EXPECT_EQ(calls, QStringList{"wallpaper"});
    EXPECT_TRUE(scheduler.Timer8().isActive());
}

} // namespace
