#include "core/clock.h"
#include "presentation/links.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

const QString kHost = QStringLiteral("http://127.0.0.1:9");

struct LinkCase {
    const char *name;
    const char *stationType;
    const char *zip;
    bool radar;
    const char *expected; // behind the loopback address
};

class LinkTable : public SkinTest, public ::testing::WithParamInterface<LinkCase>
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

TEST_P(LinkTable, NamesBecomeAddresses)
{
    const LinkCase &c = GetParam();
    const QString type = QString::fromLatin1(c.stationType);
    selectStation(type.contains("WUnderground") ? "KIAAMES2" : "p12345", type,
                  QString::fromLatin1(c.zip));
    SaveCache("Links", "URL-localconds", kHost + "/wb-web/local?zip=50011");
    SaveCache("Links", "URL-detailfcast", "https://www.weatherbug.com/forecast?zip=50011");
    SaveCache("Links", "URL-doppler", "https://www.weatherbug.com/map?zip=50011&layer=radar");
    SaveCache("Links", "ForecastURL3", "");
    SavePref("Skins", "MapZoomLevel", "7");
    const QString expected = QString::fromLatin1(c.expected);
    EXPECT_EQ(LinkAddress(QString::fromLatin1(c.name), c.radar),
              expected.isEmpty() || expected.startsWith("http") ? expected : kHost + expected)
        << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Table, LinkTable,
    ::testing::Values(
        LinkCase{"WeatherBug", "WeatherBug", "50011", false,
                 "/wb-web/common/jump.aspx?stat=p12345"},
        LinkCase{"wxstationhomepage", "PWS (WUnderground)", "50011", false,
                 "/wu-web/dashboard/pws/KIAAMES2"},
        LinkCase{"HistoricalWeather", "WeatherBug", "50011", false,
                 "/wb-web/local?zip=50011&stat=p12345"},
        LinkCase{"historicalweather", "NWS (WUnderground)", "50011", false,
                 "/wu-web/history/airport/KIAAMES2/2024/3/5/DailyHistory.html"},
        LinkCase{"historicalweather", "PWS (WUnderground)", "50011", false,
                 "/wu-web/personal-weather-station/dashboard?ID=KIAAMES2#history/data"},
        LinkCase{"topstories", "WeatherBug", "50011", false, "/wu-web/news"},
        LinkCase{"communityvideos", "WeatherBug", "50011", false, "/wu-web/video/top-stories"},
        LinkCase{"wbphotoslocal", "WeatherBug", "50011", false,
                 "/wb-photos/photos/explore/local?latlon=42.03,-93.62"},
        LinkCase{"wunderphotos", "WeatherBug", "50011", false,
                 "/instagram/explore/tags/wunderphotos"},
        LinkCase{"beachcameras", "WeatherBug", "50011", false,
                 "/wu-web/webcams/index.html?region=us"},
        LinkCase{"wucamsasia", "WeatherBug", "50011", false,
                 "/wu-web/webcams/index.html?qlat=32.87958699883&qlon=96.50390625499996"
                 "&qzoom=3&range=intl&region=as"},
        // a WeatherBug page learns the station, once
        LinkCase{"dailyforecast", "WeatherBug", "50011", false,
                 "https://www.weatherbug.com/forecast?zip=50011&stat=p12345"},
        LinkCase{"dailyforecast", "PWS (WUnderground)", "50011", false,
                 "/wu-web/dashboard/pws/KIAAMES2"},
        LinkCase{"radarmap", "WeatherBug", "50011", true,
                 "https://www.weatherbug.com/map?zip=50011&layer=radar&map_animate=1"
                 "&image_type=7"},
        // abroad the zoom is always 2, and without the radar flag the station is added
        LinkCase{"radarmap", "WeatherBug", "0", false,
                 "https://www.weatherbug.com/map?zip=50011&layer=radar&map_animate=1"
                 "&image_type=2&stat=p12345"},
        LinkCase{"radarmap", "PWS (WUnderground)", "50011", true,
                 "/wu-web/wundermap/?isPresentationActive=0&renderer=2&Units=english&zoom=9"
                 "&lat=42.03&lon=-93.62&wxstn=0&wxstnmode=tw&radar=1&radaropa=0.7"
                 "&satellite=0&satelliteopa=0.8"},
        // a name of no row: the family's page of local conditions or its home page
        LinkCase{"help", "WeatherBug", "50011", false, "/wb-web/local?zip=50011&stat=p12345"},
        LinkCase{"help", "PWS (WUnderground)", "50011", false, "/wu-web/"},
        LinkCase{"help", "NWS", "50011", false, ""}));

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
