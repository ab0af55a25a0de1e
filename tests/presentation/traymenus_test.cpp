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
    const struct {
        const char *url;
        bool page;
    } cases[] = {{"https://a.example/map.php?zoom=3", true},
                 {"https://a.example/Index.HTM", true},
                 {"https://a.example/view.cfm", true},
                 {"https://a.example/radar.gif", false},
                 {"https://a.example/radar.jpg?t=1.htm", false},
                 {"https://www.rainviewer.com/map", true},
                 {"https://a.example/", false}};
    for (const auto &c : cases)
        EXPECT_EQ(IsMapPage(QLatin1String(c.url)), c.page) << c.url;
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
