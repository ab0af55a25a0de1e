#include "providers/weatherbug.h"

#include "providers/conditions.h"
#include "providers/observationdatabase.h"
#include "retrieval/hosts.h"
#include "tests/providers/fakedatabase.h"
#include "tests/providers/livereadingtest.h"
#include "tests/retrieval/scriptedchildren.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

class WeatherBugTest : public LiveReadingTest
{
protected:
    WeatherBugTest()
    {
        SavePref("Misc", "Token", "tok123");
        SavePref("Misc", "TokenExpiration", Tarnby::clock().now().toString(Qt::ISODate));
        SavePref("Hosts", "PulseApi", "http://pulse.example");
    }

    // The observation service answers with the named document.
    void answerWith(const QString &documentName)
    {
        answer = readDataFile(QStringLiteral("weatherbug/") + documentName);
    }

    QString writeDocument(const QString &documentName)
    {
        return profile.writeFile("live.json", readDataFile("weatherbug/" + documentName));
    }

    QString answer;
    ScriptedChildren children{[this](const QString &) { return ChildReply::answer("0", answer); }};
};

// Golden cases: <case>.json is what the service answers, <case>.cache the cache before;
// <case>.update.expected what the reader leaves, <case>.live.expected (where there is one)
// what the older reader of a downloaded document leaves.
class WeatherBugGolden : public WeatherBugTest, public ::testing::WithParamInterface<const char *>
{
protected:
    QString golden(const char *extension) const
    {
        return QStringLiteral("weatherbug/") + QLatin1String(GetParam()) + extension;
    }
};

TEST_P(WeatherBugGolden, UpdateWritesTheExpectedKeys)
{
    loadCacheFile(golden(".cache"));
    answerWith(GetParam() + QStringLiteral(".json"));
    const QString arguments = UpdateWeatherBugConditions();
    expectGoldenFile(golden(".update.expected"), dumpCache(arguments));
}

TEST_P(WeatherBugGolden, OlderReaderWritesTheExpectedKeys)
{
    if (!QFile::exists(dataFile(golden(".live.expected")))) GTEST_SKIP();
    loadCacheFile(golden(".cache"));
    ReadWeatherBugConditions(writeDocument(GetParam() + QStringLiteral(".json")), true, false);
    expectGoldenFile(golden(".live.expected"), dumpCache());
}

INSTANTIATE_TEST_SUITE_P(Documents, WeatherBugGolden,
                         ::testing::Values("v4-full", "holes", "truncated", "stale", "wrapped-crlf",
                                           "wrapped-lf", "older-generation", "other-service",
                                           "html-error", "empty"),
                         [](const auto &info) {
                             return QString::fromLatin1(info.param).remove('-').toStdString();
                         });

TEST_F(WeatherBugTest, RequestCarriesPositionUnitsAndToken)
{
    answerWith("v4-full.json");
    UpdateWeatherBugConditions();
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(children.launches[0].url,
              "http://pulse.example/data/observations/v4/current?&location=41.534,-93.653"
              "&locationtype=latitudelongitude&units=english&cultureinfo=en-en&verbose=true"
              "&subscription-key=tok123");
}

TEST_F(WeatherBugTest, FailuresCountUpUntilAGoodReading)
{
    process().Latitude.clear(); // no position: nothing is fetched
    EXPECT_EQ(UpdateWeatherBugConditions(), "");
    EXPECT_TRUE(children.launches.isEmpty());
    EXPECT_EQ(process().RealtimeLastError, Tarnby::clock().now());
    process().Latitude = "41.534";
    answerWith("html-error.json");
    UpdateWeatherBugConditions();
    UpdateWeatherBugConditions();
    EXPECT_EQ(process().RealtimeErrorCount, 3);
    answerWith("v4-full.json");
    UpdateWeatherBugConditions();
    EXPECT_EQ(process().RealtimeErrorCount, 0);
}

TEST_F(WeatherBugTest, OlderObservationPassesForANewlySelectedStation)
{
    selectStation("DSMWB", "41.534", "-93.653");
    loadCacheFile("weatherbug/stale.cache");
    SaveCache("Current", "station-id", "OTHER");
    answerWith("v4-full.json");
    EXPECT_NE(UpdateWeatherBugConditions(), "");
    EXPECT_EQ(current("station-id"), "DSMWB");
    EXPECT_EQ(current("temp"), "71.6");
}

TEST_F(WeatherBugTest, TwinsInTheUsersUnitsAndPointDecimalsInTheList)
{
    process().UnitTemp = "C";
    process().UnitWind = "km/h";
    process().UnitBar = "hPa";
    process().UnitPre = "mm";
    process().DecimalSymbol = ",";
    process().GroupSymbol = ".";
    process().NonUsNumberFormat = true;
    answerWith("v4-full.json");
    const QString arguments = UpdateWeatherBugConditions();
    EXPECT_EQ(current("temp") + ' ' + current("pressureC"), "71,6 1013,2");
    // temperatures whole, pressures with a point, everything else as written
    EXPECT_TRUE(arguments.contains("'72','22','74','23','52','11'")) << arguments.toStdString();
    EXPECT_TRUE(arguments.contains("'29.92','1013.2','30.01','1016.3'")) << arguments.toStdString();
    EXPECT_TRUE(arguments.contains("'12,4','20,0'")) << arguments.toStdString();
}

TEST_F(WeatherBugTest, DayExtremesFromTheDatabaseWhenDocumentAndCacheHaveNone)
{
    FakeDatabase database;
    database.high = "80";
    database.low = "50";
    answerWith("holes.json");
    UpdateWeatherBugConditions();
    EXPECT_EQ(current("temp-high"), "80");
    EXPECT_EQ(current("temp-low"), "52.1"); // the document's low wins
    EXPECT_EQ(database.askedDays, QList<QDate>{QDate(2024, 4, 15)});
}

TEST_F(WeatherBugTest, LinksForAUsAndAnInternationalStation)
{
    SavePref("Hosts", "WeatherBug", "http://wb.example");
    SaveCache("Links", "Map9", "left over");
    SavePref("CityCode", "ZipCode", "50309");
    BuildWeatherBugLinks(QString(), false, false);
    const auto links = [](const char *key) { return GetCache("Links", key); };
    EXPECT_EQ(links("Map9"), "");
    EXPECT_EQ(links("URL-doppler"), "http://wb.example/maps/?lat=41.534&lon=-93.653&layer=radar");
    EXPECT_EQ(links("MapCount"), "3");

    SavePref("CityCode", "ZipCode", "0");
    BuildWeatherBugLinks(QString(), false, false);
    EXPECT_EQ(links("URL-doppler"), "");
    EXPECT_EQ(links("MapCount"), "2");
    EXPECT_EQ(links("Map2"), "Satellite");
}

} // namespace
