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

struct RateCase {
    const char *rate;
    int minutes;
    bool realtime;
};

class UpdateRateTest : public ::testing::TestWithParam<RateCase>
{
};

TEST_P(UpdateRateTest, RateTextGivesMinutes)
{
    const UpdateRate rate = ParseUpdateRateText(QString::fromLatin1(GetParam().rate));
    EXPECT_EQ(rate.minutes, GetParam().minutes);
    EXPECT_EQ(rate.realtime, GetParam().realtime);
}

INSTANTIATE_TEST_SUITE_P(
    Rates, UpdateRateTest,
    ::testing::Values(RateCase{"Update in realtime", 5, true},
                      RateCase{"Update automatically", 5, true}, RateCase{"", 5, true},
                      RateCase{"Never auto update", 0, false}, RateCase{"Every hour", 60, false},
                      RateCase{"Every 2 hours", 120, false}, RateCase{"Every 5 hours", 300, false},
                      RateCase{"Every 15 minutes", 15, false},
                      RateCase{"Every 0 minutes", 0, false},
                      RateCase{"Every 40000 minutes", 0, false}, RateCase{"Whenever", 0, false}));

TEST(UpdateRateTest, AnEmptyRateReadsAsAutomatic)
{
    EXPECT_EQ(ParseUpdateRateText("").text, "Update automatically");
    EXPECT_EQ(ParseWallpaperRate("Every minute"), 1);
    EXPECT_EQ(ParseWallpaperRate("Every 3 hours"), 180);
    EXPECT_EQ(ParseWallpaperRate("Every 7 minutes"), 7);
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

TEST(Timer1Test, CountsMinutesUntilTheRateAndStartsAgain)
{
    SchedulerValues values;
    values.UpdateRate = 3;
    EXPECT_EQ(ticks(values, 5, false), (QList<bool>{false, false, false, true, false}));
    EXPECT_EQ(values.UpdateMinutes, 1);
}

TEST(Timer1Test, WithoutAutoRetryAFailedRunWaitsForTheRate)
{
    SchedulerValues values;
    values.UpdateRate = 3;
    values.LastRunFailed = true;
    EXPECT_EQ(ticks(values, 4, false), (QList<bool>{false, false, false, true}));
    EXPECT_FALSE(values.LastRunFailed);
}

TEST(Timer1Test, WithAutoRetryAFailedRunIsRepeatedEveryMinute)
{
    SchedulerValues values;
    values.UpdateRate = 60;
    values.LastRunFailed = true;
    EXPECT_EQ(ticks(values, 2, true), (QList<bool>{true, true}));
    EXPECT_TRUE(values.RetryingAfterFailure);
    EXPECT_EQ(values.UpdateMinutes, 2); // the retries still count towards the rate
}

TEST(Timer1Test, ABlockedRunStaysDueAndRunsAtTheFirstFreeTick)
{
    SchedulerValues values;
    values.UpdateRate = 1;
    values.UpdateMinutes = 1;
    bool saver = true;
    int asked = 0;
    const auto blocked = [&] {
        ++asked;
        return saver;
    };
    EXPECT_EQ(ticks(values, 2, false, blocked), (QList<bool>{false, false}));
    EXPECT_EQ(values.UpdateMinutes, 1);
    saver = false;
    EXPECT_EQ(ticks(values, 1, false, blocked), QList<bool>{true});
    EXPECT_EQ(asked, 3);
    EXPECT_EQ(values.UpdateMinutes, 0);
}

TEST(Timer1Test, TheBlockIsNotAskedWhileNoRunIsWanted)
{
    SchedulerValues values;
    values.UpdateRate = 10;
    ticks(values, 3, false, [] {
        ADD_FAILURE();
        return true;
    });
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

    values.LastRealtimeQuery = QDateTime();
    EXPECT_EQ(RealtimeTickRun(values, false, minutesAgo(1), kNow), RealtimeRun::Full);
}

TEST(RealtimeTickTest, NextIntervalFollowsTheProvidersPromise)
{
    EXPECT_EQ(NextRealtimeIntervalMs(false, true, 9), 60000);
    EXPECT_EQ(NextRealtimeIntervalMs(true, false, 9), 60000);
    EXPECT_EQ(NextRealtimeIntervalMs(true, true, 60), 60000);
    EXPECT_EQ(NextRealtimeIntervalMs(true, true, 9), 10000);
    EXPECT_EQ(NextRealtimeIntervalMs(true, true, 30), 30000);
}

TEST(RealtimeProcedureTest, FullRunsAfterFourteenMinutesAndNineForQuickStations)
{
    EXPECT_EQ(RealtimeProcedureRun(false, minutesAgo(15), minutesAgo(1), "KDSM", kNow),
              RealtimeRun::Full);
    EXPECT_EQ(RealtimeProcedureRun(false, "", minutesAgo(1), "KDSM", kNow), RealtimeRun::Full);
    EXPECT_EQ(RealtimeProcedureRun(false, minutesAgo(10), minutesAgo(1), "KDSM", kNow),
              RealtimeRun::None);
    for (const char *quick : {"p123", "P7"})
        EXPECT_EQ(RealtimeProcedureRun(false, minutesAgo(10), minutesAgo(1), quick, kNow),
                  RealtimeRun::Full)
            << quick;
    EXPECT_EQ(RealtimeProcedureRun(false, minutesAgo(10), minutesAgo(1), "pws1x", kNow),
              RealtimeRun::None);
}

TEST(RealtimeProcedureTest, AlertsAreCheckedAfterNineMinutes)
{
    EXPECT_EQ(RealtimeProcedureRun(false, minutesAgo(5), minutesAgo(10), "KDSM", kNow),
              RealtimeRun::AlertsOnly);
    EXPECT_EQ(RealtimeProcedureRun(true, minutesAgo(60), minutesAgo(8), "KDSM", kNow),
              RealtimeRun::None);
    EXPECT_EQ(RealtimeProcedureRun(true, minutesAgo(60), minutesAgo(10), "KDSM", kNow),
              RealtimeRun::AlertsOnly);
}

TEST(RealtimeProcedureTest, TenFailuresSilenceTheFetchForAnHour)
{
    SchedulerValues values;
    values.RealtimeErrorCount = 10;
    values.RealtimeLastError = kNow.addSecs(-59 * 60);
    ResetRealtimeErrorsIfDue(values, kNow);
    EXPECT_FALSE(RealtimeFetchAllowed(values, false, true));
    values.RealtimeLastError = kNow.addSecs(-61 * 60);
    ResetRealtimeErrorsIfDue(values, kNow);
    EXPECT_EQ(values.RealtimeErrorCount, 0);
    EXPECT_TRUE(RealtimeFetchAllowed(values, false, true));
    EXPECT_FALSE(RealtimeFetchAllowed(values, true, true));
    EXPECT_FALSE(RealtimeFetchAllowed(values, false, false));
}

TEST(RealtimeProcedureTest, QueryIntervalByGroup)
{
    EXPECT_EQ(RealtimeQueryIntervalFor("NWS", 9, true), 300);
    EXPECT_EQ(RealtimeQueryIntervalFor("WeatherBug", 9, true), 300);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 9, true), 30);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 120, true), 120);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 400, true), 300);
    EXPECT_EQ(RealtimeQueryIntervalFor("WUnderground", 9, false), 300);
}

TEST(TagTest, TimerTagsNameTheirJobsInAnyCase)
{
    const Timer5Jobs jobs = ParseTimer5Tag("UpdateWallpaper");
    EXPECT_TRUE(jobs.update);
    EXPECT_FALSE(jobs.check);
    EXPECT_TRUE(jobs.wallpaper);
    EXPECT_TRUE(ParseTimer5Tag("CHECK").check);
    EXPECT_EQ(ParseTimer10Tag("Reprocess"), Timer10Job::Reprocess);
    EXPECT_EQ(ParseTimer10Tag("update"), Timer10Job::Update);
    EXPECT_EQ(ParseTimer10Tag(""), Timer10Job::None);
}

TEST(Timer8Test, WallpaperIsDueWhenTheCountReachesTheRate)
{
    SchedulerValues values;
    QList<bool> due;
    for (int i = 0; i < 4; ++i)
        due.append(Timer8Tick(values, 3));
    EXPECT_EQ(due, (QList<bool>{false, false, true, false}));
    EXPECT_TRUE(Timer8Tick(values, 1));
}

TEST(TimeStampTest, StampsReadBackAndAgeInSeconds)
{
    EXPECT_EQ(ReadTimeStamp(TimeStamp(kNow)), kNow);
    EXPECT_EQ(ReadTimeStamp("2024-05-01"), QDateTime(QDate(2024, 5, 1), QTime(0, 0)));
    EXPECT_FALSE(ReadTimeStamp("N/A").isValid());
    EXPECT_EQ(StampAgeSeconds(minutesAgo(2), kNow), 120);
    EXPECT_FALSE(StampAgeSeconds("", kNow).has_value());
    EXPECT_TRUE(StampIsFresh(minutesAgo(14), 14 * 60, kNow));
    EXPECT_FALSE(StampIsFresh(minutesAgo(15), 14 * 60, kNow));
}

} // namespace
