#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/support/testprofile.h"

using namespace Tarnby;

namespace
{

class WeatherCacheTest : public Tarnby::Test::ProfileTest
{
};

TEST_F(WeatherCacheTest, SectionsFollowTheCurrentStation)
{
    process().CityCode = "KDSM";
    SaveCache("Current", "temp", "72");
    EXPECT_EQ(GetPref("Cache\\KDSM\\Current", "temp"), "72");
    process().CityCode = "EGLL";
    EXPECT_EQ(GetCache("Current", "temp", "N/A"), "N/A");
    SaveCache("Current", "temp", "55");
    process().CityCode = "KDSM"; // a switch back shows the old data again
    EXPECT_EQ(GetCache("Current", "temp"), "72");
}

TEST_F(WeatherCacheTest, DeletingOneStationLeavesTheOthers)
{
    process().CityCode = "A";
    SaveCache("Current", "temp", "1");
    SaveCache("Hourly", "count", "2");
    process().CityCode = "B";
    SaveCache("Current", "temp", "2");
    DeleteStationCache("A");
    EXPECT_EQ(GetPref(CacheSectionFor("A", "Current"), "temp"), "");
    EXPECT_EQ(GetPref(CacheSectionFor("A", "Hourly"), "count"), "");
    EXPECT_EQ(GetCache("Current", "temp"), "2");
    DeleteWholeCache();
    EXPECT_EQ(GetCache("Current", "temp"), "");
}

TEST_F(WeatherCacheTest, DelCacheClearsOneSectionOfTheCurrentStation)
{
    process().CityCode = "A";
    SaveCache("Hourly", "temperature1", "70");
    SaveCache("Daily", "count", "7");
    DelCache("Hourly");
    EXPECT_EQ(GetCache("Hourly", "temperature1"), "");
    EXPECT_EQ(GetCache("Daily", "count"), "7");
}

TEST_F(WeatherCacheTest, BranchLinesListOneSectionSortedByKey)
{
    process().CityCode = "KDSM";
    SaveCache("Alerts", "title1", "Flood Watch");
    SaveCache("Alerts", "Count", "1");
    SaveCache("Alerts", "AlertEpoch", "a,b");
    SaveCache("Alerts\\Deeper", "title1", "not this section");
    SaveCache("Current", "temp", "72");
    EXPECT_EQ(CacheBranchLines("Alerts"),
              QStringList({"AlertEpoch=a,b", "Count=1", "title1=Flood Watch"}));
    EXPECT_TRUE(CacheBranchLines("Daily").isEmpty());
}

} // namespace

TEST_F(WeatherCacheTest, CacheCountReadsOnlyASaneWholeNumber)
{
    process().CityCode = "A";
    const std::pair<const char *, int> cases[] = {{"", 0},
                                                  {"N/A", 0},
                                                  {"24", 24},
                                                  {" 7 ", 7},
                                                  {"-3", 0},
                                                  {"2.5", 0},
                                                  {"99999999", kMaxCacheRows}};
    for (const auto &[stored, rows] : cases) {
        SaveCache("Hourly", "count", stored);
        EXPECT_EQ(CacheCount("Hourly"), rows) << stored;
    }
}
