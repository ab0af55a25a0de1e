// The addresses of the slots (coordinates cut, not rounded, to three decimals) and which
// slots a run serves.

#include "core/processvalues.h"
#include "core/timestamp.h"
#include "core/weathercache.h"
#include "run/runurls.h"
#include "run/slotplan.h"
#include "tests/support/testprofile.h"

using namespace Tarnby;

namespace
{

RunUrlInput station(const char *group, bool international, const char *code = "KAMW")
{
    return {group, international, code, "41.53389", "-93.64889", "TOKEN", "https://pulse.test"};
}

const QString kPlace = "location=41.533,-93.648&locationtype=latitudelongitude&units=english";

using RunUrlsTest = Tarnby::Test::ProfileTest;

TEST_F(RunUrlsTest, AUsWeatherBugStation)
{
    const RunUrls urls = BuildRunUrls(station("WeatherBug", false));
    EXPECT_EQ(urls[Slot::Detailed], "https://pulse.test/data/forecasts/v1/daily?" + kPlace +
                                        "&cultureinfo=en-en&verbose=true&subscription-key=TOKEN");
    EXPECT_EQ(urls[Slot::Alerts],
              "https://api.weather.gov/alerts?active=1&point=41.53389,-93.64889");
    EXPECT_EQ(urls[Slot::NwsDetailed],
              "https://forecast.weather.gov/MapClick.php?lat=41.533&lon=-93.648&TextType=3");
    EXPECT_EQ(urls[Slot::Links], "https://www.weatherbug.com/common/jump.aspx?stat=KAMW");
    for (Slot empty : {Slot::Conditions, Slot::Map, Slot::DailyHistory, Slot::YearlyHistory})
        EXPECT_EQ(urls[empty], "");
}

TEST_F(RunUrlsTest, ForeignAndCwopStations)
{
    const RunUrls foreign = BuildRunUrls(station("WeatherBug", true));
    EXPECT_EQ(foreign[Slot::Alerts],
              "https://pulse.test/getPublishedAlerts/data/alerts/v1/alerts?" + kPlace +
                  "&cultureinfo=en-en&verbose=true&subscription-key=TOKEN");
    EXPECT_EQ(foreign[Slot::NwsDetailed], "");
    const RunUrls cwop = BuildRunUrls(station("CWOP", false, "D7094"));
    EXPECT_EQ(cwop[Slot::Conditions],
              "https://mesowest.utah.edu/cgi-bin/droman/meso_table_mesowest.cgi?stn=D7094&unit=0"
              "&month1=&day1=0&year1=&hour1=00&time=GMT&past=0");
    EXPECT_EQ(cwop[Slot::Links], "");
}

TEST_F(RunUrlsTest, AnOldSystemSendsTheApiHostsThroughTheRelay)
{
    process().WindowsMajor = 9;
    RunUrlInput input = station("NWS", false);
    input.pulseUrl = "https://earthnetworks.azure-api.net";
    const RunUrls urls = BuildRunUrls(input);
    const QString relay = "https://service.tarnby.invalid/get?url=";
    EXPECT_TRUE(urls[Slot::Alerts].startsWith(relay + "https%3A%2F%2Fapi"));
    EXPECT_TRUE(urls[Slot::Hourly].startsWith(relay));
    EXPECT_TRUE(urls[Slot::NwsDetailed].startsWith("https://forecast.weather.gov/"));
}

class SlotPlanTest : public Tarnby::Test::ProfileTest
{
protected:
    SlotPlanTest()
    {
        process().CityCode = "KAMW";
        for (const char *key :
             {"rain-today", "humidity-low", "humidity-high", "rain-month", "rain-year"})
            SaveCache("Cache", key, "1");
    }
    QList<Slot> plan(const RunUrlInput &input, bool alertsOnly)
    {
        EnableSlots(jobs, BuildRunUrls(input), {input.group, input.international, alertsOnly}, now);
        QList<Slot> on;
        for (const SlotInfo &info : slotTable())
            if (jobs[info.slot].Enabled) on.append(info.slot);
        return on;
    }
    RunSlots jobs;
    QDateTime now = QDateTime(QDate(2024, 5, 1), QTime(12, 0));
};

TEST_F(SlotPlanTest, SlotsFollowGroupPlaceAndKindOfRun)
{
    const QList<Slot> all{Slot::Hourly, Slot::Detailed, Slot::Alerts, Slot::Map, Slot::UV};
    const struct {
        const char *group;
        bool international, alertsOnly;
        QList<Slot> enabled;
    } rows[] = {{"WeatherBug", false, false, all},
                {"NWS", false, false, all},
                {"CWOP", false, false, QList<Slot>{Slot::Conditions} + all},
                {"WeatherBug", true, false, {Slot::Hourly, Slot::Detailed, Slot::Map}},
                {"WeatherBug", false, true, {Slot::Alerts, Slot::Map, Slot::UV}},
                {"CWOP", true, true, {Slot::Map}}};
    for (const auto &r : rows)
        EXPECT_EQ(plan(station(r.group, r.international), r.alertsOnly), r.enabled)
            << r.group << r.international << r.alertsOnly;
}

TEST_F(SlotPlanTest, UvFetchedLessThanSixMinutesAgoIsNotFetchedAgain)
{
    for (const auto &[ageMinutes, on] : {std::pair{3, false}, std::pair{7, true}}) {
        SaveCache("LastUpdated", "UV", TimeStamp(now.addSecs(-60 * ageMinutes)));
        EXPECT_EQ(plan(station("WeatherBug", false), false).contains(Slot::UV), on) << ageMinutes;
    }
}

TEST_F(SlotPlanTest, SlowValuesThatAreNoNumbersForceTheirHistoryOnAndAreCleared)
{
    SaveCache("Cache", "rain-today", "N/A");
    const QList<Slot> on = plan(station("WUnderground", false), false);
    EXPECT_TRUE(on.contains(Slot::DailyHistory));
    EXPECT_FALSE(on.contains(Slot::YearlyHistory));
    for (const char *key : {"rain-today", "humidity-low", "humidity-high"})
        EXPECT_EQ(GetCache("Cache", key), "") << key;
    EXPECT_EQ(GetCache("Cache", "rain-month"), "1");
}

} // namespace
