// The order of the passes, the gates, the case rules and the misc pass.

#include "tests/template/templatetest.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "template/misctokens.h"

#include <gtest/gtest.h>

using namespace Tarnby;
using Tarnby::Test::TemplateTest;

namespace
{

class MiscPass : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        loadCache();
        SavePref("CityCode", "City", "Ames, IA (Ames Municipal Airport)");
        SavePref("CityCode", "ZipCode", "50010");
    }
};

TEST_F(MiscPass, TextWithoutKnownTokensComesBackUnchanged)
{
    EXPECT_EQ(expand(QString()), QString());
    const QString text = "<P>[UNKNOWN TOKEN] [temp] [TEMP [/HOURLY LOOP] ]]][[[</P>";
    EXPECT_EQ(expand(text, true, true), text);
}

TEST_F(MiscPass, SunGateAlsoCoversDawnAndDusk)
{
    EXPECT_EQ(expand("[DAWN] [DUSK AMPM]"), "[DAWN] [DUSK AMPM]");
    EXPECT_EQ(expand("[DAWN] [DUSK AMPM] [SUNRISE]"), "4:58 9:21 PM 5:32");
    EXPECT_EQ(expand("[DAWN] [SUNSET AMPM]"), "4:58 8:46 PM");
}

TEST_F(MiscPass, PictureOfTheFirstOccurrenceOnly)
{
    EXPECT_EQ(expand("[DATE MMMM] [DATE YYYY] [DATE MMMM] [DATE]"),
              "June [DATE YYYY] June 6/14/2024");
    EXPECT_EQ(expand("[TIME h:nn AM/PM] [TIME hh]"), "3:30 PM [TIME hh]");
}

TEST_F(MiscPass, ObservedDateTimeFormsAreNeverBothExpanded)
{
    EXPECT_EQ(expand("[OBSERVED DATETIME]|[OBSERVED DATETIME 60]"),
              "6/14/2024 2:55:00 PM|[OBSERVED DATETIME 60]");
    EXPECT_EQ(expand("[OBSERVED DATETIME - 15]|[OBSERVED DATETIME - 15]"),
              "6/14/2024 2:40:00 PM|6/14/2024 2:40:00 PM");
    EXPECT_EQ(expand("[OBSERVED TIMEZONE] [DOWNLOADED DATETIME]"),
              "Updated 2:55 PM CDT 6/14/2024 3:20:00 PM");
}

TEST_F(MiscPass, SkinOptionsStopAtTheFirstGap)
{
    SavePref("Skins", "Option1Splendid4", "blue");
    EXPECT_EQ(expand("[TBSKINOPTION1] [TBSKINOPTION2] [TBSKINOPTION4]"),
              "blue N/A [TBSKINOPTION4]");
    EXPECT_EQ(expand("[TBSKINOPTION3]"), "[TBSKINOPTION3]");
}

// A value brings in tokens: later passes know them, the misc pass has passed.
TEST_F(MiscPass, ReplacementsAreSeenOnlyByLaterSteps)
{
    SavePref("Skins", "Option1Splendid4",
             "[TEMP PLAIN] [DATE] [HOURLY LOOP COUNT=1]x[/HOURLY LOOP]");
    EXPECT_EQ(expand("[TBSKINOPTION1]"), "78.4 [DATE] x");
}

TEST_F(MiscPass, SomeTokensIgnoreCase)
{
    process().ProfilePath = "/home/u/Tarnby";
    EXPECT_EQ(expand("[station]|[Profile Location]|[Station Id]"),
              "Ames, IA (Ames Municipal Airport)|[Profile Location]|[Station Id]");
    // The gate itself is case-sensitive; behind it every spelling is replaced.
    EXPECT_EQ(expand("[PROFILE LOCATION]|[Profile Location]"), "/home/u/Tarnby|/home/u/Tarnby");
    EXPECT_EQ(expand("[SKIN PATH BASE]|[SKIN PATH]"),
              "/home/u/Tarnby/Skins/Interface/Splendid4|/home/u/Tarnby/Skins/Interface/Splendid4/"
              "Cache/KAMW/");
    setStationWebPageSource([] { return QStringLiteral(" https://example.test/KAMW "); });
    EXPECT_EQ(expand("[STATION URL]"), "https://example.test/KAMW");
    setStationWebPageSource(nullptr);
}

TEST_F(MiscPass, StationFormattedCutsAndMarksTheName)
{
    SavePref("CityCode", "City", QString(70, u'x'));
    EXPECT_EQ(expand("[STATION FORMATTED]"), "<STRONG STYLE=\"color:#FFFFFF; font-size:13px;\">" +
                                                 QString(60, u'x') + "...</STRONG>");
}

TEST_F(MiscPass, MapStyleShowsOneOfTwoImages)
{
    process().MapSource = "tb2";
    EXPECT_EQ(expand("[SKIN MAP STYLE GIF]|[skin map style jpg]"), "display:none;|");
    SavePref("Skins", "Option20Splendid4-", "radar");
    EXPECT_EQ(expand("[SKIN MAP STYLE GIF]|[SKIN MAP STYLE JPG]"), "|display:none;");
    EXPECT_EQ(expand("[SKIN MAP PATH]"), "");
}

TEST_F(MiscPass, UpdatedStamps)
{
    SavePref("OnDownload", "DualDisplay", "True");
    EXPECT_EQ(expand("[UPDATED PLAIN]"),
              "Observed: 6/14/2024 @ 2:55 PM<BR>Downloaded: 6/14/2024 @ 3:20 PM");
    EXPECT_EQ(GetPref("OnDownload", "DualDisplay"), "");
    SavePref("OnDownload", "TimeDisplay", "False");
    EXPECT_EQ(expand("[UPDATED]"), "Observed:&nbsp;6/14/2024 @ 2:55 PM<BR />");
    EXPECT_EQ(expand("[UPDATED AGO]"), "Updated 35 minutes ago");
    cache("Current", "observed", "6/14/2024 3:29 PM");
    EXPECT_EQ(expand("[UPDATED AGO]"), "Updated 1 minute ago");
    cache("Current", "observed", "6/12/2024 3:30 PM");
    EXPECT_EQ(expand("[UPDATED AGO]"), "Updated 2 days ago");
    cache("Current", "observed", "soon");
    EXPECT_EQ(expand("[UPDATED AGO]"), "N/A");
}

TEST_F(MiscPass, EntitiesOnlyWhenAsked)
{
    EXPECT_EQ(expand("[TEMP] a&ndash;b"), QString::fromUtf8("78.4°F a&ndash;b"));
    EXPECT_EQ(expand("[TEMP] a&ndash;b", true),
              "78.4&deg;F a<SPAN STYLE='color:#BBBBBB;'>&ndash;</SPAN>b");
}

} // namespace
