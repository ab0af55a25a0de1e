#include "presentation/runaction.h"

#include <QHash>

namespace Tarnby
{

namespace
{

ActionRequest request(IfaceAction action, const QString &link = QString(), bool radar = false)
{
    ActionRequest made;
    made.action = action;
    made.link = link;
    made.radar = radar;
    return made;
}

// The launch words with a meaning of their own; any other "launch<name>" opens <name>.
ActionRequest launchRequest(const QString &word)
{
    if (word == u"launchlink") return request(IfaceAction::LaunchLink);
    if (word == u"launchhome")
        return request(IfaceAction::LaunchNamed, QStringLiteral("wxstationhomepage"));
    if (word == u"launchradarmap")
        return request(IfaceAction::LaunchNamed, QStringLiteral("radarmap"), true);
    return request(IfaceAction::LaunchNamed, word.mid(6));
}

const QHash<QString, IfaceAction> &otherActions()
{
    static const QHash<QString, IfaceAction> table{
        {QStringLiteral("getnextnewslink"), IfaceAction::NextNews},
        {QStringLiteral("getpreviousnewslink"), IfaceAction::PreviousNews},
        {QStringLiteral("retrieveweather"), IfaceAction::RetrieveWeather},
        {QStringLiteral("saveskinsettings"), IfaceAction::SaveSkinSettings},
        {QStringLiteral("showcurrent"), IfaceAction::ShowCurrent},
        {QStringLiteral("showhourly"), IfaceAction::ShowHourly},
        {QStringLiteral("showdaily"), IfaceAction::ShowDaily},
        {QStringLiteral("showpop"), IfaceAction::ShowPop},
        {QStringLiteral("showalerts"), IfaceAction::ShowAlerts},
        {QStringLiteral("showalertsmap"), IfaceAction::ShowAlertsMap},
        {QStringLiteral("showmapmenu"), IfaceAction::ShowMapMenu},
        {QStringLiteral("showstationmenu"), IfaceAction::ShowStationMenu},
        {QStringLiteral("showoptions"), IfaceAction::ShowOptions},
        {QStringLiteral("windowdrag"), IfaceAction::WindowDrag},
        {QStringLiteral("windowminimize"), IfaceAction::WindowMinimize},
        {QStringLiteral("windowresize"), IfaceAction::WindowResize},
        {QStringLiteral("logerror"), IfaceAction::LogError},
        {QStringLiteral("showlocal"), IfaceAction::ShowLocal},
        {QStringLiteral("showmonthly"), IfaceAction::ShowMonthly},
        {QStringLiteral("togglesection"), IfaceAction::ToggleSection},
        {QStringLiteral("togglenextsection"), IfaceAction::ToggleSection},
        {QStringLiteral("toggleprevioussection"), IfaceAction::TogglePreviousSection},
    };
    return table;
}

// "savesingleskinsetting(<n>)" with n from 1 to 19.
ActionRequest singleOptionRequest(const QString &word)
{
    static const QString head = QStringLiteral("savesingleskinsetting(");
    if (!word.startsWith(head) || !word.endsWith(u')')) return {};
    bool numeric = false;
    const int n = word.mid(head.size(), word.size() - head.size() - 1).trimmed().toInt(&numeric);
    if (!numeric || n < 1 || n > 19) return {};
    ActionRequest single = request(IfaceAction::SaveSingleSkinSetting);
    single.option = n;
    return single;
}

} // namespace

ActionRequest ParseRunAction(const QString &content)
{
    const QString word = content.trimmed().toLower();
    if (word.startsWith(u"launch") && word.size() > 6) return launchRequest(word);
    if (const auto found = otherActions().constFind(word); found != otherActions().cend())
        return request(found.value());
    return singleOptionRequest(word);
}

QString PageName(IfacePage page)
{
    switch (page) {
    case IfacePage::Hour:
        return QStringLiteral("Hour");
    case IfacePage::Day:
        return QStringLiteral("Day");
    case IfacePage::Pop:
        return QStringLiteral("POP");
    case IfacePage::Current:
        break;
    }
    return QStringLiteral("Current");
}

IfacePage PageFromName(const QString &name)
{
    if (name == u"Hour") return IfacePage::Hour;
    if (name == u"Day") return IfacePage::Day;
    if (name == u"POP") return IfacePage::Pop;
    return IfacePage::Current;
}

IfacePage NextSection(IfacePage page)
{
    if (page == IfacePage::Hour) return IfacePage::Day;
    if (page == IfacePage::Day) return IfacePage::Current;
    return IfacePage::Hour;
}

IfacePage PreviousSection(IfacePage page)
{
    if (page == IfacePage::Hour) return IfacePage::Current;
    if (page == IfacePage::Day) return IfacePage::Hour;
    return IfacePage::Day;
}

} // namespace Tarnby
