#include "tests/run/runtest.h"

#include "core/clock.h"
#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "retrieval/fetch.h"
#include "run/mapfile.h"
#include "run/runprogress.h"

#include <QCoreApplication>
#include <QFile>

namespace Tarnby::Test
{

namespace
{

const QStringList kKinds = QStringLiteral("LiveConditions NDFD Detailed Alerts Links UV WuDetailed "
                                          "WuNDFD WuDailyHistory WuYearlyHistory "
                                          "CwopApiLiveConditions")
                               .split(u' ');

void writeHelpers(const QTemporaryDir &dir)
{
    const QString drawer = dir.filePath(kMapDrawer);
    WriteFileAtomic(drawer, "#!/bin/sh\nmkdir -p \"$1\" && printf drawn > \"$1/map.jpg\"\n");
    QFile::setPermissions(drawer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const QString helper : {"dl", "tbdownloader"})
        QFile::link(QCoreApplication::applicationDirPath() + '/' + helper, dir.filePath(helper));
    qputenv("TARNBY_HELPER_FOLDER", dir.path().toLocal8Bit());
}

} // namespace

qint64 ScriptedRunChildren::start(const QString &program, const QStringList &arguments)
{
    if (!program.endsWith(kMapDrawer)) return ScriptedChildren::start(program, arguments);
    drawerLaunches.append(arguments.join(' '));
    WriteFileAtomic(arguments.value(0) + "/map.jpg", "drawn");
    return 1;
}

RunTest::RunTest()
{
    writeHelpers(helpers);
    setFetchTimeScale(0.1); // no scripted child hangs: the limits only guard against faults
    runState() = RunState{};
    schedulerValues() = SchedulerValues{};
    setUserActivity(&activity);
    process().SettingsLoaded = true; // no service settings are fetched
    process().LogEnabled = true;
    process().LogStartedAt = Tarnby::clock().now();
    setRemoteLogSink([this](const QString &line) { logLines.append(line); });
    setMessageBoxSink([this](const QString &, const QString &text) { boxes.append(text); });
    SavePref("Misc", "Token", "TOKEN");
    SavePref("Misc", "TokenExpiration", Tarnby::clock().now().toString(Qt::ISODate));
    RetrievalProgress *progress = &retrievalProgress();
    QObject::connect(progress, &RetrievalProgress::percentChanged, &m_listener,
                     [this](int percent) { percents.append(percent); });
    QObject::connect(progress, &RetrievalProgress::progressBarShown, &m_listener,
                     [this] { barEvents.append("shown"); });
    QObject::connect(progress, &RetrievalProgress::progressBarWidthChanged, &m_listener,
                     [this](const QString &width) { barEvents.append(width); });
    QObject::connect(progress, &RetrievalProgress::progressBarHidden, &m_listener,
                     [this] { barEvents.append("hidden"); });
    QObject::connect(progress, &RetrievalProgress::runFinished, &m_listener,
                     [this](bool ok, const QString &text) {
                         outcomes.append({ok, text});
                     });
}

RunTest::~RunTest()
{
    qunsetenv("TARNBY_HELPER_FOLDER");
    setFetchTimeScale(1.0);
    setUserActivity(nullptr);
    setRemoteLogSink({});
    setMessageBoxSink({});
    setRetrievalHooks({});
    for (const QString &kind : kKinds)
        registerDownloadKind(kind, {});
}

void RunTest::selectStation(const StationSetting &station)
{
    const std::pair<const char *, QString> keys[] = {
        {"Code", station.code},           {"City", "Test station"},
        {"ZipCode", station.zip},         {"Latitude", station.latitude},
        {"Longitude", station.longitude}, {"StationType", station.type}};
    for (const auto &[key, value] : keys)
        SavePref("CityCode", key, value);
    process().CityCode = station.code.isEmpty() ? "na" : station.code;
    process().StationType = station.type;
}

void RunTest::traceProcessing()
{
    for (const QString &kind : kKinds)
        registerDownloadKind(kind, [this, kind](const QString &path, bool, bool) {
            trace.append(kind + ':' + (path.isEmpty() ? QString() : ReadFile(path)));
        });
    const auto step = [this](const char *name) { return [this, name] { trace.append(name); }; };
    const auto found = [this](const char *name) {
        return [this, name] { return trace.append(name), true; };
    };
    RetrievalHooks hooks;
    hooks.fetchWeatherBugObservations = found("weatherbug observations");
    hooks.fetchWUObservations = found("wu observations");
    hooks.fetchNwsObservations = found("nws observations");
    hooks.timeZoneAndSun = found("time zone");
    for (auto [hook, name] : {std::pair{&RetrievalHooks::insertObservation, "insert"},
                              {&RetrievalHooks::postProcessForecasts, "post-process"},
                              {&RetrievalHooks::rewritePrecipitation, "precipitation"},
                              {&RetrievalHooks::buildLightningLink, "lightning"},
                              {&RetrievalHooks::buildMapLinks, "map links"},
                              {&RetrievalHooks::rebuildMapMenu, "map menu"},
                              {&RetrievalHooks::writeUserLog, "user log"},
                              {&RetrievalHooks::refreshInterface, "refresh"},
                              {&RetrievalHooks::runExport, "export"},
                              {&RetrievalHooks::notifyAlerts, "alerts"}})
        hooks.*hook = step(name);
    hooks.switchTrayItalic = [this](bool italic) { trace.append(italic ? "italic" : "upright"); };
    setRetrievalHooks(hooks);
}

} // namespace Tarnby::Test
