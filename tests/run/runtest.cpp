#include "tests/run/runtest.h"

#include "core/files.h"
#include "core/weathercache.h"
#include "run/mapfile.h"

#include <QCoreApplication>
#include <QFile>

namespace Tarnby::Test
{

namespace
{

const QString kKinds[] = {
    QStringLiteral("LiveConditions"),
    QStringLiteral("NDFD"),
    QStringLiteral("Detailed"),
    QStringLiteral("Alerts"),
    QStringLiteral("Links"),
    QStringLiteral("UV"),
    QStringLiteral("WuDetailed"),
    QStringLiteral("WuNDFD"),
    QStringLiteral("WuDailyHistory"),
    QStringLiteral("WuYearlyHistory"),
    QStringLiteral("CwopApiLiveConditions"),
};

} // namespace

HelperFolder::HelperFolder()
{
    const QString drawer = m_dir.filePath(kMapDrawer);
    WriteFileAtomic(
        drawer, QStringLiteral("#!/bin/sh\nmkdir -p \"$1\" && printf drawn > \"$1/map.jpg\"\n"));
    QFile::setPermissions(drawer, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    for (const char *helper : {"dl", "tbdownloader"})
        QFile::link(QCoreApplication::applicationDirPath() + QLatin1Char('/') +
                        QLatin1String(helper),
                    m_dir.filePath(QLatin1String(helper)));
    qputenv("TARNBY_HELPER_FOLDER", m_dir.path().toLocal8Bit());
}

HelperFolder::~HelperFolder()
{
    qunsetenv("TARNBY_HELPER_FOLDER");
}

ScriptedRunChildren::ScriptedRunChildren(std::function<ChildAnswer(const QString &)> script)
    : script(std::move(script))
{
    setChildLauncher(this);
}

ScriptedRunChildren::~ScriptedRunChildren()
{
    setChildLauncher(nullptr);
}

qint64 ScriptedRunChildren::start(const QString &program, const QStringList &arguments)
{
    const qint64 pid = m_nextPid++;
    if (program.endsWith(kMapDrawer)) {
        drawerLaunches.append(arguments.join(QLatin1Char(' ')));
        WriteFileAtomic(arguments.value(0) + QStringLiteral("/map.jpg"), QStringLiteral("drawn"));
        return pid;
    }
    // dl takes "<url>|<output>|<status>", tbdownloader the three as separate arguments.
    const QStringList parts =
        arguments.size() == 1 ? arguments.first().split(QLatin1Char('|')) : arguments;
    urls.append(parts.value(0));
    const ChildAnswer answer = script ? script(parts.value(0)) : ChildAnswer{};
    if (answer.hangs) {
        m_running.insert(pid);
    } else if (answer.polls > 0) {
        m_late.insert(pid, {answer, parts.value(1), parts.value(2)});
    } else {
        WriteFileAtomic(parts.value(1), answer.body);
        WriteFileAtomic(parts.value(2), answer.status);
    }
    return pid;
}

bool ScriptedRunChildren::isRunning(qint64 pid)
{
    if (!m_late.contains(pid)) return m_running.contains(pid);
    LateAnswer &late = m_late[pid];
    if (--late.answer.polls > 0) return true;
    WriteFileAtomic(late.outputFile, late.answer.body);
    WriteFileAtomic(late.statusFile, late.answer.status);
    m_late.remove(pid);
    return false;
}

void ScriptedRunChildren::end(qint64 pid)
{
    m_running.remove(pid);
    ended.append(pid);
}

RunTest::RunTest()
{
    setFetchTimeScale(0.01);
    runState() = RunState{};
    schedulerValues() = SchedulerValues{};
    setUserActivity(&activity);
    process().SettingsLoaded = true; // no service settings are fetched
    process().LogEnabled = true;
    process().LogStartedAt = Tarnby::clock().now();
    setRemoteLogSink([this](const QString &line) { logLines.append(line); });
    setMessageBoxSink([this](const QString &, const QString &text) { boxes.append(text); });
    SavePref(QStringLiteral("Misc"), QStringLiteral("Token"), QStringLiteral("TOKEN"));
    SavePref(QStringLiteral("Misc"), QStringLiteral("TokenExpiration"),
             Tarnby::clock().now().toString(Qt::ISODate));
    RetrievalProgress *progress = &retrievalProgress();
    QObject::connect(progress, &RetrievalProgress::percentChanged, &m_listener,
                     [this](int percent) { percents.append(percent); });
    QObject::connect(progress, &RetrievalProgress::progressBarShown, &m_listener,
                     [this] { barEvents.append(QStringLiteral("shown")); });
    QObject::connect(progress, &RetrievalProgress::progressBarWidthChanged, &m_listener,
                     [this](const QString &width) { barEvents.append(width); });
    QObject::connect(progress, &RetrievalProgress::progressBarHidden, &m_listener,
                     [this] { barEvents.append(QStringLiteral("hidden")); });
    QObject::connect(progress, &RetrievalProgress::runFinished, &m_listener,
                     [this](bool ok, const QString &text) {
                         outcomes.append({ok, text});
                     });
}

RunTest::~RunTest()
{
    setFetchTimeScale(1.0);
    setUserActivity(nullptr);
    setRemoteLogSink({});
    setMessageBoxSink({});
    setRetrievalHooks({});
    for (const QString &kind : kKinds)
        registerDownloadKind(kind, {});
    setClock(nullptr);
}

void RunTest::selectStation(const StationSetting &station)
{
    const QString section = QStringLiteral("CityCode");
    SavePref(section, QStringLiteral("Code"), station.code);
    SavePref(section, QStringLiteral("City"), QStringLiteral("Test station"));
    SavePref(section, QStringLiteral("ZipCode"), station.zip);
    SavePref(section, QStringLiteral("Latitude"), station.latitude);
    SavePref(section, QStringLiteral("Longitude"), station.longitude);
    SavePref(section, QStringLiteral("StationType"), station.type);
    process().CityCode = station.code.isEmpty() ? QStringLiteral("na") : station.code;
    process().StationType = station.type;
}

void RunTest::traceProcessing()
{
    for (const QString &kind : kKinds)
        registerDownloadKind(kind, [this, kind](const QString &path, bool, bool) {
            trace.append(kind + QLatin1Char(':') + (path.isEmpty() ? QString() : ReadFile(path)));
        });
    const auto step = [this](const char *name) {
        return [this, name] { trace.append(QLatin1String(name)); };
    };
    const auto found = [this](const char *name) {
        return [this, name] {
            trace.append(QLatin1String(name));
            return true;
        };
    };
    RetrievalHooks hooks;
    hooks.fetchWeatherBugObservations = found("weatherbug observations");
    hooks.fetchWUObservations = found("wu observations");
    hooks.fetchNwsObservations = found("nws observations");
    hooks.timeZoneAndSun = found("time zone");
    hooks.insertObservation = step("insert");
    hooks.postProcessForecasts = step("post-process");
    hooks.rewritePrecipitation = step("precipitation");
    hooks.buildLightningLink = step("lightning");
    hooks.buildMapLinks = step("map links");
    hooks.rebuildMapMenu = step("map menu");
    hooks.writeUserLog = step("user log");
    hooks.refreshInterface = step("refresh");
    hooks.runExport = step("export");
    hooks.notifyAlerts = step("alerts");
    hooks.switchTrayItalic = [this](bool italic) {
        trace.append(italic ? QStringLiteral("italic") : QStringLiteral("upright"));
    };
    setRetrievalHooks(hooks);
}

} // namespace Tarnby::Test
