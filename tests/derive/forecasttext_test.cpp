#include "derive/forecasttext.h"

#include "core/weathercache.h"
#include "tests/derive/localecase.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using ForecastTextTest = LocaleTest;

struct RewriteCase {
    const char *temp;
    bool both;
    const char *rain;
    const char *wind;
    const char *text;
    const char *expected; // "." decimals
};

const RewriteCase kRewrites[] = {
    {"F", false, "inches", "mph", "HIGHS IN THE LOW 50S", "HIGHS near 53°F"},
    {"F", true, "inches", "mph", "LOWS IN THE LOW TEENS.", "LOWS near 12°F (-11°C)."},
    {"C", true, "inches", "mph", "Highs in the mid 60s.", "Highs near 18°C (65°F)."},
    {"F", false, "inches", "mph", "LOWS IN THE UPPER SINGLE DIGITS.", "LOWS near 8°F."},
    {"F", false, "inches", "mph", "HIGHS IN THE MID TO UPPER 50S.",
     "HIGHS IN THE MID TO UPPER 50S."},
    {"C", false, "inches", "mph", "HIGHS AROUND 50... LOWS -5F.",
     "HIGHS AROUND 10°C... LOWS -21°C."},
    {"C", false, "inches", "mph", "Dew point will be around 55°F.",
     "Dew point will be around 13°C."},
    {"F", false, "mm", "mph", "LESS THAN A TENTH OF AN INCH.", "LESS THAN 2.5 mm."},
    {"F", false, "cm", "mph", "Snow. 2 to 4 inches of snow possible.",
     "Snow. 5.1 to 10.2 cm of snow possible."},
    {"F", false, "inches", "km/h", "WINDS 5 TO 10 MPH.", "WINDS 8.0 TO 16.1 km/h."},
    {"F", false, "inches", "bft", "West wind 10 to 15 mph.", "West wind 3 to 4 bft."},
    {"F", false, "inches", "kts", "Winds LIGHT MPH.", "Winds LIGHT MPH."},
    {"F", false, "mm", "km/h", "N/A", "N/A"}};

TEST_P(ForecastTextTest, RewriteForecastFollowsTheUnits)
{
    for (const RewriteCase &c : kRewrites) {
        setUnits(c.temp, c.wind, "inches", c.rain);
        conversionOptions().bothUnits = c.both;
        EXPECT_EQ(RewriteForecast(QString::fromUtf8(c.text)), local(QString::fromUtf8(c.expected)))
            << c.text;
    }
}

TEST(RewriteForecast, ADecimalFractionIsNoTemperature)
{
    process() = ProcessValues{};
    EXPECT_EQ(RewriteForecast("Rain totals of 0.25 inches."), "Rain totals of 0.25 inches.");
}

TEST(FixForecastCase, CasesNamesInTableOrder)
{
    const std::pair<const char *, const char *> cases[] = {
        {"on monday at 10 am edt", "on Monday at 10 AM EDT"},
        {"until midnight cst tonight", "until 12 AM CST tonight"},
        {"in arkansas and kansas", "in Arkansas and Kansas"},
        {"kansas and missouri", "kansas and missouri"}, // the row needs its blank
        {"west virginia and virginia", "West Virginia and Virginia"},
        {"MONDAY", "MONDAY"} // case-sensitive: only lower-case forms are touched
    };
    for (const auto &[text, expected] : cases)
        EXPECT_EQ(FixForecastCase(text), expected) << text;
}

TEST_P(ForecastTextTest, ChanceFromForecastTriesEachPhraseInOrder)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Chance of rain near 50%.", "45"},
        {"Showers likely. Chance of showers 70%.", "70"},
        {"Chance of precipitation is 60%.", "60"},
        {"Mostly sunny, with a 40 percent chance of rain.", "40"},
        {"There is a 30% chance of precipitation.", "30"},
        {"Cloudy with rain 80% likely.", "80"},
        {"CHANCE OF RAIN.", "10"},
        {"Humidity 50%.", ""}};
    for (const auto &[text, chance] : cases)
        EXPECT_EQ(ChanceFromForecast(text), chance) << text;
}

TEST_P(ForecastTextTest, FillChanceWritesOnlyNewNumbers)
{
    process().CityCode = "KDSM";
    saveCache("Daily",
              "count=2|prediction11=Chance of rain 40%.|pre11=20|prediction21=Clear.|pre21=0|"
              "prediction12=A chance of rain.|pre12=N/A|prediction22=|pre22=N/A");
    FillChanceFromForecast();
    expectCache("Daily", "pre11=40|pre21=0|pre12=10|pre22=N/A");
}

TEST_P(ForecastTextTest, ReprocessRebuildsTwinsAndTexts)
{
    process().CityCode = "KDSM";
    saveCache("Daily", "count=1|low1=32|high1=50|lown1=20|prediction11=Highs in the low 50s.|"
                       "prediction21=Lows 20&deg;F.");
    setUnits("C");
    ReprocessForecasts();
    // The night's text was dressed already.
    expectCache("Daily",
                QString::fromUtf8("low1C=0|high1C=10|lown1C=|predictionC11=Highs near 12°C.|"
                                  "predictionC21=Lows 20°F."));
    SaveCache("Daily", "high1", "77");
    setUnits("F");
    ReprocessForecasts(); // no twins for a Fahrenheit user
    expectCache("Daily", QString::fromUtf8("high1C=10|predictionC11=Highs near 53°F."));
}

TEST(DayPartOfHour, DayRunsFromSixToFour)
{
    LoadDatePatterns(QLocale(QLocale::English, QLocale::UnitedStates));
    for (const char *day : {"6 AM", "4 PM", "12 PM", "16:00", "2024-04-03T10:00:00"})
        EXPECT_EQ(DayPartOfHour(day), "D") << day;
    for (const char *night : {"5 AM", "12 AM", "17:00", "7pm", "4/3/2024 7:00 PM"})
        EXPECT_EQ(DayPartOfHour(night), "N") << night;
    for (const char *none : {"", "7", "25:00", "13 PM", "7:75 PM", "abc 7 PM", "PM"})
        EXPECT_EQ(DayPartOfHour(none), "") << none;
}

class HourlyChanceTest : public LocaleTest
{
protected:
    void SetUp() override
    {
        LocaleTest::SetUp();
        process().CityCode = "KDSM";
        saveCache("Hourly", "count=6|"
                            "date-time1=2024-04-14T15:00:00|hour1=3 PM|prob-of-precip1=10|"
                            "date-time2=2024-04-14T16:00:00|hour2=4 PM|prob-of-precip2=30|"
                            "date-time3=2024-04-14T17:00:00|hour3=5 PM|prob-of-precip3=20|"
                            "date-time4=2024-04-15T05:00:00|hour4=5 AM|prob-of-precip4=60|"
                            "date-time5=2024-04-15T06:00:00|hour5=6 AM|prob-of-precip5=40|"
                            "date-time6=2024-04-15T07:00:00|hour6=7 AM|prob-of-precip6=N/A");
        saveCache("Daily", "count=2|short-title11=20% Chance Rain|"
                           "prediction11=Cloudy. Humidity 80%. Chance of rain is 20%.|"
                           "prediction21=A 10 percent chance of rain.");
    }
};

TEST_P(HourlyChanceTest, SummaryClosesEachDayPart)
{
    EXPECT_EQ(HourlyChanceSummary(), "14D30|14N60|15D40");
}

TEST_P(HourlyChanceTest, DayPartsBeforeTheFirstForecastDayAreSkipped)
{
    SaveCache("Daily", "date", GetParam().april15);
    EXPECT_EQ(ApplyHourlyChance(), 2);
    expectCache("Daily", "pre11=40|short-title11=40% Chance Rain|"
                         "prediction11=Cloudy. Humidity 80%. Chance of rain is 40%.|pre21=");
}

TEST_P(HourlyChanceTest, EachDayPartFillsItsHalfOfTheRunningDay)
{
    SaveCache("Daily", "date", "2024-04-14");
    SaveCache("Hourly", "prob-of-precip2", "0");
    EXPECT_EQ(ApplyHourlyChance(), 0);
    expectCache("Daily", "pre11=10|pre21=60|prediction21=A 60 percent chance of rain.|pre12=40");
    SaveCache("Hourly", "prob-of-precip1", "0");
    ApplyHourlyChance();
    EXPECT_EQ(GetCache("Daily", "short-title11"), "Chance Rain"); // "0% " is dropped
}

TARNBY_BOTH_LOCALES(ForecastTextTest);
TARNBY_BOTH_LOCALES(HourlyChanceTest);

} // namespace
