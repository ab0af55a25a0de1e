#include "providers/conditions.h"

#include "providers/readingrules.h"
#include "tests/providers/fakedatabase.h"
#include "tests/providers/livereadingtest.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using ConditionsTest = LiveReadingTest;

TEST_F(ConditionsTest, PressureRateAndTrendWord)
{
    const struct {
        QString rate, pressure, lastPressure, expected, trend;
    } rows[] = {{"-0.01", "29.92", "29.80", "-0.01", "falling"}, // the service's own rate
                {"", "29.92", "29.90", "+0.02", "rising"},
                {"N/A", "29.90", "29.92", "-0.02", "falling"},
                {"", "29.921", "29.92", "+0.00", "steady"}, // below a hundredth
                {"", "29.92", "", "", "steady"}};
    for (const auto &r : rows) {
        SCOPED_TRACE(r.pressure.toStdString() + " after " + r.lastPressure.toStdString());
        loadCache("Current/pressure-rate=" + r.rate + "\nCurrent/pressure=" + r.pressure +
                  "\nCache/last-pressure=" + r.lastPressure + "\n");
        EXPECT_EQ(GetPressureRate(), r.expected);
        EXPECT_EQ(GetPressureText(true), r.pressure + " inches and " + r.trend);
    }
}

TEST_F(ConditionsTest, PressureTextReadsTheTwinAndLeavesTheRateWithoutTrend)
{
    loadCache("Current/pressure-rate=+0.02\nCurrent/pressure-rateC=+0.7\nCurrent/"
              "pressure-highC=1016.3\n");
    process().UnitBar = "hPa";
    EXPECT_EQ(GetPressureText(true, "-high"), "1016.3 hPa and rising");
    EXPECT_EQ(GetPressureText(true, "-rate"), "+0.7 hPa");
}

TEST_F(ConditionsTest, LastPressureStandsOneObservationBehind)
{
    loadCache("Current/observed=4/15/2024 2:00:00 PM\nCurrent/pressure=29.90\n");
    RememberConditions();
    StoreLastPressure(); // the same observation: nothing moves
    EXPECT_EQ(GetCache("Cache", "last-pressure"), "");

    loadCache("Current/observed=4/15/2024 2:15:00 PM\nCurrent/pressure=29.95\n");
    StoreLastPressure();
    EXPECT_EQ(GetCache("Cache", "last-pressure"), "29.90");

    RememberConditions();
    SaveCache("Current", "observed", "");
    StoreLastPressure(); // no observation time: nothing moves
    EXPECT_EQ(GetCache("Cache", "last-pressure"), "29.90");
}

TEST_F(ConditionsTest, CurrentConditionFallsBackOnForecasts)
{
    const QString forecasts =
        "Daily/short-title11=Showers\nHourly/weather-icon-description1=Cloudy\n";
    const struct {
        QString cache, zipCode, expected;
    } rows[] = {{"Current/description=Sunny\n" + forecasts, "50309", "Sunny"},
                {forecasts, "50309", "Cloudy"}, // a US station takes the hour
                {forecasts, "0", "Showers"},    // an international one the day
                {"Current/description=N/A\n" + forecasts, "0", "Cloudy"},
                {"", "50309", "N/A"}};
    for (const auto &r : rows) {
        SCOPED_TRACE(r.cache.toStdString() + " zip " + r.zipCode.toStdString());
        DeleteWholeCache();
        SavePref("CityCode", "ZipCode", r.zipCode);
        loadCache(r.cache);
        EXPECT_EQ(GetCurrentCondition(), r.expected);
    }
}

TEST_F(ConditionsTest, ChangeDetectionPopsOnceAtTheFirstWatchedChange)
{
    const struct {
        QString option, before, after;
        bool pops;
    } rows[] = {
        {"Temperature Changes|wind changes", "", "", true}, // any letter case
        {"humidity changes", "", "", false},
        {"high temperature changes", "", "", false},              // whole words only
        {"humidity changes", "", "Current/humidity=40\n", false}, // first value after start
        {"last observed changes",
         "Current/ob-date-hour-number=2\nCurrent/ob-date-minute-number=45\n",
         "Current/ob-date-minute-number=50\n", true},
        {"condition changes", "Current/description=Sunny\n", "Current/description=Cloudy\n", true}};
    int balloons = 0;
    setConditionBalloonHandler([&] { ++balloons; });
    for (const auto &r : rows) {
        SCOPED_TRACE(r.option.toStdString() + " / " + r.after.toStdString());
        DeleteWholeCache();
        balloons = 0;
        SavePref("TrayTooltip", "PopTrayBalloonWhen", r.option);
        loadCache("Current/station-id=DSMWB\nCurrent/temp=70\nCurrent/wind-speed=5\n" + r.before);
        const ConditionWatch watch(ConditionWatch::ObservedForm::ObDateKeys);
        loadCache("Current/temp=71\nCurrent/wind-speed=9\n" + r.after);
        EXPECT_EQ(watch.popIfChanged(), r.pops);
        EXPECT_EQ(balloons, r.pops ? 1 : 0);
    }
    setConditionBalloonHandler({});
}

TEST_F(ConditionsTest, MissingFreshValuesDoNotCountWhenAsked)
{
    int balloons = 0;
    setConditionBalloonHandler([&] { ++balloons; });
    SavePref("TrayTooltip", "PopTrayBalloonWhen", "temperature changes");
    SaveCache("Current", "temp", "70");
    const ConditionWatch watch;
    SaveCache("Current", "temp", "N/A");
    EXPECT_FALSE(watch.popIfChanged(true));
    EXPECT_TRUE(watch.popIfChanged());
    EXPECT_EQ(balloons, 1);
    setConditionBalloonHandler({});
}

TEST_F(ConditionsTest, SaveObservationHandsOverNeutralNumbers)
{
    FakeDatabase database;
    process().DecimalSymbol = ",";
    process().GroupSymbol = ".";
    process().NonUsNumberFormat = true;
    process().StationType = "CWOP";
    loadCache("Current/description=Sunny\nCurrent/dew-point=48,2\nCurrent/temp=71,6\n"
              "Current/temp-rate=+1,3\nCurrent/pressure=29,92\nCurrent/pressure-rate=+0,02\n"
              "Current/wind-direction=SSW\nCurrent/image-icon=cond003\n"
              "Sun/sunrise-time1=6:35 AM\nSun/sunset-time1=7:48 PM\n");
    SaveObservation(); // no observation time yet
    EXPECT_TRUE(database.rows.isEmpty());

    SaveCache("Current", "observed", "4/15/2024 2:45:00 PM");
    SaveObservation();
    ASSERT_EQ(database.rows.size(), 1);
    const CurrentObservationRow &row = database.rows[0].first;
    EXPECT_EQ(database.rows[0].second, 4);
    EXPECT_EQ(QStringList({row.Condition, row.DewPoint, row.TempRate, row.PressureRate, row.SunSet,
                           row.DateObserved}),
              QStringList({"Sunny", "48.2", "1.3", "0.02", "7:48 PM", "4/15/2024 2:45:00 PM"}));

    database.present = false;
    SaveObservation();
    EXPECT_EQ(database.rows.size(), 1);
}

TEST_F(ConditionsTest, ReadingRuleTwinInTheUsersUnit)
{
    const struct {
        ReadingRule rule;
        QString unit, number, value, twin;
    } rows[] = {{ReadingRule::Temperature, "C", "71.6", "71.6", "22"},
                {ReadingRule::Temperature, "C", "", "N/A", "N/A"},
                {ReadingRule::Rate, "C", "0.02", "0.02", "0.0"},
                {ReadingRule::Rain, "mm", "0.10", "0.10", "2.5"},
                {ReadingRule::Wind, "km/h", "12.4", "12.4", "20.0"},
                {ReadingRule::Pressure, "hPa", "29.92", "29.92", "1013.2"}};
    for (const auto &r : rows) {
        SCOPED_TRACE(r.number.toStdString() + " " + r.unit.toStdString());
        process().UnitTemp = process().UnitWind = process().UnitBar = process().UnitPre = r.unit;
        const Reading reading = ApplyReadingRule(r.rule, r.number);
        EXPECT_EQ(reading.value, r.value);
        EXPECT_EQ(reading.twin, r.twin);
    }
}

TEST_F(ConditionsTest, CompassWordsAndOwnFeelsLike)
{
    const QList<QPair<QString, QString>> compass{
        {"11.2", "N"}, {"11.3", "NNE"}, {"-90", "W"}, {"NE", "NE"}};
    for (const auto &[degrees, word] : compass)
        EXPECT_EQ(CompassWord(degrees), word) << degrees.toStdString();

    EXPECT_EQ(FeelsLikeText("50", "40", "10"), "34"); // wind chill
    EXPECT_EQ(FeelsLikeText("50", "40", "2"), "40");  // too little wind
    EXPECT_EQ(FeelsLikeText("50", "90", "5"), "95");  // heat index
    EXPECT_EQ(FeelsLikeText("50", "65", "20"), "65"); // in between
    EXPECT_EQ(FeelsLikeText("N/A", "90", "5"), "");
}

// Pipe-delimited live records.
class PwsRecord : public LiveReadingTest
{
protected:
    void read(const QString &name)
    {
        loadCacheFile("weatherbug/" + name + ".cache");
        ProcessPwsConditions(dataFile("weatherbug/" + name + ".txt"));
    }
};

TEST_F(PwsRecord, FullRecordGolden)
{
    read("pws-full");
    expectGoldenFile("weatherbug/pws-full.expected", dumpCache());
    EXPECT_FALSE(process().ProcessingConditions);
}

TEST_F(PwsRecord, ShortRecordStopsTheWalkAndKeepsTheFlagRaised)
{
    read("pws-short");
    expectGoldenFile("weatherbug/pws-short.expected", dumpCache());
    EXPECT_TRUE(process().ProcessingConditions);
    read("pws-full");
    EXPECT_FALSE(process().ProcessingConditions);
}

TEST_F(PwsRecord, TinyOrMissingRecordChangesNothingAndTheWritesPopNoBalloon)
{
    SaveCache("Current", "temp", "50");
    for (const char *name : {"empty.json", "no-such-file.txt"}) {
        ProcessPwsConditions(dataFile(QStringLiteral("weatherbug/") + name));
        EXPECT_EQ(current("temp"), "50");
        EXPECT_FALSE(process().ProcessingConditions);
    }
    int balloons = 0;
    setConditionBalloonHandler([&] { ++balloons; });
    SavePref("TrayTooltip", "PopTrayBalloonWhen", "temperature changes|last observed changes");
    read("pws-full"); // temp goes from 50 to 71.6
    EXPECT_EQ(balloons, 0);
    setConditionBalloonHandler({});
}

} // namespace
