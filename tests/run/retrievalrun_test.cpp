// The retrieval run with scripted children: slot bookkeeping, the processing order of
// each group, the failure test and its messages, the token, the map.

#include "core/files.h"
#include "core/processvalues.h"
#include "retrieval/fetch.h"
#include "core/weathercache.h"
#include "run/mapfile.h"
#include "run/retrievalrun.h"
#include "run/runmessages.h"
#include "tests/run/runtest.h"

#include <QDir>

#include <algorithm>

using namespace Tarnby;
using Tarnby::Test::ChildReply;
using Tarnby::Test::documentReply;
using Tarnby::Test::StationSetting;
using Tarnby::Test::statusReply;

namespace
{

const StationSetting kWeatherBug{"KAMW", "WeatherBug", "50010"};

ChildReply recordedDocument(const QString &url)
{
    if (url.contains("GetPulseApiKey")) return documentReply("FRESH");
    if (url.contains("/forecasts/v1/daily")) return documentReply("daily");
    if (url.contains("/hourly")) return documentReply("hourly");
    if (url.contains("/alerts")) return documentReply("alerts");
    if (url.contains("/uv/v1")) return documentReply("uv");
    if (url.contains("meso_table")) return documentReply("mesowest");
    return documentReply("other");
}

// The failing answer for the slot of a URL, or the recorded document.
std::function<ChildReply(const QString &)>
failing(std::initializer_list<std::pair<const char *, int>> statuses, int others = 0)
{
    std::vector<std::pair<QString, int>> table;
    for (const auto &[mark, status] : statuses)
        table.emplace_back(QString::fromLatin1(mark), status);
    return [table, others](const QString &url) {
        for (const auto &[mark, status] : table)
            if (url.contains(mark))
                return status == 0 ? recordedDocument(url) : statusReply(status);
        return others == 0 ? recordedDocument(url) : statusReply(others);
    };
}

class RetrievalRunTest : public Tarnby::Test::RunTest
{
protected:
    Tarnby::Test::ScriptedRunChildren children{recordedDocument};
};

struct GroupCase {
    StationSetting station;
    QStringList launched;
    QStringList processing;
    int finalPercent;
};

class GroupOrderTest : public RetrievalRunTest, public ::testing::WithParamInterface<GroupCase>
{
};

TEST_P(GroupOrderTest, DownloadsAndProcessesInTheGroupsOrder)
{
    selectStation(GetParam().station);
    traceProcessing();
    process().DbPath = profile.file("tbl.mdb");
    WriteFileAtomic(process().DbPath, "database");

    EXPECT_TRUE(DownloadTheWeather(false, false, false));

    QStringList launched;
    for (const QString &url : children.urls())
        launched.append(recordedDocument(url).body);
    EXPECT_EQ(launched, GetParam().launched);
    const QStringList after{"map menu", "user log", "refresh", "export", "upright"};
    EXPECT_EQ(trace, GetParam().processing + after);
    ASSERT_FALSE(percents.isEmpty());
    EXPECT_EQ(percents.last(), GetParam().finalPercent);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_EQ(outcomes, (QList<QPair<bool, QString>>{{true, QString()}}));
}

INSTANTIATE_TEST_SUITE_P(
    Groups, GroupOrderTest,
    ::testing::Values(
        GroupCase{kWeatherBug,
                  {"hourly", "daily", "alerts", "uv"},
                  {"weatherbug observations", "NDFD:hourly", "Detailed:daily", "time zone",
                   "Alerts:alerts", "UV:uv", "Links:", "insert", "post-process"},
                  80},
        GroupCase{{"IAMES12", "PWS (WUnderground)", "50010"},
                  {"hourly", "daily", "alerts", "uv"},
                  {"wu observations", "NDFD:hourly", "Detailed:daily", "time zone", "WuNDFD:hourly",
                   "Alerts:alerts", "WuDailyHistory:", "WuYearlyHistory:", "UV:uv", "insert",
                   "post-process", "precipitation", "lightning"},
                  85},
        GroupCase{{"KDSM", "NWS", "50309"},
                  {"hourly", "daily", "alerts", "uv"},
                  {"NDFD:hourly", "Detailed:daily", "nws observations", "map links", "time zone",
                   "Alerts:alerts", "UV:uv", "insert", "post-process"},
                  70}));

TEST_F(RetrievalRunTest, AGoodRunKeepsItsBooksAndLeavesNothingBehind)
{
    selectStation(kWeatherBug);
    process().InterfaceShown = true;

    UpdateTheWeather(false, false, false);

    const RunState &state = runState();
    EXPECT_EQ(state.DownloadsCompleted, 10);
    EXPECT_EQ(state.DownloadsActive, 0);
    EXPECT_EQ(state.ProgressPercent, 0);
    EXPECT_FALSE(state.RetrievalRunning);
    EXPECT_FALSE(state.ProcessingData);
    EXPECT_TRUE(QDir(TempFolder()).entryList(QDir::Files).isEmpty());
    EXPECT_TRUE(children.urls().first().endsWith("subscription-key=TOKEN"));
    ASSERT_GE(barEvents.size(), 3);
    EXPECT_EQ(barEvents.mid(0, 3), (QStringList{"shown", "0%", "5%"}));
    EXPECT_EQ(barEvents.last(), "hidden");
    for (const char *key : {"Weather", "Alerts"})
        EXPECT_FALSE(GetCache("LastUpdated", key).isEmpty()) << key;
    EXPECT_FALSE(GetCache("Current", "downloaded").isEmpty());
    EXPECT_FALSE(schedulerValues().LastRunFailed);
}

TEST_F(RetrievalRunTest, ARefusedTokenSkipsTheRefreshAndAManualRunRepeatsWithAFreshOne)
{
    selectStation(kWeatherBug);
    traceProcessing();
    children.script = [](const QString &url) {
        return url.contains("/hourly") && url.contains("=TOKEN") ? statusReply(401)
                                                                 : recordedDocument(url);
    };

    UpdateTheWeather(false, false, false);

    ASSERT_EQ(outcomes.size(), 2);
    EXPECT_EQ(GetPref("Misc", "Token"), "FRESH");
    EXPECT_TRUE(children.urls().last().endsWith("subscription-key=FRESH"));
    EXPECT_EQ(trace.count("refresh"), 1); // only the second run refreshes
}

struct FailureCase {
    StationSetting station;
    std::function<ChildReply(const QString &)> script;
    QString errorText; // empty: the run is good
};

class FailureTestTest : public RetrievalRunTest, public ::testing::WithParamInterface<FailureCase>
{
};

TEST_P(FailureTestTest, EverythingFailedIsToldByItsCause)
{
    selectStation(GetParam().station);
    children.script = GetParam().script; // no hooks: observations and time zone count as failed

    DownloadTheWeather(false, false, false);

    const QString &errorText = GetParam().errorText;
    ASSERT_EQ(outcomes.size(), 1);
    EXPECT_EQ(outcomes.first(), qMakePair(errorText.isEmpty(), errorText));
    EXPECT_EQ(schedulerValues().LastRunFailed, !errorText.isEmpty());
    EXPECT_EQ(logged("Abort (modRetrieveWeather)"), !errorText.isEmpty());
    EXPECT_EQ(logged("Refresh interface (modRetrieveWeather)"), errorText.isEmpty());
    if (errorText.isEmpty()) {
        EXPECT_TRUE(boxes.isEmpty());
    } else {
        EXPECT_TRUE(logged("Error " + errorText + " (modRetrieveWeather)"));
        EXPECT_EQ(boxes, QStringList{RunErrorMessage(errorText)});
    }
}

const StationSetting kNws{"KDSM", "NWS", "50309"};

INSTANTIATE_TEST_SUITE_P(
    Causes, FailureTestTest,
    ::testing::Values(FailureCase{kNws, failing({}, 3), RunError::ServerNotFound},
                      FailureCase{kNws, failing({{"/hourly", 407}}, 3),
                                  RunError::ProxyAuthenticationRequired},
                      FailureCase{kNws, failing({}, 500), RunError::WinHttpNotConfigured},
                      // A CWOP station's conditions come through their slot.
                      FailureCase{{"D7094", "CWOP", "50309"},
                                  failing({{"meso_table", 401}}, 500),
                                  RunError::WinHttpNotConfigured},
                      // Weather Underground stations do without the hourly forecast of the run.
                      FailureCase{{"IAMES12", "PWS (WUnderground)", "50010"},
                                  failing({{"/forecasts/v1/daily", 500}, {"/alerts", 500}}),
                                  RunError::WinHttpNotConfigured},
                      FailureCase{kNws, failing({{"/alerts", 0}}, 3), QString()}));

TEST_F(RetrievalRunTest, AnAutomaticRunShowsNoBoxAndDoesNotRepeatARefusedToken)
{
    selectStation(kWeatherBug);
    SavePref("AutoUpdate", "SetToItalicOnFail", "True");
    children.script = failing({{"/forecasts/v1/daily", 401}}, 3);
    traceProcessing();
    RetrievalHooks hooks = retrievalHooks();
    hooks.fetchWeatherBugObservations = hooks.timeZoneAndSun = {};
    setRetrievalHooks(hooks);

    UpdateTheWeather(true, false, false);

    EXPECT_EQ(outcomes, (QList<QPair<bool, QString>>{{false, RunError::ServerNotFound}}));
    EXPECT_EQ(GetPref("Misc", "Token"), "");
    EXPECT_TRUE(boxes.isEmpty());
    EXPECT_EQ(trace.last(), "italic");
}

TEST_F(RetrievalRunTest, AnEmptyCodeIsNoStationWhateverTheProcessValueSays)
{
    selectStation({"", "WeatherBug", "50010"});
    DownloadTheWeather(false, false, false);
    EXPECT_EQ(outcomes, (QList<QPair<bool, QString>>{{false, RunError::NoStation}}));
    EXPECT_EQ(boxes, QStringList{RunErrorMessage(RunError::NoStation)});
    EXPECT_TRUE(children.urls().isEmpty());
}

TEST_F(RetrievalRunTest, AnAlertsOnlyRunOfAForeignStationNeedsNoChild)
{
    selectStation({"OSLO1", "WeatherBug", "123456"});
    SaveCache("UV", "count", "3");
    SaveCache("Alerts", "title1", "Storm");

    DownloadTheWeather(true, true, false);

    EXPECT_TRUE(children.urls().isEmpty());
    EXPECT_TRUE(children.drawerLaunches.isEmpty());
    EXPECT_EQ(runState().DownloadsCompleted, 10);
    EXPECT_EQ(GetCache("UV", "count"), "");
    EXPECT_EQ(GetCache("Alerts", "title1"), "");
}

TEST_F(RetrievalRunTest, ASecondRunDuringARunReturnsAtOnce)
{
    selectStation(kWeatherBug);
    QList<bool> nested;
    qsizetype launchesBefore = -1;
    registerDownloadKind("NDFD", [&](const QString &, bool, bool) {
        launchesBefore = children.urls().size();
        nested.append(runState().RetrievalRunning);
        nested.append(DownloadTheWeather(false, false, false));
    });

    DownloadTheWeather(false, false, false);

    EXPECT_EQ(nested, (QList<bool>{true, true}));
    EXPECT_EQ(children.urls().size(), launchesBefore);
    EXPECT_EQ(outcomes.size(), 1);
}

TEST_F(RetrievalRunTest, TheMapDrawerDrawsForAnActiveUser)
{
    selectStation(kWeatherBug);
    activity.idle = 0;
    SavePref("Skins", "MapZoomLevel", "5");
    SavePref("Skins", "MapType", "Satellite");

    DownloadTheWeather(true, false, false);

    const QString folder = MapFolder("Splendid4", "KAMW");
    EXPECT_EQ(children.drawerLaunches, QStringList{folder + " MapSource5 MapTypesatellite 3"});
    EXPECT_FALSE(GetCache("LastUpdated", "Map").isEmpty());
}

TEST_F(RetrievalRunTest, TheSkinsMapLinkReplacesMapsOfOtherKinds)
{
    selectStation(kWeatherBug);
    activity.idle = 0;
    SavePref("Skins", "Option20Splendid4-KAMW", "http://maps.test/radar.png");
    const QString folder = MapFolder("Splendid4", "KAMW");
    QDir().mkpath(folder);
    WriteFileAtomic(folder + "/map.jpg", "old");
    children.script = [](const QString &url) {
        return url.endsWith("radar.png") ? documentReply("PNG") : recordedDocument(url);
    };

    DownloadTheWeather(true, false, false);

    EXPECT_TRUE(children.drawerLaunches.isEmpty());
    EXPECT_EQ(ReadFile(folder + "/map.png"), "PNG");
    EXPECT_FALSE(FileExists(folder + "/map.jpg"));
}

TEST_F(RetrievalRunTest, AMissingMapDrawerStopsTheRunBeforeItBegins)
{
    QFile::remove(helpers.path() + "/" + kMapDrawer);
    selectStation(kWeatherBug);
    EXPECT_TRUE(DownloadTheWeather(false, false, false));
    EXPECT_TRUE(outcomes.isEmpty());
    EXPECT_EQ(boxes, QStringList{MissingProgramFileMessage(kMapDrawer)});
    EXPECT_FALSE(runState().RetrievalRunning);
}

} // namespace
