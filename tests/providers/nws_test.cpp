#include "providers/nwsstation.h"

#include "providers/discovery.h"
#include "providers/stationtimezone.h"
#include "tests/providers/fakedatabase.h"
#include "tests/providers/livereadingtest.h"
#include "tests/retrieval/scriptedchildren.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

// An NWS station near Tacoma selected.
class TacomaTest : public LiveReadingTest
{
protected:
    TacomaTest()
    {
        selectStation("KTIW", "47.2675", "-122.57611");
        process().StationType = QStringLiteral("NWS");
    }
};

class NwsTest : public TacomaTest
{
protected:
    void answerWith(const QString &relativePath) { answer = readDataFile(relativePath); }

    QString answer;
    ScriptedChildren children{[this](const QString &) { return ChildReply::answer("0", answer); }};
};

TEST_F(NwsTest, NwsReportWritesTheExpectedKeys)
{
    loadCache("Current/rain-today=0.12\nCurrent/temp-rate=1.5\n");
    answerWith("metar/nws-obs-latest-KTIW-2021-09-18.json");
    const QString arguments = UpdateNwsConditions();
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(children.launches[0].url,
              "https://api.weather.gov/stations/KTIW/observations/current");
    expectGoldenFile("nws/ktiw.update.expected", dumpCache(arguments));
}

TEST_F(NwsTest, MesoWestSourceTakesTheLastReportOfTheSeries)
{
    process().NwsSource = QStringLiteral("mesowest");
    SavePref("Misc", "MesoWestToken", "feedc0de");
    process().UnitVis = QStringLiteral("km");
    answerWith("nws/mesowest-timeseries-MADE-UP.json");
    EXPECT_FALSE(UpdateNwsConditions().isEmpty());
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(children.launches[0].url,
              "https://api.mesowest.net/v2/stations/timeseries?stid=KTIW&recent=11520"
              "&obtimezone=local&complete=1&hfmetars=1&token=feedc0de");
    EXPECT_EQ(current("temp") + ' ' + current("gust-direction") + ' ' + current("visibilityC"),
              "28.4 SSW 0.8");
}

TEST_F(NwsTest, DayExtremesComeFromTheDatabase)
{
    FakeDatabase database;
    database.high = "61";
    database.low = "44";
    answerWith("metar/nws-obs-latest-KTIW-2021-09-18.json");
    UpdateNwsConditions();
    EXPECT_EQ(current("temp-high"), "61");
    EXPECT_EQ(current("temp-low"), "44");
    EXPECT_EQ(database.rows.size(), 1);
}

TEST_F(NwsTest, BrokenAnswersLeaveTheCacheAndCountAFailure)
{
    const QString before = QStringLiteral("Current/temp=50\nLastUpdated/CurrentTimeStamp=x\n");
    for (const QString &document :
         QStringList{readDataFile("nws/nws-obs-D7094-CWOP-empty-rawMessage-2021.json"),
                     "<html><body>502 Bad Gateway</body></html>", QString(),
                     QStringLiteral("{\"rawMessage\": \"KTIW AUTO 22007KT")}) {
        loadCache(before);
        answer = document;
        EXPECT_TRUE(UpdateNwsConditions().isEmpty());
        EXPECT_EQ(current("temp"), "50");
        EXPECT_EQ(GetCache("LastUpdated", "CurrentTimeStamp"), "x");
    }
    EXPECT_EQ(process().RealtimeErrorCount, 4);
}

TEST_F(NwsTest, OnlyCodesBeginningWithKAreAskedFor)
{
    selectStation("PANC", "61.17", "-150.02");
    EXPECT_TRUE(UpdateNwsConditions().isEmpty());
    EXPECT_TRUE(children.launches.isEmpty());
}

TEST_F(NwsTest, ReportFetchers)
{
    const clsNwsStation station;
    answerWith("metar/tgftp-KMSN-2023-01-13.TXT");
    EXPECT_TRUE(station.GetNoaaMetar("KMSN").startsWith("KMSN "));
    EXPECT_EQ(children.launches.last().url,
              "https://tgftp.nws.noaa.gov/data/observations/metar/stations/KMSN.TXT");
    answer = QStringLiteral("2023/01/13 15:53");
    EXPECT_EQ(station.GetNoaaMetar("KMSN"), "");

    answerWith("nws/wrh-getobext-MADE-UP.html");
    EXPECT_EQ(station.GetMetar("KSFO"),
              "METAR KSFO 151856Z 28012KT 10SM FEW008 14/09 A3001 RMK AO2");
    EXPECT_EQ(station.GetMetar("KOAK"), "");

    answer = QStringLiteral("<?xml version=\"1.0\"?><ob><variable var=\"T\" value=\"50\"/></ob>\n"
                            "<!-- served in 0.1 s -->");
    EXPECT_TRUE(station.GetXml("KSLC").endsWith("</ob>"));
    answer = QStringLiteral("<ob><variable");
    EXPECT_EQ(station.GetXml("KSLC"), "");
}

TEST_F(NwsTest, StationsAroundAPoint)
{
    const clsNwsStation station;
    answerWith("nws/nws-gridpoints-stations-DVN-30-86-CedarRapids.json");
    const QList<clsWxStation> all = station.GetWeatherStations("41.9", "-91.7");
    EXPECT_EQ(children.launches.last().url, "https://api.weather.gov/points/41.9,-91.7/stations");
    ASSERT_EQ(all.size(), 47);
    EXPECT_EQ(all[0].Id() + ' ' + all[0].latitude() + ' ' + all[0].StationType(),
              "KCID 41.88295 NWS");

    const QList<clsWxStation> near =
        station.GetWeatherStationsNearPoint("41.9", "-91.7", "42.0", "-92.0", "41.8", "-91.5");
    EXPECT_EQ(children.launches.last().url, "https://api.weather.gov/points/41.9%2C-91.7/stations");
    ASSERT_FALSE(near.isEmpty());
    EXPECT_LT(near.size(), all.size());
    for (const clsWxStation &found : near)
        EXPECT_TRUE(
            IsInsideBounds("42.0", "-92.0", "41.8", "-91.5", found.latitude(), found.longitude()));

    answer = QStringLiteral("{\"features\": []}");
    EXPECT_TRUE(station.GetWeatherStationsNearPoint("1", "2", "3", "0", "0", "3").isEmpty());
}

TEST(NwsValues, ReadJsonQuantityConvertsByUnit)
{
    const QString tiw = readDataFile("metar/nws-obs-latest-KTIW-2021-09-18.json");
    EXPECT_EQ(ReadJsonQuantity(tiw, "windSpeed", "mph"), "12.96"); // km_h-1 has no rule
    const QString sua = readDataFile("metar/nws-obs-latest-KSUA-2021-ldjson.json");
    // The conversions keep the pictures' trailing decimal mark.
    EXPECT_EQ(ReadJsonQuantity(sua, "visibility", "mi"), "10.");
    EXPECT_EQ(ReadJsonQuantity("{\"heatIndex\": {\"value\": null, \"unitCode\": \"unit:degC\"}}",
                               "heatIndex", "F"),
              "null");
    EXPECT_EQ(ReadJsonQuantity("{}", "temperature", "F"), "");
}

TEST(NwsValues, IconNameByFirstFittingWord)
{
    // The sky's words exactly, then the weather words anywhere in their order.
    const std::pair<const char *, const char *> cases[] = {{"Light Snow, Mist", "snow"},
                                                           {"Freezing Fog", "fog"},
                                                           {"Thunderstorm Rain", "tsra_sct"},
                                                           {"Indefinite", "skc"}};
    for (const auto &[condition, name] : cases)
        EXPECT_TRUE(GetNwsIconAddress(condition).contains(QStringLiteral("/") + name + "?"))
            << condition << " -> " << GetNwsIconAddress(condition).toStdString();
}

TEST(NwsValues, InsideBoundsIncludesTheEdges)
{
    EXPECT_TRUE(IsInsideBounds("42", "-92", "41", "-91", "42", "-91"));
    EXPECT_FALSE(IsInsideBounds("42", "-92", "41", "-91", "42.1", "-91.5"));
    EXPECT_FALSE(IsInsideBounds("42", "-92", "41", "-91", "", "-91.5"));
}

// The time-zone step of the NWS branch, with the vendor's answer and the station's
// document scripted by address. The clock stands at 2024-04-15 20:00 UTC.
class StationTimeZoneTest : public TacomaTest
{
protected:
    static QString cached(const char *key) { return GetCache("Cache", key); }

    QString vendor = QStringLiteral("<html><body>404 Not Found</body></html>");
    QString station;
    ScriptedChildren children{[this](const QString &url) {
        return ChildReply::answer("0", url.contains("/Apps/GetTimeZone") ? vendor : station);
    }};
};

TEST_F(StationTimeZoneTest, TheVendorsAnswerIsKeptUntilTheZoneChanges)
{
    vendor = QStringLiteral("<result><status>OK</status><zoneName>America/Los_Angeles</zoneName>"
                            "<offset>-25200</offset><zoneEnd>1730624400</zoneEnd></result>");
    ASSERT_TRUE(UpdateStationTimeZone());
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(children.launches[0].url, "https://service.tarnby.invalid/Apps/GetTimeZone"
                                        "?lat=47.2675&lon=-122.57611&zone=");
    EXPECT_EQ(cached("TimeZoneName"), "America/Los_Angeles");
    EXPECT_EQ(cached("TimeZoneOffset"), "-25200");
    EXPECT_EQ(readDate(cached("TimeZoneOffsetExpires")),
              utcToLocal(QDateTime::fromSecsSinceEpoch(1730624400, QTimeZone::utc())));
    EXPECT_EQ(current("timezone-offset"), "-7");

    vendor.clear();
    EXPECT_TRUE(UpdateStationTimeZone());
    EXPECT_EQ(children.launches.size(), 1);

    // Past the change the zone is asked again, under the name known.
    SaveCache("Cache", "TimeZoneOffsetExpires", "4/1/2024 12:00:00 AM");
    vendor = QStringLiteral("<status>OK</status><zoneName>America/Los_Angeles</zoneName>"
                            "<offset>-28800</offset>");
    EXPECT_TRUE(UpdateStationTimeZone());
    ASSERT_EQ(children.launches.size(), 2);
    EXPECT_TRUE(children.launches[1].url.endsWith("&zone=America%2FLos_Angeles"));
    EXPECT_EQ(current("timezone-offset"), "-8");
    EXPECT_EQ(readDate(cached("TimeZoneOffsetExpires")), localNow().addDays(30));
}

TEST_F(StationTimeZoneTest, WithoutTheVendorAStationOfTheNwsReadsItsZoneFromItsDocument)
{
    station = readDataFile("nws/nws-station-KTIW-2021.json");
    ASSERT_TRUE(UpdateStationTimeZone());
    ASSERT_EQ(children.launches.size(), 2);
    EXPECT_EQ(children.launches[1].url, "https://api.weather.gov/stations/KTIW");
    EXPECT_EQ(cached("TimeZoneName"), "America/Los_Angeles");
    EXPECT_EQ(cached("TimeZoneOffset"), "-25200");
    // Daylight time ends at 2 AM on the first Sunday of November: 09:00 UTC.
    EXPECT_EQ(readDate(cached("TimeZoneOffsetExpires")),
              utcToLocal(QDateTime(QDate(2024, 11, 3), QTime(9, 0), QTimeZone::utc())));
    EXPECT_EQ(current("timezone-offset"), "-7");
}

TEST_F(StationTimeZoneTest, NoAnswerFailsTheStepAndKeepsWhatWasStored)
{
    loadCache(QStringLiteral("Cache/TimeZoneName=America/Denver\nCache/TimeZoneOffset=-21600\n"
                             "Cache/TimeZoneOffsetExpires=4/1/2024 12:00:00 AM\n"
                             "Current/timezone-offset=-6\n"));
    vendor =
        QStringLiteral("<status>OK</status><zoneName>America/Denver</zoneName><offset>?</offset>");
    station = QStringLiteral("{\"timeZone\": \"Not/AZone\"}");
    EXPECT_FALSE(UpdateStationTimeZone());
    process().StationType = QStringLiteral("WeatherBug");
    station = readDataFile("nws/nws-station-KTIW-2021.json");
    EXPECT_FALSE(UpdateStationTimeZone());
    EXPECT_EQ(cached("TimeZoneName"), "America/Denver");
    EXPECT_EQ(current("timezone-offset"), "-6");
}

} // namespace
