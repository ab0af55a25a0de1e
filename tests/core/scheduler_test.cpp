// The scheduler's decisions and the time stamps they read, at fixed times.

#include "core/scheduler.h"
#include "core/timestamp.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

const QDateTime kNow(QDate(2024, 5, 1), QTime(12, 0));

QString minutesAgo(int minutes)
{
    return TimeStamp(kNow.addSecs(-60 * minutes));
}

TEST(UpdateRateTest, RateTextGivesMinutes)
{
    const std::pair<const char *, int> rates[] = {{"Update in realtime", 5},
                                                  {"", 5},
                                                  {"Never auto update", 0},
                                                  {"Every hour", 60},
                                                  {"Every 5 hours", 300},
                                                  {"Every 15 minutes", 15},
                                                  {"Every 0 minutes", 0},
                                                  {"Every 40000 minutes", 0},
                                                  {"Whenever", 0}};
    for (const auto &[text, minutes] : rates)
        EXPECT_EQ(ParseUpdateRateText(text).minutes, minutes) << text;
    EXPECT_TRUE(ParseUpdateRateText("").realtime);
    EXPECT_FALSE(ParseUpdateRateText("Every hour").realtime);
    EXPECT_EQ(ParseWallpaperRate("Every minute"), 1);
}

// Ticks Timer1 and returns, per tick, whether a run was started.
QList<bool> ticks(SchedulerValues &values, int count, bool autoRetry,
                  const std::function<bool()> &blocked = {})
{
    QList<bool> runs;
    for (int i = 0; i < count; ++i)
        runs.append(Timer1Tick(values, autoRetry, blocked));
    return runs;
}

TEST(Timer1Test, AFailedRunWaitsForTheRateUnlessAutoRetryRepeatsIt)
{
    SchedulerValues values;
    values.UpdateRate = 3;
    values.LastRunFailed = true;
    EXPECT_EQ(ticks(values, 5, false), (QList<bool>{false, false, false, true, false}));
    EXPECT_FALSE(values.LastRunFailed);

    values = SchedulerValues{};
    values.UpdateRate = 60;
    values.LastRunFailed = true;
    EXPECT_EQ(ticks(values, 2, true), (QList<bool>{true, true}));
    EXPECT_TRUE(values.RetryingAfterFailure);
    EXPECT_EQ(values.UpdateMinutes, 2); // the retries still count towards the rate
}

TEST(Timer1Test, ABlockedRunStaysDueAndRunsAtTheFirstFreeTick)
{
    SchedulerValues values;
    values.UpdateRate = 2;
    bool saver = true;
    int asked = 0;
    const auto blocked = [&] {
        ++asked;
        return saver;
    };
    EXPECT_EQ(ticks(values, 4, false, blocked), (QList<bool>{false, false, false, false}));
    EXPECT_EQ(asked, 2); // asked only once the run was due
    EXPECT_EQ(values.UpdateMinutes, 2);
    saver = false;
    EXPECT_EQ(ticks(values, 1, false, blocked), QList<bool>{true});
    EXPECT_EQ(values.UpdateMinutes, 0);
}

TEST(RealtimeTickTest, ChoosesBetweenQueryAlertsAndNothing)
{
    SchedulerValues values;
    EXPECT_EQ(RealtimeTickRun(values, false, minutesAgo(1), kNow), RealtimeRun::Full);
    values.realtimeQueryInterval = 300;
    values.LastRealtimeQuery = kNow.addSecs(-20);
    EXPECT_EQ(RealtimeTickRun(values, false, minutesAgo(1), kNow), RealtimeRun::None);
    EXPECT_EQ(RealtimeTickRun(values, false, minutesAgo(15), kNow), RealtimeRun::AlertsOnly);
    EXPECT_EQ(RealtimeTickRun(values, false, "not a date", kNow), RealtimeRun::AlertsOnly);
    // A provider that updates often shortens the interval to 10 seconds.
    EXPECT_EQ(RealtimeTickRun(values, true, minutesAgo(1), kNow), RealtimeRun::Full);
    EXPECT_EQ(values.realtimeQueryInterval, 10);
}

TEST(RealtimeProcedureTest, FullRunsAfterFourteenMinutesNineForQuickStationsAlertsAfterNine)
{
    const auto run = [](bool alertsOnly, int weather, int alerts, const char *code) {
        return RealtimeProcedureRun(alertsOnly, minutesAgo(weather), minutesAgo(alerts), code,
                                    kNow);
    };
    EXPECT_EQ(run(false, 15, 1, "KDSM"), RealtimeRun::Full);
    EXPECT_EQ(run(false, 10, 1, "KDSM"), RealtimeRun::None);
    EXPECT_EQ(run(false, 10, 1, "p123"), RealtimeRun::Full);
    EXPECT_EQ(run(false, 10, 1, "pws1x"), RealtimeRun::None);
    EXPECT_EQ(run(false, 5, 10, "KDSM"), RealtimeRun::AlertsOnly);
    EXPECT_EQ(run(true, 60, 8, "KDSM"), RealtimeRun::None);
}

TEST(RealtimeProcedureTest, TenFailuresSilenceTheFetchForAnHour)
{
    int errors = 10;
    ResetRealtimeErrorsIfDue(errors, kNow.addSecs(-59 * 60), kNow);
    EXPECT_FALSE(RealtimeFetchAllowed(errors, false, true));
    ResetRealtimeErrorsIfDue(errors, kNow.addSecs(-61 * 60), kNow);
    EXPECT_TRUE(RealtimeFetchAllowed(errors, false, true));
    EXPECT_FALSE(RealtimeFetchAllowed(errors, true, true));
}

TEST(RealtimeProcedureTest, QueryIntervalByGroup)
{
    EXPECT_EQ(RealtimeQueryIntervalFor("NWS", 9, true), 300);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 120, true), 120);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 400, true), 300);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 9, false), 300);
}

TEST(TagTest, TimerTagsNameTheirJobsInAnyCase)
{
    const Timer5Jobs jobs = ParseTimer5Tag("UpdateWallpaper");
    EXPECT_TRUE(jobs.update && jobs.wallpaper && !jobs.check);
    EXPECT_EQ(ParseTimer10Tag("Reprocess"), Timer10Job::Reprocess);
    EXPECT_EQ(ParseTimer10Tag(""), Timer10Job::None);
}

} // namespace
