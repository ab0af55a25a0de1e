#include "presentation/traymenus.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "tests/support/testprofile.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

using TrayMenus = Tarnby::Test::ProfileTest;

TEST_F(TrayMenus, MissingStationListIsWrittenWithTheCurrentStation)
{
    SavePref("CityCode", "Code", "KAMW");
    SavePref("CityCode", "StationType", "NWS");
    const QList<StationMenuItem> items = LoadStationList();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].caption, QString()); // no City: an empty caption still selects it
    EXPECT_TRUE(items[0].checked);
    EXPECT_TRUE(FileExists(process().ProfilePath + "/CityCode.cmb"));
}

TEST_F(TrayMenus, MalformedStationLinesAreLeftOut)
{
    WriteFileAtomic(process().ProfilePath + "/CityCode.cmb",
                    "no separator here\r\nKeep" + QString(100, u' ') + "K1***1***2***3***NWS\r\n");
    const QList<StationMenuItem> items = LoadStationList();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].caption, QStringLiteral("Keep"));
    EXPECT_FALSE(items[0].checked);
}

TEST_F(TrayMenus, FavouritesNeedTwoBarsAndLoseTheirStar)
{
    WriteFileAtomic(process().ProfilePath + "/FavoriteMaps.tb",
                    "Radar|Loop*|https://a.example/loop.php?x=1|2\r\nonly|one bar\r\nno bar\r\n");
    const QList<MapMenuItem> items = BuildMapMenuItems();
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items[0].caption, QStringLiteral("Loop"));
    EXPECT_EQ(items[0].url, QStringLiteral("https://a.example/loop.php?x=1|2"));
}

TEST(MapLinks, PagesByTheirLastLettersOrTheirSite)
{
    for (const char *page : {"https://a.example/map.php?zoom=3", "https://a.example/Index.HTM",
                             "https://a.example/view.cfm", "https://www.rainviewer.com/map"})
        EXPECT_TRUE(IsMapPage(QLatin1String(page))) << page;
    for (const char *picture : {"https://a.example/radar.gif",
                                "https://a.example/radar.jpg?t=1.htm", "https://a.example/"})
        EXPECT_FALSE(IsMapPage(QLatin1String(picture))) << picture;
}

TEST(ClickActions, StoredWordsAndTheDoubleClickDifference)
{
    const struct {
        const char *stored;
        bool doubleClick;
        TrayClickAction action;
    } cases[] = {{"Open Tarnby", false, TrayClickAction::OpenTarnby},
                 {"Switch to previous weather station", false, TrayClickAction::SwapStations},
                 {"Switch to previous weather station", true, TrayClickAction::None},
                 {"Switch to previous weather station:  Call SwapCityCodes", true,
                  TrayClickAction::SwapStations},
                 {"Switch to previous Active City", true, TrayClickAction::SwapStations},
                 {"Goto WeatherBug Website", false, TrayClickAction::WeatherBugSite},
                 {"Visit Weather Underground", false, TrayClickAction::WUndergroundSite},
                 {"No Action", false, TrayClickAction::None}};
    for (const auto &c : cases)
        EXPECT_EQ(ClickActionFor(QLatin1String(c.stored), c.doubleClick), c.action) << c.stored;
}

} // namespace
