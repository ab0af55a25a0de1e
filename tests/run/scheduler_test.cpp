// The timers of the scheduler, ticked by hand, with runs against scripted children.

#include "core/processvalues.h"
#include "core/timestamp.h"
#include "core/weathercache.h"
#include "run/retrievalrun.h"
#include "run/scheduler.h"
#include "tests/run/runtest.h"

using namespace Tarnby;
using Tarnby::Test::ChildReply;
using Tarnby::Test::documentReply;
using Tarnby::Test::statusReply;

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
        scheduler.setHooks(hooks);
    }
    void freshStamps()
    {
        SaveCache("LastUpdated", "Weather", NowStamp());
        SaveCache("LastUpdated", "Alerts", NowStamp());
    }

    Tarnby::Test::ScriptedRunChildren children{
        [](const QString &) { return documentReply("doc"); }};
    SchedulerHooks hooks;
    Scheduler scheduler;
    QStringList calls;
};

TEST_F(SchedulerTest, TheRateChoosesTheTimer)
{
    const struct {
        const char *rate;
        bool timer1, realtime;
        int minutes;
    } rows[] = {{"Never auto update", false, false, 0},
                {"Every 0 minutes", false, false, 0},
                {"Every 2 hours", true, false, 120},
                {"Update in realtime", false, true, 5}};
    for (const auto &r : rows) {
        Scheduler fresh;
        SavePref("AutoUpdate", "Rate", r.rate);
        fresh.startAutoUpdate();
        EXPECT_EQ(fresh.Timer1().isActive(), r.timer1) << r.rate;
        EXPECT_EQ(fresh.RealtimeTimer().isActive(), r.realtime) << r.rate;
        EXPECT_EQ(schedulerValues().RealtimeActive, r.realtime) << r.rate;
        EXPECT_EQ(schedulerValues().UpdateRate, r.minutes) << r.rate;
    }
}

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

TEST_F(SchedulerTest, TheRealtimeStepFetchesLiveConditionsUnlessAFullRunIsDue)
{
    scheduler.RunRealtimeTimerProcedure(false);
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_TRUE(calls.isEmpty());
    scheduler.RunRealtimeTimerProcedure(false); // the run stamped the data fresh
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_EQ(calls, (QStringList{"live nws", "show '12:00','71'"}));
    EXPECT_EQ(schedulerValues().realtimeQueryInterval, 300);
    EXPECT_TRUE(schedulerValues().LastRealtimeQuery.isValid());
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
}

} // namespace
