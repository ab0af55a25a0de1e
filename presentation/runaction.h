#pragma once
// The action words a skin writes into its element TB-RunAction, and the pages of the
// interface window. The words are compared in lower case; a word the table does not
// know is no action.

#include <QString>

namespace Tarnby
{

enum class IfaceAction {
    None,
    LaunchLink,   // the address in TB-Link
    LaunchNamed,  // OpenLink(link, radar)
    NextNews,     // getnextnewslink
    PreviousNews, // getpreviousnewslink
    RetrieveWeather,
    SaveSkinSettings,
    SaveSingleSkinSetting, // option number in `option`
    ShowCurrent,
    ShowHourly,
    ShowDaily,
    ShowPop,
    ShowAlerts,
    ShowAlertsMap,
    ShowMapMenu,
    ShowStationMenu,
    ShowOptions,
    WindowDrag,
    WindowMinimize,
    WindowResize,
    LogError, // the text in TB-Error
    ShowLocal,
    ShowMonthly,
    ToggleSection, // togglesection and togglenextsection, which step alike
    TogglePreviousSection,
};

struct ActionRequest {
    IfaceAction action = IfaceAction::None;
    QString link; // LaunchNamed: the link's name, as OpenLink takes it
    bool radar = false;
    int option = 0; // SaveSingleSkinSetting: "savesingleskinsetting(<n>)"
};

// The request behind the content of TB-RunAction (blanks around it are ignored).
ActionRequest ParseRunAction(const QString &content);

// The pages of the window, by the names saved in Misc/LastPage.
enum class IfacePage { Current, Hour, Day, Pop };
QString PageName(IfacePage page);
// A saved name back to its page; anything unknown is the current conditions.
IfacePage PageFromName(const QString &name);
// togglesection and togglenextsection: Hour to Day, Day to Current, all else to Hour.
IfacePage NextSection(IfacePage page);
// toggleprevioussection: Hour to Current, Day to Hour, all else to Day.
IfacePage PreviousSection(IfacePage page);

} // namespace Tarnby
