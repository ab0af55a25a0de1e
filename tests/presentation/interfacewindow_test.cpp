#include "presentation/interfacewindow.h"
#include "presentation/links.h"
#include "run/runprogress.h"
#include "run/runstate.h"
#include "tests/presentation/skinfixture.h"

#include <QDialog>
#include <QSignalSpy>
#include <QTest>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr int kLoadWaitMs = 30000;

class InterfaceWindow : public SkinTest
{
protected:
    void SetUp() override
    {
        installSkin("TestSkin");
        selectStation("KAMW", "NWS");
        SaveCache("Current", "station-id", "KAMW");
        SaveCache("Current", "temp", "72");
        SavePref("Skins", "Option1TestSkin", "Hide");
        SavePref("Skins", "Option20TestSkin-KAMW", "https://maps.example/a.gif|a.gif");
        setLinkOpener([this](const QUrl &url) { opened << url.toString(); });
        window = std::make_unique<frmIface>();
        InterfaceHooks hooks;
        hooks.updateWeather = [this] { calls << "updateWeather"; };
        hooks.refreshTooltip = [this] { calls << "tooltip"; };
        window->setHooks(hooks);
        window->ShowInterface();
        ASSERT_TRUE(waitForPage()) << "the default page did not load";
        window->RefreshInterface(false, true);
        ASSERT_TRUE(waitForPage()) << "the rendered page did not load";
    }
    void TearDown() override
    {
        window.reset();
        setLinkOpener(nullptr);
        runState() = RunState{};
    }

    bool waitForPage()
    {
        QSignalSpy shown(window.get(), &frmIface::pageShown);
        return shown.wait(kLoadWaitMs);
    }
    // The skin writes an action word, as its links do.
    void skinAction(const QString &word)
    {
        window->WebBrowserExecuteScript("setRunAction('" + word + "')");
    }
    QString element(const QString &id) { return window->WebBrowserGetInnerHtml(id); }
    bool waitForElement(const QString &id, const QString &value)
    {
        return QTest::qWaitFor([&] { return element(id) == value; }, 5000);
    }
    // A value of the page, read through an element of the test's own.
    QString pageValue(const QString &expression)
    {
        window->WebBrowserExecuteScript(
            "var p = document.getElementById('probe') || document.body.appendChild("
            "Object.assign(document.createElement('div'), {id: 'probe'}));"
            "p.innerHTML = " +
            expression + ";");
        return element("probe");
    }

    std::unique_ptr<frmIface> window;
    QStringList opened;
    QStringList calls;
};

TEST_F(InterfaceWindow, RendersAtTheDefaultSizeAndClosingKeepsThePlace)
{
    EXPECT_EQ(element("station"), "KAMW");
    EXPECT_EQ(element("temp"), "72°F");
    EXPECT_EQ(element("loaded"), "yes"); // runLoadProcedures ran
    EXPECT_EQ(element("1TB-SkinOption"), "Hide");
    EXPECT_EQ(element("20TB-SkinOption"), "https://maps.example/a.gif|a.gif");
    EXPECT_EQ(element("shownPage"), "current");
    EXPECT_EQ(window->size(), QSize(480, 320));
    EXPECT_EQ(window->minimumSize(), QSize(300, 200));
    EXPECT_TRUE(calls.contains("tooltip"));
    EXPECT_TRUE(process().InterfaceShown);
    window->ShowRealtimeReading("'71','3'");
    EXPECT_TRUE(waitForElement("realtime", "71|3|F|mph|inches|inches|miles|false"));

    // Closing hides the window and keeps its size.
    window->move(40, 30);
    window->resize(520, 360);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_FALSE(process().InterfaceShown);
    EXPECT_EQ(GetPref("Misc", "IfaceWidth"), "520");
    EXPECT_EQ(GetPref("Misc", "IfaceHeight"), "360");
    frmIface reopened;
    EXPECT_EQ(reopened.size(), QSize(520, 360));
}

TEST_F(InterfaceWindow, PagesAndTheProgressBarFollowTheBridge)
{
    skinAction("ShowHourly");
    ASSERT_TRUE(waitForElement("shownPage", "hour"));
    EXPECT_EQ(GetPref("Misc", "LastPage"), "Hour");
    EXPECT_EQ(element("TB-RunAction"), ""); // emptied for the next word
    skinAction("togglesection");
    ASSERT_TRUE(waitForElement("shownPage", "day"));
    EXPECT_EQ(GetPref("Misc", "LastPage"), "Day");
    // The skin has no displayPop: the page stays, the choice is still saved.
    skinAction("showpop");
    ASSERT_TRUE(QTest::qWaitFor([] { return GetPref("Misc", "LastPage") == "POP"; }, 5000));
    EXPECT_EQ(element("shownPage"), "day");
    skinAction("TOGGLESECTION");
    ASSERT_TRUE(waitForElement("shownPage", "hour"));
    // The last page comes back after a reload.
    window->RefreshInterface(false, false);
    ASSERT_TRUE(waitForPage());
    EXPECT_EQ(element("shownPage"), "hour");

    skinAction("retrieveweather");
    ASSERT_TRUE(QTest::qWaitFor([this] { return calls.contains("updateWeather"); }, 5000));
    EXPECT_EQ(window->WebBrowserGetDisplay("TB-ProgressBar"), "block");

    runState().RetrievalRunning = true;
    emit retrievalProgress().progressBarShown();
    ReportProgress(5);
    EXPECT_EQ(pageValue("document.getElementById('TB-ProgressBar').style.width"), "25%");
    // A page loaded during the run shows the bar again where it stood.
    window->RefreshInterface(false, false);
    ASSERT_TRUE(waitForPage());
    EXPECT_EQ(window->WebBrowserGetDisplay("TB-ProgressBar"), "block");
    EXPECT_EQ(pageValue("document.getElementById('TB-ProgressBar').style.width"), "25%");
    emit retrievalProgress().progressBarHidden();
    EXPECT_EQ(window->WebBrowserGetDisplay("TB-ProgressBar"), "none");
}

TEST_F(InterfaceWindow, LinksAndSkinSettingsComeFromThePage)
{
    window->WebBrowserSetInnerHtml("TB-Link", "https://example.test/a?b=1&c=2");
    skinAction("LaunchLink");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !opened.isEmpty(); }, 5000));
    EXPECT_EQ(opened, QStringList{"https://example.test/a?b=1&c=2"});

    // No action runs while a dialogue is up.
    QDialog dialogue;
    dialogue.setModal(true);
    dialogue.show();
    window->RunAction("showhourly");
    EXPECT_EQ(GetPref("Misc", "LastPage"), "Current");
    dialogue.close();
    window->RunAction("showhourly");
    EXPECT_EQ(GetPref("Misc", "LastPage"), "Hour");

    window->WebBrowserSetInnerHtml("2TB-SkinOption", "On");
    window->WebBrowserSetInnerHtml("3TB-SkinOption", "5");
    skinAction("saveskinsettings");
    ASSERT_TRUE(QTest::qWaitFor([] { return GetPref("Skins", "MapZoomLevel") == "5"; }, 5000));
    EXPECT_EQ(GetPref("Skins", "Option2TestSkin"), "On");
    EXPECT_EQ(GetPref("Skins", "Option3TestSkin"), "5");
    window->WebBrowserSetInnerHtml("2TB-SkinOption", "Off");
    skinAction("SaveSingleSkinSetting(2)");
    ASSERT_TRUE(QTest::qWaitFor([] { return GetPref("Skins", "Option2TestSkin") == "Off"; }, 5000));
}

TEST_F(InterfaceWindow, RefreshesAreHeldByTheSkinAndTextOnlySkinsTakeThemInTheirBody)
{
    window->WebBrowserSetInnerHtml("TB-SuspendUpdate", "busy");
    SaveCache("Current", "temp", "80");
    window->RefreshInterface(false, false);
    EXPECT_FALSE(window->WebBrowserGetBusy());
    EXPECT_EQ(element("temp"), "72°F");
    window->WebBrowserSetInnerHtml("TB-SuspendUpdate", "");
    window->RefreshInterface(false, false);
    ASSERT_TRUE(waitForPage());
    EXPECT_EQ(element("temp"), "80°F");

    SavePref("Misc", "IfaceWidth", "700"); // the last skin's size
    SavePref("Misc", "IfaceHeight", "500");
    installSkin("TextOnlyTest");
    window->RefreshInterface(false, false);
    ASSERT_TRUE(waitForPage()); // a new skin loads in full
    EXPECT_EQ(element("temp"), "80°F");
    EXPECT_EQ(window->size(), QSize(400, 300));
    SaveCache("Current", "temp", "65");
    QSignalSpy shown(window.get(), &frmIface::pageShown);
    window->RefreshInterface(false, false);
    EXPECT_EQ(shown.count(), 1); // no load to wait for
    EXPECT_EQ(element("temp"), "65°F");
}

} // namespace
