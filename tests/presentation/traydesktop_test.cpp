// The tray on a real X display with a tray host (trayer): icons, their pictures, the
// menus, the clicks, the flashing, the tray's restart, the balloon and the skinned
// tooltip. Skipped where no tray host can be had.
#include "presentation/frmmisc.h"

#include "app/singleinstance.h"
#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "presentation/tooltipwindow.h"
#include "presentation/trayicondrawing.h"
#include "providers/conditions.h"
#include "tests/presentation/snapshot.h"
#include "tests/support/testprofile.h"

#include <QApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QMenu>
#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

using namespace Tarnby;
using Tarnby::Test::keepSnapshot;

namespace
{

bool waitUntil(const std::function<bool()> &condition, int ms = 8000)
{
    return QTest::qWaitFor(condition, ms);
}

// The tray host of the test run, started when the display has none.
class TrayHost
{
public:
    static bool ensure()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb")) return false;
        if (QSystemTrayIcon::isSystemTrayAvailable()) return true;
        start();
        return waitUntil([] { return QSystemTrayIcon::isSystemTrayAvailable(); });
    }
    static void start()
    {
        process() = std::make_unique<QProcess>();
        process()->start(QStringLiteral("trayer"),
                         {QStringLiteral("--edge"), QStringLiteral("bottom"),
                          QStringLiteral("--height"), QStringLiteral("24"),
                          QStringLiteral("--widthtype"), QStringLiteral("request")});
        process()->waitForStarted(3000);
    }
    static bool stop()
    {
        if (!process()) return false;
        process()->terminate();
        process()->waitForFinished(3000);
        process().reset();
        return true;
    }
    static std::unique_ptr<QProcess> &process()
    {
        static std::unique_ptr<QProcess> trayer;
        return trayer;
    }
};

struct Calls {
    int showTarnby = 0, updateWeather = 0, afterStationChange = 0, viewAlerts = 0;
    QString map;
    bool mapPage = false;
};

class TrayDesktop : public Tarnby::Test::ProfileTest
{
protected:
    static void SetUpTestSuite() { s_hostReady = TrayHost::ensure(); }
    static void TearDownTestSuite() { TrayHost::stop(); }

    void SetUp() override
    {
        if (!s_hostReady) GTEST_SKIP() << "no tray host on this display (needs X11 and trayer)";
        process().CityCode = QStringLiteral("KAMW");
        tray("ShowTenthsPlace", "False");
        tray("ForeColor", "16777215");
        tray("BackColor", "0");
        cache("Current", "temp", "72");
        misc = std::make_unique<frmMisc>(hooks());
        misc->SetupTrayIcon();
        ASSERT_TRUE(waitUntil([&] { return misc->temperatureIcon()->geometry().isValid(); }))
            << "the tray host did not take the icon";
        misc->RefreshTray(); // drawn again for the size the tray gave it
    }
    void TearDown() override { misc.reset(); }

    TrayHooks hooks()
    {
        TrayHooks h;
        h.showTarnby = [this] { ++calls.showTarnby; };
        h.updateWeather = [this] { ++calls.updateWeather; };
        h.updateAfterStationChange = [this] { ++calls.afterStationChange; };
        h.viewAlerts = [this] { ++calls.viewAlerts; };
        h.interfaceShown = [this] { return interfaceShown; };
        h.openMap = [this](const QString &url, bool page) {
            calls.map = url;
            calls.mapPage = page;
        };
        return h;
    }
    static void tray(const char *key, const char *value)
    {
        SavePref(QStringLiteral("TrayIcon"), QLatin1String(key), QLatin1String(value));
    }
    static void cache(const char *section, const char *key, const char *value)
    {
        SaveCache(QLatin1String(section), QLatin1String(key), QString::fromUtf8(value));
    }
    int side() const { return misc->temperatureIcon()->geometry().width(); }
    QImage shown() const
    {
        return misc->temperatureIcon()
            ->icon()
            .pixmap(QSize(side(), side()))
            .toImage()
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    // The picture the icon should show for a text in the colours in force.
    QImage expected(const QString &text) const
    {
        return DrawTrayDigits(text, SetTrayFont(misc->italic()), SetTrayColours(), side())
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }

    static inline bool s_hostReady = false;
    std::unique_ptr<frmMisc> misc;
    Calls calls;
    bool interfaceShown = false;
};

TEST_F(TrayDesktop, IconShowsTheCachedTemperatureInTheColoursAndSlantInForce)
{
    const struct {
        const char *temp, *hideDigit, *text;
    } cases[] = {{"105", "True", "05"}, {"", "False", "NA"}, {"72", "False", "72"}};
    for (const auto &c : cases) {
        cache("Current", "temp", c.temp);
        tray("HideDigit", c.hideDigit);
        misc->RefreshTray();
        const QImage image = shown();
        keepSnapshot(image, QStringLiteral("tray-%1-%2px").arg(QLatin1String(c.text)).arg(side()));
        EXPECT_EQ(image, expected(QLatin1String(c.text))) << c.text;
        EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black)) << c.text;
    }

    // Alert colours, then the slant of a failed run.
    cache("Alerts", "AlertsAvailable", "True");
    cache("Alerts", "Count", "1");
    cache("Alerts", "title1", "Severe Thunderstorm Warning");
    tray("ForeColorAlert", "65535"); // yellow
    tray("BackColorAlert", "255");   // red
    misc->RefreshTray();
    QImage image = shown();
    keepSnapshot(image, QStringLiteral("tray-alert-%1px").arg(side()));
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::red));
    EXPECT_EQ(image, expected(QStringLiteral("72")));

    misc->SwitchTrayItalic(true);
    EXPECT_TRUE(misc->italic());
    image = shown();
    keepSnapshot(image, QStringLiteral("tray-alert-italic-%1px").arg(side()));
    EXPECT_EQ(image, expected(QStringLiteral("72")));
    EXPECT_NE(image,
              DrawTrayDigits(QStringLiteral("72"), SetTrayFont(false), SetTrayColours(), side())
                  .convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

TEST_F(TrayDesktop, MenusRunTheirCallsSwitchStationsAndOpenMaps)
{
    QMenu *menu = misc->TrayMenu();
    menu->popup(QPoint(200, 200));
    ASSERT_TRUE(waitUntil([&] { return menu->isVisible(); }));
    EXPECT_FALSE(misc->trayItem(QStringLiteral("ViewAlerts"))->isEnabled());
    EXPECT_FALSE(
        misc->trayItem(QStringLiteral("MonthlyObservations"))->isEnabled()); // no window yet
    EXPECT_TRUE(misc->trayItem(QStringLiteral("ExitTB"))->isEnabled());
    misc->trayItem(QStringLiteral("UpdateWeather"))->trigger();
    misc->trayItem(QStringLiteral("OpenTarnby"))->trigger();
    menu->hide();
    EXPECT_EQ(calls.updateWeather, 1);
    EXPECT_EQ(calls.showTarnby, 1);

    cache("Alerts", "AlertsAvailable", "True");
    misc->rightButtonDown();
    EXPECT_TRUE(misc->trayItem(QStringLiteral("ViewAlerts"))->isEnabled());

    const QString blanks(100, u' ');
    WriteFileAtomic(process().ProfilePath + "/CityCode.cmb",
                    "Ames, IA (KAMW)" + blanks + "KAMW***50010***42.0***-93.6***NWS\r\n" +
                        "Des Moines, IA (KDSM)" + blanks + "KDSM***50321***41.5***-93.6***NWS\r\n");
    SavePref("CityCode", "Code", "KAMW");
    SavePref("CityCode", "City", "Ames, IA (KAMW)");
    SavePref("CityCode", "Latitude", "42.0");
    SavePref("CityCode", "Longitude", "-93.6");
    cache("Links", "MapCount", "2");
    cache("Links", "Map1", "Radar");
    cache("Links", "MapURL1", "https://maps.example/radar.php?lat=[LATITUDE]&lon=[LONGITUDE]");
    cache("Links", "Map2", "-");
    WriteFileAtomic(process().ProfilePath + "/FavoriteMaps.tb",
                    "Satellite|Visible*|https://sat.example/vis.gif\r\n");
    misc->BuildStationMenu();
    misc->BuildMapMenu();

    const QList<QAction *> stations = misc->StationMenu()->actions();
    ASSERT_EQ(stations.size(), 6); // heading, line, two stations, line, add
    EXPECT_TRUE(stations[2]->isChecked());
    EXPECT_FALSE(stations[3]->isChecked());
    EXPECT_EQ(stations.last()->text(), QStringLiteral("Add New Weather Station..."));
    stations[3]->trigger();
    EXPECT_EQ(GetPref("CityCode", "Code"), QStringLiteral("KDSM"));
    EXPECT_EQ(calls.afterStationChange, 1);
    EXPECT_TRUE(misc->StationMenu()->actions()[3]->isChecked());

    const QList<QAction *> maps = misc->MapMenu()->actions();
    ASSERT_EQ(maps.size(), 5); // Radar, line, Visible, line, add
    EXPECT_TRUE(maps[1]->isSeparator());
    maps[0]->trigger();
    EXPECT_EQ(calls.map, QStringLiteral("https://maps.example/radar.php?lat=42.0&lon=-93.6"));
    EXPECT_TRUE(calls.mapPage);
    maps[2]->trigger();
    EXPECT_EQ(calls.map, QStringLiteral("https://sat.example/vis.gif"));
    EXPECT_FALSE(calls.mapPage);
    EXPECT_EQ(maps.last()->text(), QStringLiteral("Add More Maps..."));
}

TEST_F(TrayDesktop, DoubleClickRunsOnlyTheDoubleClickActionAndSwapsStations)
{
    tray("LeftSingleClickAction", "Open Tarnby");
    tray("LeftDoubleClickAction", "Refresh weather information");
    emit misc->temperatureIcon()->activated(QSystemTrayIcon::Trigger);
    emit misc->temperatureIcon()->activated(QSystemTrayIcon::DoubleClick);
    QTest::qWait(misc->LeftSingleClickTimer.interval() + 100);
    EXPECT_EQ(calls.showTarnby, 0);
    EXPECT_EQ(calls.updateWeather, 1);

    emit misc->temperatureIcon()->activated(QSystemTrayIcon::Trigger);
    EXPECT_TRUE(waitUntil([&] { return calls.showTarnby == 1; }, 2000));

    SavePref("CityCode", "Code", "KAMW");
    SavePref("CityCode", "LastCode", "KDSM");
    tray("LeftDoubleClickAction", "Switch to previous weather station:  Call SwapCityCodes");
    misc->leftDoubleClick();
    EXPECT_EQ(GetPref("CityCode", "Code"), QStringLiteral("KDSM"));
    EXPECT_EQ(GetPref("CityCode", "LastCode"), QStringLiteral("KAMW"));
    EXPECT_EQ(GetPref("CityCode", "CheckedZipCode"), QStringLiteral("False"));
    EXPECT_EQ(calls.afterStationChange, 1);
}

TEST_F(TrayDesktop, SecondStartBringsTheWindowUpAndChangesPopABalloon)
{
    SingleInstance first;
    ASSERT_TRUE(first.becomePrimary());
    QObject::connect(&first, &SingleInstance::messageReceived, misc.get(),
                     &frmMisc::onInstanceMessage);
    SingleInstance second;
    EXPECT_FALSE(second.becomePrimary());
    EXPECT_TRUE(second.sendToPrimary(QStringLiteral("TarnbyLaunched")));
    EXPECT_TRUE(waitUntil([&] { return calls.showTarnby == 1; }, 3000));

    // Change detection tells by a balloon.
    PopConditionBalloon();
    const auto balloonUp = [] {
        for (const QWidget *widget : QApplication::topLevelWidgets())
            if (widget->inherits("QBalloonTip") && widget->isVisible()) return true;
        return false;
    };
    EXPECT_TRUE(waitUntil(balloonUp, 3000));
}

TEST_F(TrayDesktop, FlashingAlternatesUntilTheWindowIsOpen)
{
    const QImage normal = shown();
    misc->startFlashing();
    ASSERT_TRUE(waitUntil([&] { return shown() != normal; }, 2000));
    keepSnapshot(shown(), QStringLiteral("tray-flash-%1px").arg(side()));
    ASSERT_TRUE(waitUntil([&] { return shown() == normal; }, 2000)); // and back
    interfaceShown = true;
    ASSERT_TRUE(waitUntil([&] { return !misc->flashing(); }, 3000));
    EXPECT_EQ(shown(), normal);
    misc->startFlashing();
    misc->leftButtonDown(); // a click stops it at once
    EXPECT_FALSE(misc->flashing());
}

TEST_F(TrayDesktop, IconsComeBackWhenTheTrayRestarts)
{
    if (!TrayHost::stop()) GTEST_SKIP() << "the tray host is not this test's own";
    ASSERT_TRUE(waitUntil([] { return !QSystemTrayIcon::isSystemTrayAvailable(); }));
    TrayHost::start();
    ASSERT_TRUE(waitUntil([] { return QSystemTrayIcon::isSystemTrayAvailable(); }));
    EXPECT_TRUE(waitUntil([&] { return misc->temperatureIcon()->geometry().isValid(); }, 10000));
    EXPECT_TRUE(misc->temperatureIcon()->isVisible());
}

TEST_F(TrayDesktop, SkinnedTooltipOpensOnHoverAndOnTheMiddleButton)
{
    SavePref("TrayTooltip", "TooltipStyle", "Skinned tooltip");
    SavePref("TrayTooltip", "Values", "ACF");
    SavePref("CityCode", "City", "Ames, IA (Ames Municipal Airport)");
    const QString folder = process().ProfilePath + "/Skins/Tooltip/Day And Night/";
    CreateFolder(folder);
    // Without sun times the light is over: the night template serves.
    WriteFileAtomic(folder + "SkinDay.tbt", "day [CURRENTCONDITIONS]");
    WriteFileAtomic(folder + "SkinNight.tbt",
                    "<STYLE>body{background:#203040;color:white;font:12px sans-serif}"
                    ".WxStation{font-weight:bold}</STYLE>[CURRENTCONDITIONS]");

    // A tray that tells of the pointer (XEmbed) asks for the tooltip by a help event.
    QHelpEvent hover(QEvent::ToolTip, QPoint(), misc->temperatureIcon()->geometry().center());
    QCoreApplication::sendEvent(misc->temperatureIcon(), &hover);
    EXPECT_TRUE(misc->ShowTooltipTimer.isActive());
    misc->ShowTooltipTimer.stop();
    misc->TrayMouseOutTimer.stop();

    misc->middleClick();
    frmTooltipWindow *window = misc->tooltipWindow();
    ASSERT_TRUE(window);
    ASSERT_TRUE(waitUntil([&] { return window->isVisible(); }));
    EXPECT_TRUE(FileExists(window->pageFile()));
    EXPECT_NE(window->size(), QSize(200, 200)); // sized to the measured content
    EXPECT_GT(window->width(), 50);
    QTest::qWait(300);
    keepSnapshot(window->grab().toImage(), QStringLiteral("tooltip-window"));
    misc->middleClick();
    EXPECT_FALSE(window->isVisible());
}

} // namespace
