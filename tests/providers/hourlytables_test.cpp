#include "providers/forecasts.h"

#include "derive/dates.h"
#include "tests/providers/forecastfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

const QDate kMonday(2024, 4, 15);
const QDate kTuesday(2024, 4, 16);
const QDate kWednesday(2024, 4, 17);

QString hourText(int hour)
{
    const int twelve = hour % 12 == 0 ? 12 : hour % 12;
    return QString::number(twelve) + (hour < 12 ? " AM" : " PM");
}

// An Hourly branch as the hourly reader leaves it: Monday 7 PM to 11 PM (5 hours, too
// few for a row), all of Tuesday (temperature = the hour, chance = twice the hour) and
// Wednesday 12 AM to 11 AM (12 hours), whose small hours are colder than anything else.
class HourlyTablesTest : public ForecastTest
{
protected:
    HourlyTablesTest()
    {
        for (int hour = 19; hour < 24; ++hour)
            addHour(kMonday, hour, 60);
        for (int hour = 0; hour < 24; ++hour)
            addHour(kTuesday, hour, hour);
        for (int hour = 0; hour < 12; ++hour)
            addHour(kWednesday, hour, hour >= 1 && hour <= 5 ? -10 + hour : 30 + hour);
        SaveCache("Hourly", "count", QString::number(m_rows));
    }

    void addHour(const QDate &date, int hour, double value)
    {
        const QString index = QString::number(++m_rows);
        SaveCache("Hourly", "date" + index, generalDateText(wallClock(date)));
        SaveCache("Hourly", "hour" + index, hourText(hour));
        SaveCache("Hourly", "temperature" + index, QString::number(value));
        SaveCache("Hourly", "prob-of-precip" + index, QString::number(value * 2));
    }

    int m_rows = 0;
};

TEST_F(HourlyTablesTest, RowsByDateWithTheSmallHoursInTheNightBefore)
{
    const HourlyTable table = BuildHourlyHighLowTable();
    ASSERT_EQ(table.size(), 2); // Monday's 5 hours make no row
    const HourlyDateRow &tuesday = table.at(0);
    EXPECT_EQ(tuesday.date, kTuesday);
    EXPECT_EQ(tuesday.hours, 24);
    EXPECT_EQ(tuesday.whole.lowest, 0);
    EXPECT_EQ(tuesday.whole.highest, 23);
    EXPECT_EQ(tuesday.day.lowest, 6);     // 6 AM
    EXPECT_EQ(tuesday.day.highest, 18);   // 6 PM
    EXPECT_EQ(tuesday.night.lowest, -9);  // Wednesday 1 AM
    EXPECT_EQ(tuesday.night.highest, 23); // 11 PM
    const HourlyDateRow &wednesday = table.at(1);
    EXPECT_EQ(wednesday.hours, 12);
    EXPECT_EQ(wednesday.night.lowest, 30); // its 12 AM, the only night hour it keeps
    EXPECT_EQ(wednesday.night.highest, 30);
}

struct PickCase {
    const char *name;
    bool chances; // the precipitation table, else the temperatures
    QDate date;
    PickKind kind;
    int period;
    QString expected;
};

class PickTest : public HourlyTablesTest, public ::testing::WithParamInterface<PickCase>
{
};

TEST_P(PickTest, TableValueOnlyWhenTheRowIsTrusted)
{
    const PickCase &c = GetParam();
    const QString picked =
        c.chances
            ? PickPrecipitation(BuildHourlyPrecipitationTable(), c.date, "doc", c.kind, c.period)
            : PickHighLow(BuildHourlyHighLowTable(), c.date, "doc", c.kind, c.period);
    EXPECT_EQ(picked, c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, PickTest,
    ::testing::Values(
        PickCase{"LowOfAWholeDay", false, kTuesday, PickKind::Low, 3, "0"},
        PickCase{"NightLowOfAWholeDay", false, kTuesday, PickKind::LowNight, 3, "-9"},
        PickCase{"HighOfAWholeDay", false, kTuesday, PickKind::High, 3, "23"},
        PickCase{"DayHighOfAWholeDay", false, kTuesday, PickKind::HighDay, 3, "18"},
        PickCase{"HalfADayTrustedForTheHigh", false, kWednesday, PickKind::HighDay, 3, "41"},
        PickCase{"HalfADayNotTrustedForTheLow", false, kWednesday, PickKind::Low, 3, "doc"},
        PickCase{"FirstPeriodTrustsAnyRow", false, kWednesday, PickKind::Low, 1, "-9"},
        PickCase{"RowOfTooFewHoursIsGone", false, kMonday, PickKind::High, 1, "doc"},
        PickCase{"DateWithoutRow", false, QDate(2024, 4, 20), PickKind::High, 1, "doc"},
        PickCase{"DayChanceOfAWholeDay", true, kTuesday, PickKind::HighDay, 3, "36"},
        PickCase{"NightChanceOfAWholeDay", true, kTuesday, PickKind::HighNight, 3, "46"},
        PickCase{"ChanceNeedsAWholeDay", true, kWednesday, PickKind::HighDay, 3, "doc"},
        PickCase{"FirstPeriodTrustsAnyChance", true, kWednesday, PickKind::HighDay, 1, "82"}),
    [](const auto &info) { return std::string(info.param.name); });

struct WordingCase {
    const char *name;
    QString text, high, low, expected;
};

class ApplyHighLowTest : public ::testing::TestWithParam<WordingCase>
{
};

TEST_P(ApplyHighLowTest, ChosenNumberInTheWording)
{
    const WordingCase &c = GetParam();
    EXPECT_EQ(ApplyHighLowToText(c.text, c.high, c.low), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ApplyHighLowTest,
    ::testing::Values(
        WordingCase{"DecadeOpeningASentence", "Sunny. Highs in the lower 70s.", "72", "",
                    "Sunny. High temperature near 72°F."},
        WordingCase{"AroundWithinASentence", "Cloudy with highs around 75. Winds 10mph.", "72", "",
                    "Cloudy with high temperature near 72°F. Winds 10 mph."},
        WordingCase{"ServiceWording", "Sunny. High temperature around 77F. Dew point 50F.", "74",
                    "", "Sunny. High temperature near 74°F. Dew point 50°F."},
        WordingCase{"OnlyTheFirstPhrase", "Sunny. Highs around 70. Later highs around 80.", "72",
                    "", "Sunny. High temperature near 72°F. Later highs around 80."},
        WordingCase{"LowWhenNoHigh", "Clear. Lows in the mid 40s.", "N/A", "44",
                    "Clear. Low temperature near 44°F."},
        WordingCase{"HighPhraseLeftForALow", "Highs near 60. Lows around 40.", "", "41",
                    "Highs near 60. Low temperature near 41°F."},
        WordingCase{"HighsCaseSensitive", "Sunny. HIGHS IN THE LOWER 70S.", "72", "",
                    "Sunny. HIGHS IN THE LOWER 70S."},
        WordingCase{"DegreeSignsAndLineEnds", "Warm.\r\nNear 80F and 85F", "", "",
                    "Warm.Near 80°F and 85F"},
        WordingCase{"EmptyText", "", "72", "", ""}),
    [](const auto &info) { return std::string(info.param.name); });

} // namespace
