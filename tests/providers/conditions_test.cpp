#include "providers/conditions.h"

#include "providers/readingrules.h"
#include "tests/providers/fakedatabase.h"
#include "tests/providers/livereadingtest.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using ConditionsTest = LiveReadingTest;

struct RateCase {
    const char *name;
    QString rate, pressure, lastPressure, expected, trend;
};

class PressureRate : public LiveReadingTest, public ::testing::WithParamInterface<RateCase>
{
};

TEST_P(PressureRate, RateAndTrendWord)
{
    const RateCase &c = GetParam();
    loadCache("Current/pressure-rate=" + c.rate + "\nCurrent/pressure=" + c.pressure +
              "\nCache/last-pressure=" + c.lastPressure + "\n");
    EXPECT_EQ(GetPressureRate(), c.expected);
    EXPECT_EQ(GetPressureText(true), c.pressure + " inches and " + c.trend);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PressureRate,
    ::testing::Values(RateCase{"ServiceRate", "-0.01", "29.92", "29.80", "-0.01", "falling"},
                      RateCase{"Rise", "", "29.92", "29.90", "+0.02", "rising"},
                      RateCase{"Fall", "N/A", "29.90", "29.92", "-0.02", "falling"},
                      RateCase{"NoChangeIsSteady", "", "29.92", "29.92", "+0.00", "steady"},
                      RateCase{"BelowAHundredthIsSteady", "", "29.921", "29.92", "+0.00", "steady"},
                      RateCase{"NoLastPressure", "", "29.92", "", "", "steady"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(ConditionsTest, PressureTextReadsTheTwinAndLeavesTheRateWithoutTrend)
{
    loadCache("Current/pressure-rate=+0.02\nCurrent/pressure-rateC=+0.7\nCurrent/"
              "pressure-highC=1016.3\n");
    EXPECT_EQ(GetPressureText(false), "N/A");
    EXPECT_EQ(GetPressureText(true, "-rate"), "+0.02 inches");
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

struct ConditionCase {
    const char *name;
    QString cache, zipCode, expected;
};

class CurrentCondition : public LiveReadingTest, public ::testing::WithParamInterface<ConditionCase>
{
};

TEST_P(CurrentCondition, FallsBackOnForecasts)
{
    SavePref("CityCode", "ZipCode", GetParam().zipCode);
    loadCache(GetParam().cache);
    EXPECT_EQ(GetCurrentCondition(), GetParam().expected);
}

const QString kForecasts = "Daily/short-title11=Showers\nHourly/weather-icon-description1=Cloudy\n";

INSTANTIATE_TEST_SUITE_P(
    Cases, CurrentCondition,
    ::testing::Values(ConditionCase{"Description", "Current/description=Sunny\n" + kForecasts,
                                    "50309", "Sunny"},
                      ConditionCase{"UsStationTakesTheHour", kForecasts, "50309", "Cloudy"},
                      ConditionCase{"InternationalTakesTheDay", kForecasts, "0", "Showers"},
                      ConditionCase{"NotAvailableTakesTheHour",
                                    "Current/description=N/A\n" + kForecasts, "0", "Cloudy"},
                      ConditionCase{"NothingAtAll", "", "50309", "N/A"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(ConditionsTest, HumidexNowAndForEachHour)
{
    loadCache("Current/temp=86\nCurrent/dew-point=68\nHourly/count=2\n"
              "Hourly/temperature1=86\nHourly/dew-point1=68\nHourly/temperature2=70\n"
              "Hourly/dew-point2=N/A\nHourly/temperature3=86\nHourly/dew-point3=68\n");
    UpdateHumidex();
    UpdateHourlyHumidex();
    EXPECT_EQ(current("humidexC"), "38");
    EXPECT_EQ(current("humidex"), "100");
    EXPECT_EQ(GetCache("Hourly", "humidex1C"), "38");
    // a missing reading: the twin says so, the Fahrenheit key reads 32
    EXPECT_EQ(GetCache("Hourly", "humidex2C"), "N/A");
    EXPECT_EQ(GetCache("Hourly", "humidex2"), "32");
    EXPECT_EQ(GetCache("Hourly", "humidex3"), ""); // beyond the count
}

struct WatchCase {
    const char *name;
    QString option, before, after;
    bool pops;
};

class ChangeDetection : public LiveReadingTest, public ::testing::WithParamInterface<WatchCase>
{
};

TEST_P(ChangeDetection, PopsOnceAtTheFirstWatchedChange)
{
    const WatchCase &c = GetParam();
    int balloons = 0;
    setConditionBalloonHandler([&] { ++balloons; });
    SavePref("TrayTooltip", "PopTrayBalloonWhen", c.option);
    loadCache("Current/station-id=DSMWB\nCurrent/temp=70\nCurrent/wind-speed=5\n" + c.before);
    const ConditionWatch watch(ConditionWatch::ObservedForm::ObDateKeys);
    loadCache("Current/temp=71\nCurrent/wind-speed=9\n" + c.after);
    EXPECT_EQ(watch.popIfChanged(), c.pops);
    EXPECT_EQ(balloons, c.pops ? 1 : 0);
    setConditionBalloonHandler({});
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ChangeDetection,
    ::testing::Values(
        WatchCase{"AnyLetterCase", "Temperature Changes", "", "", true},
        WatchCase{"TwoChangesOneBalloon", "temperature changes|wind changes", "", "", true},
        WatchCase{"UnwatchedChange", "humidity changes", "", "", false},
        WatchCase{"WholeWordsOnly", "high temperature changes", "", "", false},
        WatchCase{"NoOption", "", "", "", false},
        WatchCase{"StationChanged", "temperature changes", "", "Current/station-id=OTHER\n", false},
        WatchCase{"FirstValueAfterStart", "humidity changes", "", "Current/humidity=40\n", false},
        WatchCase{"ObservationTimeByItsParts", "last observed changes",
                  "Current/ob-date-hour-number=2\nCurrent/ob-date-minute-number=45\n",
                  "Current/ob-date-minute-number=50\n", true},
        WatchCase{"ConditionWords", "condition changes", "Current/description=Sunny\n",
                  "Current/description=Cloudy\n", true}),
    [](const auto &info) { return std::string(info.param.name); });

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
    EXPECT_EQ(row.Condition, "Sunny");
    EXPECT_EQ(row.DewPoint, "48.2");
    EXPECT_EQ(row.Temp, "71.6");
    EXPECT_EQ(row.TempRate, "1.3");
    EXPECT_EQ(row.Pressure, "29.92");
    EXPECT_EQ(row.PressureRate, "0.02");
    EXPECT_EQ(row.Image, "cond003");
    EXPECT_EQ(row.SunSet, "7:48 PM");
    EXPECT_EQ(row.DateObserved, "4/15/2024 2:45:00 PM");

    database.present = false;
    SaveObservation();
    EXPECT_EQ(database.rows.size(), 1);
}

struct RuleCase {
    const char *name;
    ReadingRule rule;
    QString unit, number, value, twin;
};

class ReadingRules : public LiveReadingTest, public ::testing::WithParamInterface<RuleCase>
{
};

TEST_P(ReadingRules, TwinInTheUsersUnit)
{
    const RuleCase &c = GetParam();
    process().UnitTemp = process().UnitWind = process().UnitBar = process().UnitPre = c.unit;
    const Reading reading = ApplyReadingRule(c.rule, c.number);
    EXPECT_EQ(reading.value, c.value);
    EXPECT_EQ(reading.twin, c.twin);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ReadingRules,
    ::testing::Values(
        RuleCase{"Fahrenheit", ReadingRule::Temperature, "F", "71.6", "71.6", "N/A"},
        RuleCase{"Celsius", ReadingRule::Temperature, "C", "71.6", "71.6", "22"},
        RuleCase{"Missing", ReadingRule::Temperature, "C", "", "N/A", "N/A"},
        RuleCase{"RateInCelsius", ReadingRule::Rate, "C", "1.3", "1.3", "2.3"},
        RuleCase{"RateNearZero", ReadingRule::Rate, "C", "0.02", "0.02", "0.0"},
        RuleCase{"RateInFahrenheit", ReadingRule::Rate, "F", "-1.3", "-1.3", "-1.3"},
        RuleCase{"RainInches", ReadingRule::Rain, "inches", "0.10", "0.10", "N/A"},
        RuleCase{"RainMillimetres", ReadingRule::Rain, "mm", "0.10", "0.10", "2.5"},
        RuleCase{"WindMph", ReadingRule::Wind, "mph", "12.4", "12.4", "N/A"},
        RuleCase{"WindKmh", ReadingRule::Wind, "km/h", "12.4", "12.4", "20.0"},
        RuleCase{"PressureHpa", ReadingRule::Pressure, "hPa", "29.92", "29.92", "1013.2"},
        RuleCase{"PressureMissing", ReadingRule::Pressure, "hPa", "N/A", "N/A", "N/A"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(ConditionsTest, CompassWordsAndOwnFeelsLike)
{
    const QList<QPair<QString, QString>> compass{{"0", "N"},     {"11.2", "N"},  {"11.3", "NNE"},
                                                 {"200", "SSW"}, {"348.8", "N"}, {"360", "N"},
                                                 {"-90", "W"},   {"NE", "NE"},   {"", ""}};
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
        loadCaseCache(name);
        ProcessPwsConditions(dataFile("weatherbug/" + name + ".txt"));
    }
};

TEST_F(PwsRecord, FullRecordGolden)
{
    read("pws-full");
    expectGolden("pws-full", dumpCache());
    EXPECT_FALSE(process().ProcessingConditions);
}

TEST_F(PwsRecord, ShortRecordStopsTheWalkAndKeepsTheFlagRaised)
{
    read("pws-short");
    expectGolden("pws-short", dumpCache());
    EXPECT_TRUE(process().ProcessingConditions);
    read("pws-full");
    EXPECT_FALSE(process().ProcessingConditions);
}

TEST_F(PwsRecord, TinyOrMissingRecordChangesNothing)
{
    SaveCache("Current", "temp", "50");
    for (const char *name : {"empty.json", "no-such-file.txt"}) {
        ProcessPwsConditions(dataFile(QStringLiteral("weatherbug/") + name));
        EXPECT_EQ(current("temp"), "50");
        EXPECT_FALSE(process().ProcessingConditions);
    }
}

TEST_F(PwsRecord, WatchingAfterTheWritesPopsNoBalloon)
{
    int balloons = 0;
    setConditionBalloonHandler([&] { ++balloons; });
    SavePref("TrayTooltip", "PopTrayBalloonWhen", "temperature changes|last observed changes");
    read("pws-full"); // temp goes from 50 to 71.6
    EXPECT_EQ(balloons, 0);
    setConditionBalloonHandler({});
}

} // namespace
