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

TEST_F(HourlyTablesTest, TableValueOnlyWhenTheRowIsTrusted)
{
    const struct {
        bool chances; // the precipitation table, else the temperatures
        QDate date;
        PickKind kind;
        int period;
        QString expected;
    } rows[] = {
        {false, kTuesday, PickKind::LowNight, 3, "-9"},   // the small hours after
        {false, kWednesday, PickKind::HighDay, 3, "41"},  // half a day does for the high
        {false, kWednesday, PickKind::Low, 3, "doc"},     // but not for the low
        {false, kWednesday, PickKind::Low, 1, "-9"},      // the first period trusts any row
        {false, kWednesday, PickKind::LowNight, 1, "30"}, // midnight is its own date's night
        {false, kMonday, PickKind::High, 1, "doc"},       // too few hours: no row
        {true, kTuesday, PickKind::HighNight, 3, "46"},
        {true, kWednesday, PickKind::HighDay, 3, "doc"}, // a chance needs a whole day
        {true, kWednesday, PickKind::HighDay, 1, "82"}};
    for (const auto &r : rows) {
        const QString picked =
            r.chances ? PickPrecipitation(BuildHourlyPrecipitationTable(), r.date, "doc", r.kind,
                                          r.period)
                      : PickHighLow(BuildHourlyHighLowTable(), r.date, "doc", r.kind, r.period);
        EXPECT_EQ(picked, r.expected) << r.chances << ' ' << r.date.day() << " kind " << int(r.kind)
                                      << " period " << r.period;
    }
}

TEST(ApplyHighLowTest, ChosenNumberInTheWording)
{
    const struct {
        QString text, high, low, expected;
    } rows[] = {
        {"Sunny. Highs in the lower 70s.", "72", "", "Sunny. High temperature near 72°F."},
        {"Sunny. Highs around 70. Later highs around 80.", "72", "",
         "Sunny. High temperature near 72°F. Later highs around 80."},
        {"Highs near 60. Lows around 40.", "", "41", "Highs near 60. Low temperature near 41°F."},
        {"Sunny. HIGHS IN THE LOWER 70S.", "72", "", "Sunny. HIGHS IN THE LOWER 70S."},
        {"Warm.\r\nNear 80F and 85F", "", "", "Warm.Near 80°F and 85F"}};
    for (const auto &r : rows)
        EXPECT_EQ(ApplyHighLowToText(r.text, r.high, r.low), r.expected) << r.text.toStdString();
}

} // namespace
