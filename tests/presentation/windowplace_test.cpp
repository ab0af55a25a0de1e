#include "presentation/skinscripts.h"
#include "presentation/windowplace.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

SkinIni skinIni(int minWidth, int minHeight, int defaultWidth, int defaultHeight)
{
    SkinIni ini;
    ini.MinWidth = minWidth;
    ini.MinHeight = minHeight;
    ini.DefaultWidth = defaultWidth;
    ini.DefaultHeight = defaultHeight;
    return ini;
}

TEST(WindowSize, SavedSizeThenDefaultThenCurrentNeverBelowTheMinimum)
{
    const SkinIni ini = skinIni(300, 200, 480, 320);
    EXPECT_EQ(WindowSizeFor(ini, "600", "500", QSize(10, 10)), QSize(600, 500));
    EXPECT_EQ(WindowSizeFor(ini, "", "500", QSize(10, 10)), QSize(480, 320));
    EXPECT_EQ(WindowSizeFor(ini, "abc", "500", QSize(10, 10)), QSize(480, 320));
    EXPECT_EQ(WindowSizeFor(ini, "100", "100", QSize(10, 10)), QSize(300, 200));
    EXPECT_EQ(WindowSizeFor(SkinIni{}, "", "", QSize(640, 480)), QSize(640, 480));
}

TEST(WindowPlace, AReachableWindowStaysAndALostOneComesBack)
{
    const QList<QRect> screens{QRect(0, 0, 1920, 1080), QRect(1920, 0, 1280, 1024)};
    const QRect onSecond(2000, 100, 400, 300);
    EXPECT_EQ(PullOntoScreen(onSecond, screens), onSecond);
    const QRect halfOff(1800, 900, 400, 300); // a corner on the first screen is enough
    EXPECT_EQ(PullOntoScreen(halfOff, screens), halfOff);
    EXPECT_EQ(PullOntoScreen(QRect(5000, 3000, 400, 300), screens), QRect(1520, 780, 400, 300));
    EXPECT_EQ(PullOntoScreen(QRect(-900, -20, 400, 300), screens), QRect(0, 0, 400, 300));
    EXPECT_EQ(PullOntoScreen(QRect(1890, 1060, 400, 300), screens), QRect(1520, 780, 400, 300));
    EXPECT_EQ(PullOntoScreen(onSecond, {}), onSecond);
}

TEST(SkinScripts, TextsBecomeSafeScriptStrings)
{
    EXPECT_EQ(ScriptString("it's a \\ path\nnext"), "'it\\'s a \\\\ path\\nnext'");
}

using RealtimeArguments = ProfileTest;

TEST_F(RealtimeArguments, TheUnitsAndTheWindFlagFollowTheReadings)
{
    process().UnitTemp = "C";
    SavePref("Conversion", "WindInDegrees", "True");
    EXPECT_EQ(RealtimeScriptArguments("'72','5'"),
              "'72','5','C','mph','inches','inches','miles','true'");
}

} // namespace
