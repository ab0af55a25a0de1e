#include "core/clock.h"
#include "presentation/links.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

const QString kHost = QStringLiteral("http://127.0.0.1:9");

class LinkTable : public SkinTest
{
protected:
    void SetUp() override
    {
        SavePref("Hosts", "Override", kHost);
        setClock(&m_clock);
    }
    void TearDown() override { setClock(nullptr); }
    FixedClock m_clock{QDateTime(QDate(2024, 3, 5), QTime(12, 0), Qt::UTC)};
};

TEST_F(LinkTable, NamesBecomeAddresses)
{
    const struct {
        const char *name, *stationType, *zip;
        bool radar;
        const char *expected; // behind the loopback address
    } rows[] = {
        {"WeatherBug", "WeatherBug", "50011", false, "/wb-web/common/jump.aspx?stat=p12345"},
        {"wxstationhomepage", "PWS (WUnderground)", "50011", false,
         "/wu-web/dashboard/pws/KIAAMES2"},
        {"HistoricalWeather", "WeatherBug", "50011", false, "/wb-web/local?zip=50011&stat=p12345"},
        {"historicalweather", "NWS (WUnderground)", "50011", false,
         "/wu-web/history/airport/KIAAMES2/2024/3/5/DailyHistory.html"},
        {"historicalweather", "PWS (WUnderground)", "50011", false,
         "/wu-web/personal-weather-station/dashboard?ID=KIAAMES2#history/data"},
        {"wbphotoslocal", "WeatherBug", "50011", false,
         "/wb-photos/photos/explore/local?latlon=42.03,-93.62"},
        // a WeatherBug page learns the station, once
        {"dailyforecast", "WeatherBug", "50011", false,
         "https://www.weatherbug.com/forecast?zip=50011&stat=p12345"},
        {"radarmap", "WeatherBug", "50011", true,
         "https://www.weatherbug.com/map?zip=50011&layer=radar&map_animate=1"
         "&image_type=7"},
        // abroad the zoom is always 2, and without the radar flag the station is added
        {"radarmap", "WeatherBug", "0", false,
         "https://www.weatherbug.com/map?zip=50011&layer=radar&map_animate=1"
         "&image_type=2&stat=p12345"},
        {"radarmap", "PWS (WUnderground)", "50011", true,
         "/wu-web/wundermap/?isPresentationActive=0&renderer=2&Units=english&zoom=9"
         "&lat=42.03&lon=-93.62&wxstn=0&wxstnmode=tw&radar=1&radaropa=0.7"
         "&satellite=0&satelliteopa=0.8"},
        // a name of no row: the family's page of local conditions or its home page
        {"help", "WeatherBug", "50011", false, "/wb-web/local?zip=50011&stat=p12345"},
        {"help", "PWS (WUnderground)", "50011", false, "/wu-web/"},
        {"help", "NWS", "50011", false, ""}};
    for (const auto &r : rows) {
        const QString type = QString::fromLatin1(r.stationType);
        selectStation(type.contains("WUnderground") ? "KIAAMES2" : "p12345", type,
                      QString::fromLatin1(r.zip));
        SaveCache("Links", "URL-localconds", kHost + "/wb-web/local?zip=50011");
        SaveCache("Links", "URL-detailfcast", "https://www.weatherbug.com/forecast?zip=50011");
        SaveCache("Links", "URL-doppler", "https://www.weatherbug.com/map?zip=50011&layer=radar");
        SaveCache("Links", "ForecastURL3", "");
        SavePref("Skins", "MapZoomLevel", "7");
        const QString expected = QString::fromLatin1(r.expected);
        EXPECT_EQ(LinkAddress(QString::fromLatin1(r.name), r.radar),
                  expected.isEmpty() || expected.startsWith("http") ? expected : kHost + expected)
            << r.name << ' ' << r.stationType;
    }
}

class OpenLinks : public SkinTest
{
protected:
    void SetUp() override
    {
        SavePref("Hosts", "Override", kHost);
        setLinkOpener([this](const QUrl &url) { opened << url.toString(); });
    }
    void TearDown() override { setLinkOpener(nullptr); }
    QStringList opened;
};

TEST_F(OpenLinks, TheSkinsOwnMapLinkComesFirstForTheRadar)
{
    installSkin("TestSkin");
    selectStation("KAMW", "NWS");
    SavePref("Skins", "Option20TestSkin-KAMW", "https://maps.example/radar.gif|radar.gif");
    OpenLink("RadarMap", true);
    OpenLink("RadarMap", false); // without the flag an NWS station has no map
    OpenLink("nothing", false);
    EXPECT_EQ(opened, QStringList{"https://maps.example/radar.gif"});
}

TEST_F(OpenLinks, AnAddressThatIsNoneIsDropped)
{
    OpenAddress("  ");
    OpenAddress("https://www.weather.gov/");
    EXPECT_EQ(opened, QStringList{"https://www.weather.gov/"});
}

} // namespace
