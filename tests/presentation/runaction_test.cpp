#include "presentation/runaction.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

TEST(RunActionWords, AreReadInLowerCase)
{
    const struct {
        const char *content;
        IfaceAction action;
        const char *link;
        bool radar;
        int option;
    } rows[] = {{" showhourly\n", IfaceAction::ShowHourly, "", false, 0},
                {"SHOWPOP", IfaceAction::ShowPop, "", false, 0},
                {"LaunchLink", IfaceAction::LaunchLink, "", false, 0},
                {"launchhome", IfaceAction::LaunchNamed, "wxstationhomepage", false, 0},
                {"LaunchRadarMap", IfaceAction::LaunchNamed, "radarmap", true, 0},
                {"launchDailyForecast", IfaceAction::LaunchNamed, "dailyforecast", false, 0},
                {"launch", IfaceAction::None, "", false, 0},
                {"togglenextsection", IfaceAction::ToggleSection, "", false, 0},
                {"SaveSingleSkinSetting(7)", IfaceAction::SaveSingleSkinSetting, "", false, 7},
                {"savesingleskinsetting(20)", IfaceAction::None, "", false, 0},
                {"savesingleskinsetting(x)", IfaceAction::None, "", false, 0},
                {"no such word", IfaceAction::None, "", false, 0}};
    for (const auto &r : rows) {
        const ActionRequest request = ParseRunAction(QString::fromLatin1(r.content));
        EXPECT_EQ(request.action, r.action) << r.content;
        EXPECT_EQ(request.link, QString::fromLatin1(r.link)) << r.content;
        EXPECT_EQ(request.radar, r.radar) << r.content;
        EXPECT_EQ(request.option, r.option) << r.content;
    }
}

TEST(Sections, StepForwardAndBackThroughThreePages)
{
    EXPECT_EQ(NextSection(IfacePage::Day), IfacePage::Current);
    EXPECT_EQ(PreviousSection(IfacePage::Current), IfacePage::Day);
    EXPECT_EQ(PreviousSection(IfacePage::Pop), IfacePage::Day);
}

TEST(Sections, SavedNamesComeBackAndAnythingElseIsCurrent)
{
    EXPECT_EQ(PageFromName(PageName(IfacePage::Pop)), IfacePage::Pop);
    EXPECT_EQ(PageFromName("hour"), IfacePage::Current);
    EXPECT_EQ(PageFromName(""), IfacePage::Current);
}

} // namespace
