#include "presentation/runaction.h"
#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

struct WordCase {
    const char *content;
    IfaceAction action;
    const char *link;
    bool radar;
    int option;
};

class RunActionWords : public ::testing::TestWithParam<WordCase>
{
};

TEST_P(RunActionWords, AreReadInLowerCase)
{
    const WordCase &c = GetParam();
    const ActionRequest request = ParseRunAction(QString::fromLatin1(c.content));
    EXPECT_EQ(request.action, c.action) << c.content;
    EXPECT_EQ(request.link, QString::fromLatin1(c.link)) << c.content;
    EXPECT_EQ(request.radar, c.radar) << c.content;
    EXPECT_EQ(request.option, c.option) << c.content;
}

INSTANTIATE_TEST_SUITE_P(
    Table, RunActionWords,
    ::testing::Values(
        WordCase{"ShowCurrent", IfaceAction::ShowCurrent, "", false, 0},
        WordCase{" showhourly\n", IfaceAction::ShowHourly, "", false, 0},
        WordCase{"SHOWPOP", IfaceAction::ShowPop, "", false, 0},
        WordCase{"LaunchLink", IfaceAction::LaunchLink, "", false, 0},
        WordCase{"launchhome", IfaceAction::LaunchNamed, "wxstationhomepage", false, 0},
        WordCase{"LaunchRadarMap", IfaceAction::LaunchNamed, "radarmap", true, 0},
        WordCase{"launchDailyForecast", IfaceAction::LaunchNamed, "dailyforecast", false, 0},
        WordCase{"launchhelp", IfaceAction::LaunchNamed, "help", false, 0},
        WordCase{"launch", IfaceAction::None, "", false, 0},
        WordCase{"togglenextsection", IfaceAction::ToggleSection, "", false, 0},
        WordCase{"ToggleSection", IfaceAction::ToggleSection, "", false, 0},
        WordCase{"toggleprevioussection", IfaceAction::TogglePreviousSection, "", false, 0},
        WordCase{"ShowAlertsMap", IfaceAction::ShowAlertsMap, "", false, 0},
        WordCase{"SaveSingleSkinSetting(7)", IfaceAction::SaveSingleSkinSetting, "", false, 7},
        WordCase{"savesingleskinsetting(20)", IfaceAction::None, "", false, 0},
        WordCase{"savesingleskinsetting(x)", IfaceAction::None, "", false, 0},
        WordCase{"retrieveweather", IfaceAction::RetrieveWeather, "", false, 0},
        WordCase{"logerror", IfaceAction::LogError, "", false, 0},
        WordCase{"no such word", IfaceAction::None, "", false, 0},
        WordCase{"", IfaceAction::None, "", false, 0}));

TEST(Sections, StepForwardAndBackThroughThreePages)
{
    EXPECT_EQ(NextSection(IfacePage::Current), IfacePage::Hour);
    EXPECT_EQ(NextSection(IfacePage::Hour), IfacePage::Day);
    EXPECT_EQ(NextSection(IfacePage::Day), IfacePage::Current);
    EXPECT_EQ(NextSection(IfacePage::Pop), IfacePage::Hour);
    EXPECT_EQ(PreviousSection(IfacePage::Hour), IfacePage::Current);
    EXPECT_EQ(PreviousSection(IfacePage::Day), IfacePage::Hour);
    EXPECT_EQ(PreviousSection(IfacePage::Current), IfacePage::Day);
    EXPECT_EQ(PreviousSection(IfacePage::Pop), IfacePage::Day);
}

TEST(Sections, SavedNamesComeBackAndAnythingElseIsCurrent)
{
    for (IfacePage page : {IfacePage::Current, IfacePage::Hour, IfacePage::Day, IfacePage::Pop})
        EXPECT_EQ(PageFromName(PageName(page)), page);
    EXPECT_EQ(PageName(IfacePage::Pop), "POP");
    EXPECT_EQ(PageFromName("hour"), IfacePage::Current);
    EXPECT_EQ(PageFromName(""), IfacePage::Current);
}

} // namespace
