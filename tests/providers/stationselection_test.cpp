#include "providers/stationselection.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/providers/stationfixtures.h"
#include "tests/support/cachetext.h"
#include "tests/support/fixedtime.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

QString cityCode(const char *key)
{
    return GetPref("CityCode", key);
}

class StationSelection : public StationFileTest
{
protected:
    void SetUp() override
    {
        setStationSelectionHooks({[this] { calls << "rate"; }, [this] { calls << "menu"; },
                                  [this] { return updateAllowed; }, [this] { calls << "update"; },
                                  [this] { calls << "refresh"; }});
    }
    void TearDown() override { setStationSelectionHooks({}); }

    void expectSelection(const StationEntry &entry)
    {
        EXPECT_EQ(ReadSelection(), entry);
        EXPECT_EQ(process().CityCode, entry.Code);
        EXPECT_EQ(process().StationType, entry.StationType);
        EXPECT_EQ(process().Latitude, entry.Latitude);
        EXPECT_EQ(process().Longitude, entry.Longitude);
    }

    QStringList calls;
    bool updateAllowed = true;
};

// The first selection leaves the last keys alone; the next moves the former station there.
TEST_F(StationSelection, ChangeKeepsTheFormerStationInTheLastKeys)
{
    SavePref("CityCode", "LastCode", "OLD");
    SavePref("CityCode", "ProviderId", "p-1");
    SavePref("CityCode", "CheckedZipCode", "True");
    SavePref("Misc", "StationDown", "True");
    SavePref("Misc", "StationDownTimeStamp", "2024-01-01T00:00:00");

    EXPECT_TRUE(ChangeWeatherStation(desMoines().toLine()));
    expectSelection(desMoines());
    EXPECT_EQ(cityCode("LastCode"), "OLD");
    EXPECT_EQ(cityCode("ProviderId"), "");
    EXPECT_EQ(cityCode("CheckedZipCode"), "False");
    EXPECT_EQ(GetPref("Misc", "StationDown"), "False");
    EXPECT_EQ(GetPref("Misc", "StationDownTimeStamp"), "");
    EXPECT_EQ(calls, QStringList{"rate"});
    EXPECT_TRUE(ChangeWeatherStation(ames().toLine()));
    expectSelection(ames());
    EXPECT_EQ(ReadSelection(true), desMoines());
}

TEST_F(StationSelection, SameOrMalformedEntryChangesNothing)
{
    ChangeWeatherStation(desMoines().toLine());
    SavePref("CityCode", "ProviderId", "p-1");
    calls.clear();
    EXPECT_FALSE(ChangeWeatherStation(desMoines().toLine()));
    EXPECT_FALSE(ChangeWeatherStation("Ames KAMW***50010"));
    expectSelection(desMoines());
    EXPECT_EQ(cityCode("ProviderId"), "p-1");
    EXPECT_TRUE(calls.isEmpty());
}

TEST_F(StationSelection, SameCodeWithOtherDataDeletesThatStationsCache)
{
    ChangeWeatherStation(ames().toLine());
    SavePref(CacheSectionFor("KAMW", "Current"), "temp", "70");
    ChangeWeatherStation(desMoines().toLine());
    SaveCache("Current", "temp", "71");

    StationEntry otherZip = desMoines();
    otherZip.ZipCode = "50310";
    EXPECT_TRUE(ChangeWeatherStation(otherZip.toLine()));
    EXPECT_EQ(GetCache("Current", "temp"), "");
    EXPECT_EQ(GetPref(CacheSectionFor("KAMW", "Current"), "temp"), "70");
    EXPECT_EQ(ReadSelection(true), desMoines());
}

TEST_F(StationSelection, SwitchTwiceReturnsToTheFirstStation)
{
    ChangeWeatherStation(desMoines().toLine());
    ChangeWeatherStation(ames().toLine());
    SavePref("CityCode", "ProviderId", "p-1");
    calls.clear();

    SwitchToLastStation();
    expectSelection(desMoines());
    EXPECT_EQ(ReadSelection(true), ames());
    EXPECT_EQ(cityCode("ProviderId"), "");
    EXPECT_EQ(calls, (QStringList{"menu", "update"}));

    updateAllowed = false;
    SwitchToLastStation();
    expectSelection(ames());
    EXPECT_EQ(ReadSelection(true), desMoines());
    EXPECT_EQ(calls, (QStringList{"menu", "update", "menu", "refresh"}));
}

TEST_F(StationSelection, SwitchWithoutAnotherStationDoesNothing)
{
    ChangeWeatherStation(desMoines().toLine());
    SavePref("CityCode", "LastCode", "KDSM");
    SavePref("CityCode", "LastCity", "Other name");
    SwitchToLastStation();
    expectSelection(desMoines());
    EXPECT_EQ(calls, QStringList{"rate"});
}

TEST_F(StationSelection, SwapCityCodesExchangesAndNeedsOnlyALastCode)
{
    EXPECT_FALSE(SwapCityCodes());
    ChangeWeatherStation(desMoines().toLine());
    ChangeWeatherStation(ames().toLine());
    SavePref("CityCode", "CheckedZipCode", "True");
    calls.clear();
    ASSERT_TRUE(SwapCityCodes());
    expectSelection(desMoines());
    EXPECT_EQ(ReadSelection(true), ames());
    EXPECT_EQ(cityCode("CheckedZipCode"), "False");
    EXPECT_TRUE(calls.isEmpty()); // the caller starts the retrieval
}

TEST_F(StationSelection, SetByCodeTakesTheFirstCompleteMatch)
{
    StationEntry first = ames();
    first.City = "Ames first";
    StationEntry second = ames();
    second.City = "Ames second";
    StationEntry incomplete = ames();
    incomplete.City = "Ames without type";
    incomplete.StationType.clear();
    writeStationFile(incomplete.toLine().chopped(3) + "\r\n" + first.toLine() + "\r\n" +
                     second.toLine() + "\r\n");
    ChangeWeatherStation(desMoines().toLine());
    SavePref("CityCode", "ProviderId", "p-1");

    EXPECT_FALSE(SetWeatherStationByCode("kamw")); // without a match nothing changes
    expectSelection(desMoines());
    EXPECT_EQ(cityCode("ProviderId"), "p-1");

    EXPECT_TRUE(SetWeatherStationByCode("KAMW"));
    expectSelection(first);
    EXPECT_EQ(cityCode("ProviderId"), "");
    EXPECT_EQ(cityCode("LastCode"), "");
}

TEST_F(StationSelection, WebPageByFamily)
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"KAMW", "NWS", "https://forecast.weather.gov/MapClick.php?lat=42.0&lon=-93.6"},
        {"KIAAMES12", "PWS (WUnderground)", "https://www.wunderground.com/dashboard/pws/KIAAMES12"},
        {"KAMW", "NWS (WUnderground)", "https://www.wunderground.com/weather/KAMW"},
        {"C1234", "CWOP",
         "https://weather.gladstonefamily.net/site/"
         "search?site=C1234&Get+information=Get+information"},
        {"AMSHS", "", "https://www.weatherbug.com/common/jump.aspx?stat=AMSHS"}};
    for (const auto &[code, type, page] : cases) {
        ChangeWeatherStation(StationEntry{"Ames", code, "50010", "42.0", "-93.6", type}.toLine());
        EXPECT_EQ(StationWebPage(), page) << type;
    }
}

// The actual station's place names it when it has one, and marks the station down once.
TEST_F(StationSelection, DisplayNameOfTheSelectionOrTheActualStation)
{
    FixedTime time{QTimeZone::utc(), QDateTime(QDate(2024, 5, 1), QTime(12, 0), Qt::UTC)};
    ChangeWeatherStation(desMoines().toLine());
    const auto actualStation = [](const char *cityState, const char *station) {
        saveCache(
            "Current",
            QString("UseActualStationName=True|city-state=%1|station=%2").arg(cityState, station));
    };
    SavePref("Misc", "StationDown", "True");
    EXPECT_EQ(GetStationDisplayName(), "Des Moines, IA");
    EXPECT_EQ(GetPref("Misc", "StationDown"), "False");
    actualStation("", "KIKV");
    EXPECT_EQ(GetStationDisplayName(), "Des Moines, IA");

    actualStation("Ankeny, IA", "Ankeny Airport (KIKV)");
    EXPECT_EQ(GetStationDisplayName(), "Ankeny, IA (KIKV)");
    EXPECT_EQ(GetPref("Misc", "StationDown"), "True");
    const QString stamp = time.clock.now().toString(Qt::ISODate);
    EXPECT_EQ(GetPref("Misc", "StationDownTimeStamp"), stamp);
    time.clock.advanceSeconds(3600);
    EXPECT_EQ(GetStationDisplayName(), "Ankeny, IA (KIKV)");
    EXPECT_EQ(GetPref("Misc", "StationDownTimeStamp"), stamp);
}

class PostalCodeRepair : public StationSelection
{
protected:
    void select(const char *zip, const char *type)
    {
        StationEntry entry = ames();
        entry.ZipCode = zip;
        entry.StationType = type;
        writeStationFile(desMoines().toLine() + "\r\n" + entry.toLine() + "\r\n");
        ChangeWeatherStation(entry.toLine());
    }
    PostalCodeLookups answering(const QString &answer)
    {
        return {[this, answer](const QString &lat, const QString &lon) {
                    asked << "location " + lat + "," + lon;
                    return answer;
                },
                [this, answer](const QString &code) {
                    asked << "station " + code;
                    return answer;
                }};
    }
    QStringList asked;
};

TEST_F(PostalCodeRepair, UnknownCodeIsLookedUpByPositionOnce)
{
    select("N/A", "NWS");
    RepairPostalCode(answering("50011"));
    EXPECT_EQ(asked, QStringList{"location 41.99,-93.62"});
    EXPECT_EQ(cityCode("ZipCode"), "50011");
    EXPECT_EQ(cityCode("CheckedZipCode"), "True");
    EXPECT_EQ(ReadStationLines().at(1), BuildStationEntry());
    EXPECT_EQ(ReadStationLines().at(0), desMoines().toLine());

    RepairPostalCode(answering("50012"));
    EXPECT_EQ(asked.size(), 1);
}

TEST_F(PostalCodeRepair, FailedZeroOrOtherFamilyKeepsTheCode)
{
    select("N/A", "NWS");
    RepairPostalCode(answering("N/A")); // still counts as checked
    EXPECT_EQ(cityCode("ZipCode"), "N/A");
    EXPECT_EQ(cityCode("CheckedZipCode"), "True");
    EXPECT_TRUE(ReadStationLines().at(1).contains("***N/A***"));

    select("0", "WeatherBug"); // a foreign station of WeatherBug is asked by its code
    asked.clear();
    RepairPostalCode(answering("0"));
    EXPECT_EQ(asked, QStringList{"station KAMW"});
    EXPECT_EQ(cityCode("ZipCode"), "0");

    select("0", "CWOP");
    asked.clear();
    RepairPostalCode(answering("50010"));
    EXPECT_TRUE(asked.isEmpty());
    EXPECT_EQ(cityCode("ZipCode"), "0");
}

} // namespace
