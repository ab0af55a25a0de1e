#include "providers/forecasts.h"

#include "core/processvalues.h"
#include "tests/providers/forecastfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

// <name>.cache is loaded first when it exists; hoursFirst is an hourly document read
// before, as a run reads the hours before the days.
struct GoldenCase {
    const char *name;
    Reader reader;
    const char *document;
    const char *hoursFirst = nullptr;
};

class ForecastGolden : public ForecastTest, public ::testing::WithParamInterface<GoldenCase>
{
};

TEST_P(ForecastGolden, WritesTheExpectedBranch)
{
    const GoldenCase &c = GetParam();
    const QString name = QStringLiteral("forecast/") + QLatin1String(c.name);
    loadCacheFile(name + QStringLiteral(".cache"));
    if (c.hoursFirst)
        read(Reader::Hourly, QStringLiteral("forecast/") + QLatin1String(c.hoursFirst));
    read(c.reader, QStringLiteral("forecast/") + QLatin1String(c.document));
    EXPECT_FALSE(process().ProcessingForecasts);
    expectGoldenFile(name + QStringLiteral(".expected"), dump(readerInfo(c.reader).sections));
}

// daily-week: highs and lows of Tuesday from its 24 hours, Wednesday's 11 hours keep the
// document's; daily-tonight: the night of the observed day gives way to tomorrow, and
// without an observation it stays as day 1's night.
INSTANTIATE_TEST_SUITE_P(
    Documents, ForecastGolden,
    ::testing::Values(GoldenCase{"daily-week", Reader::Daily, "daily-week.json", "hourly-40.json"},
                      GoldenCase{"daily-tonight", Reader::Daily, "daily-tonight.json"},
                      GoldenCase{"daily-tonight-unobserved", Reader::Daily, "daily-tonight.json"},
                      GoldenCase{"daily-holes", Reader::Daily, "daily-holes.json"},
                      GoldenCase{"hourly-40", Reader::Hourly, "hourly-40.json"},
                      GoldenCase{"hourly-holes", Reader::Hourly, "hourly-holes.json"},
                      GoldenCase{"uv-week", Reader::Uv, "uv-week.json"},
                      GoldenCase{"uv-empty", Reader::Uv, "uv-empty.json"},
                      GoldenCase{"wu-uv", Reader::WuUv, "wu-uv.xml"},
                      GoldenCase{"nws-text", Reader::NwsText, "nws-text.xml"}),
    [](const auto &info) {
        return QString::fromLatin1(info.param.name).remove('-').toStdString();
    });

QString hourly(const char *key)
{
    return GetCache("Hourly", key);
}

QString daily(const char *key)
{
    return GetCache("Daily", key);
}

TEST_F(ForecastTest, HourlyDocumentNotNewerThanTheStampIsSkippedUnlessForced)
{
    const QString path = dataFile("forecast/hourly-40.json");
    ReadHourlyForecast(path, false);
    EXPECT_EQ(GetCache("LastUpdated", "HourlyTimeStamp"), "4/15/2024 7:00:00 PM");
    SaveCache("Hourly", "temperature1", "left");
    ReadHourlyForecast(path, false); // the same document
    EXPECT_EQ(hourly("temperature1"), "left");
    EXPECT_FALSE(ForecastFailed(ForecastDocument::Hourly));
    ProcessNdfdDownload(path, false, true);
    EXPECT_EQ(hourly("temperature1"), "68");
    SaveCache("Hourly", "temperature1", "left");
    ProcessNdfdDownload(path, true, false); // a new station takes every document
    EXPECT_EQ(hourly("temperature1"), "68");
    SaveCache("LastUpdated", "HourlyTimeStamp", "4/15/2024 6:00:00 PM");
    SaveCache("Hourly", "temperature1", "left");
    ReadHourlyForecast(path, false);
    EXPECT_EQ(hourly("temperature1"), "68");
}

TEST_F(ForecastTest, DailyDocumentReadAgainOnlyWhenForcedOrTheHoursAreNew)
{
    const QString path = dataFile("forecast/daily-week.json");
    ReadDailyForecast(path);
    EXPECT_EQ(GetCache("LastUpdated", "DetailedTimeStamp"), "2024-04-15T11:01:00.0000000Z");
    SaveCache("Daily", "high1", "left");
    ReadDailyForecast(path);
    EXPECT_EQ(daily("high1"), "left");
    ProcessDetailedDownload(path, false, true);
    EXPECT_EQ(daily("high1"), "68");
    SaveCache("Daily", "high1", "left");
    read(Reader::Hourly, "forecast/hourly-40.json");
    ReadDailyForecast(path);
    EXPECT_EQ(daily("high1"), "68");
}

TEST_F(ForecastTest, TwinsInTheUsersUnits)
{
    process().UnitTemp = "C";
    process().UnitWind = "km/h";
    read(Reader::Hourly, "forecast/hourly-40.json");
    read(Reader::Daily, "forecast/daily-week.json");
    EXPECT_EQ(QStringList({hourly("temperature1"), hourly("temperature1C"), hourly("wind-speed1C"),
                           hourly("humidex1C"), daily("high2"), daily("high2C"), daily("lown2C")}),
              QStringList({"68", "20", "8.0", "21", "74", "23", "7"}));
    const QString text = daily("predictionC12");
    EXPECT_TRUE(text.contains("Dew point will be around 10°C")) << text.toStdString();
    EXPECT_TRUE(text.contains("Winds will be 19.3 km/h")) << text.toStdString();
}

TEST_F(ForecastTest, ReadersReportTheirFailureAndItsEnd)
{
    read(Reader::Uv, "forecast/uv-empty.json");
    EXPECT_TRUE(ForecastFailed(ForecastDocument::Uv)); // no period is no data
    EXPECT_EQ(GetCache("UV", "count"), "0");
    read(Reader::Uv, "forecast/uv-week.json");
    EXPECT_FALSE(ForecastFailed(ForecastDocument::Uv));
}

TEST_F(ForecastTest, NwsAmountsAreAddedOnce)
{
    loadCacheFile("forecast/nws-text.cache");
    read(Reader::NwsText, "forecast/nws-text.xml");
    const QString once = dump({"Daily"});
    read(Reader::NwsText, "forecast/nws-text.xml");
    EXPECT_EQ(dump({"Daily"}), once);
    EXPECT_FALSE(ForecastFailed(ForecastDocument::NwsText));
}

} // namespace
