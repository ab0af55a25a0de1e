#include "run/retrievalrun.h"

#include "core/clock.h"
#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/scheduler.h"
#include "core/settingsstore.h"
#include "core/timestamp.h"
#include "core/weathercache.h"
#include "providers/stationselection.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "retrieval/servicesettings.h"
#include "run/mapfile.h"
#include "run/processing.h"
#include "run/runhooks.h"
#include "run/runmessages.h"
#include "run/runprogress.h"
#include "run/runstate.h"
#include "run/runurls.h"
#include "run/slotplan.h"
#include "run/slots.h"
#include "run/useractivity.h"

#include <QFileInfo>

namespace Tarnby
{

namespace
{

constexpr int kJobSeconds = 30;
constexpr int kRunSeconds = 90;
constexpr int kStatusWaitSeconds = 10;
constexpr int kMaxActiveDownloads = 4;
constexpr int kMapIdleSeconds = 300;
constexpr int kSoundPauseTicks = 10;

const QString kTrue = QStringLiteral("True");
const QString kWeatherBug = QStringLiteral("WeatherBug");

RetrievalTimers *&installedTimers()
{
    static RetrievalTimers *timers = nullptr;
    return timers;
}

void say(const char *line)
{
    Log(QLatin1String(line) + QStringLiteral(" (modRetrieveWeather)"));
}

bool statusWritten(const QString &statusFile)
{
    return QFileInfo(statusFile).size() > 0;
}

class Retrieval
{
public:
    Retrieval(bool automatic, bool alertsOnly, bool force)
        : m_automatic(automatic), m_alertsOnly(alertsOnly), m_force(force)
    {
    }
    // The whole run; false when the token was refused. A fault is logged and the run
    // still ends cleanly, so that it never blocks the runs after it.
    bool run();

private:
    bool gather();
    bool prepare();
    void startProgress();
    void readStation();
    void planSlots();
    void queueMap();
    bool downloadAll();
    void launchPhase();
    void pollPhase();
    void finishSlot(Slot slot, const QString &status);
    void endUnfinishedChildren();
    void processDocuments();
    bool failureTest();
    void refresh();
    void aftermath();
    void conclude();
    void reportError();
    void cleanUp();

    bool m_automatic;
    bool m_alertsOnly;
    bool m_force;
    QString m_errorText;
    StatusFindings m_findings;
    StationEntry m_station;
    QString m_group;
    bool m_international = false;
    RunSlots m_slots;
    MapSource m_map;
    QString m_mapFolder;
    QString m_mapFile;
    QDateTime m_mapWrittenBefore;
    qint64 m_mapDrawerPid = 0;
    qint64 m_startMs = 0;
};

bool Retrieval::run()
{
    const QString where = QStringLiteral("modRetrieveWeather.DownloadTheWeather");
    LogFaults(where, [this] {
        if (gather()) processDocuments();
        if (!failureTest()) {
            refresh();
            aftermath();
        }
    });
    LogFaults(where, [this] { conclude(); });
    cleanUp();
    emit retrievalProgress().runFinished(m_errorText.isEmpty(), m_errorText);
    return !m_findings.TokenRejected;
}

// Everything up to the processing; false when the run goes straight to the failure test.
bool Retrieval::gather()
{
    if (!prepare()) return false;
    startProgress();
    readStation();
    planSlots();
    if (!downloadAll()) {
        say("Update timed out");
        return false;
    }
    runState().ProcessingData = true;
    if (m_mapDrawerPid > 0) WaitForMapDrawer(m_mapFile, m_mapWrittenBefore);
    return true;
}

bool Retrieval::prepare()
{
    const RetrievalHooks &hooks = retrievalHooks();
    while (process().InterfaceShown && hooks.interfaceBusy && hooks.interfaceBusy())
        PumpedSleep(1);
    if (schedulerValues().TimerRun && process().UpdateWhenConnected && !IsOnline()) {
        m_errorText = RunError::NotOnline;
        return false;
    }
    m_station = ReadSelection();
    if (m_station.Code.isEmpty()) {
        m_errorText = RunError::NoStation;
        return false;
    }
    return true;
}

void Retrieval::startProgress()
{
    m_startMs = clock().monotonicMs();
    RunState &state = runState();
    state.ProgressPercent = 0;
    if (process().InterfaceShown) {
        emit retrievalProgress().progressBarShown();
        emit retrievalProgress().progressBarWidthChanged(QStringLiteral("0%"));
    }
    state.DownloadsCompleted = state.DownloadsActive = state.ProgressSteps = 0;
}

// The map source, the postal-code repair, the service settings and the map file.
void Retrieval::readStation()
{
    const QString skin = InterfaceSkin();
    m_map = ReadMapSource(skin, m_station.Code);
    m_group = StationGroup(m_station.StationType);
    if (m_group == kWeatherBug) {
        RepairPostalCode(retrievalHooks().postalCodeLookups);
        m_station = ReadSelection();
    }
    ReloadServiceSettingsIfDue();
    m_mapFolder = MapFolder(skin, m_station.Code);
    m_mapFile = m_mapFolder + QStringLiteral("/map.") + m_map.extension;
    m_mapWrittenBefore = FileWriteTime(m_mapFile);
    m_international = IsInternational(m_station.ZipCode);
}

// The slots' addresses and which of them this run serves.
void Retrieval::planSlots()
{
    const QString pulse =
        process().PulseUrl.isEmpty() ? HostUrl(Host::PulseApi) : process().PulseUrl;
    const RunUrls urls = BuildRunUrls({m_group, m_international, m_station.Code, m_station.Latitude,
                                       m_station.Longitude, GetApiToken(), pulse});
    Log(QStringLiteral("Station Type: %1; Id: %2; Geo: %3, %4 (modRetrieveWeather)")
            .arg(m_station.StationType, m_station.Code, m_station.Latitude, m_station.Longitude));
    EnableSlots(m_slots, urls, {m_group, m_international, m_alertsOnly}, clock().now());
    queueMap();
}

void Retrieval::queueMap()
{
    const int idle = IdleSeconds();
    Log(QStringLiteral("IdleTime = %1 (modRetrieveWeather)").arg(idle));
    // The map is fetched only for someone at the machine, which keeps idle ones quiet.
    if (IsTextOnlySkin(InterfaceSkin()) || idle > kMapIdleSeconds) return;
    Log(QStringLiteral("Queuing map %1 (modRetrieveWeather)").arg(m_map.link));
    if (!m_map.link.isEmpty()) {
        m_slots[Slot::Map].Url = m_map.link;
        return;
    }
    const QString zoom = MapDrawerZoom(MapZoomLevel());
    Log(QStringLiteral("Map source = %1 (modRetrieveWeather)").arg(zoom));
    m_mapDrawerPid = LaunchMapDrawer(m_mapFolder, MapTypeName(), zoom);
}

// False when the run's time ran out before every slot finished.
bool Retrieval::downloadAll()
{
    const RunState &state = runState();
    int logged = 0;
    while (state.DownloadsCompleted != kSlotCount &&
           clock().monotonicMs() - m_startMs <= FetchLimitMs(kRunSeconds)) {
        launchPhase();
        pollPhase();
        PumpedSleep(1);
        if (state.DownloadsCompleted != logged) {
            logged = state.DownloadsCompleted;
            Log(QStringLiteral("Download progress %1/10 (modRetrieveWeather)").arg(logged));
            emit retrievalProgress().downloadsCompleted(logged);
        }
    }
    if (state.DownloadsCompleted == kSlotCount) return true;
    endUnfinishedChildren();
    return false;
}

void Retrieval::launchPhase()
{
    RunState &state = runState();
    for (const SlotInfo &info : slotTable()) {
        DownloadJob &job = m_slots[info.slot];
        if (!job.Enabled && !job.Finished) {
            job.Finished = true;
            ++state.DownloadsCompleted;
            ReportProgress(1);
        } else if (job.Enabled && !job.Finished && !job.Started) {
            if (info.slot == Slot::Map) job.Url = ResolveParseUrl(job.Url);
            StartJob(job, state.DownloadsActive);
        }
        if (state.DownloadsCompleted + state.DownloadsActive == kSlotCount) break;
        if (state.DownloadsActive == kMaxActiveDownloads) return;
    }
    // Nothing is left to launch.
    PumpedSleep(1);
}

// A temporary status file exists from the launch on, so a job is taken in once its
// status has text, its child ended, or its time is up; the other slots are polled in
// the meantime.
void Retrieval::pollPhase()
{
    for (const SlotInfo &info : slotTable()) {
        DownloadJob &job = m_slots[info.slot];
        if (!job.Started || job.Finished) continue;
        if (job.Url.isEmpty()) { // nothing was launched
            finishSlot(info.slot, QString());
            continue;
        }
        if (DownloadTimedOut(job.StatusFile, kJobSeconds, job.StartTime)) {
            Log(QLatin1String(info.timeoutLine));
            EndChild(job.ProcessId);
            finishSlot(info.slot, QString());
        } else if (statusWritten(job.StatusFile) || !ChildRunning(job.ProcessId)) {
            WaitForDownload(job.StatusFile, job.ProcessId, kStatusWaitSeconds, job.StartTime);
            finishSlot(info.slot, ReadStatus(job.StatusFile));
        }
    }
}

void Retrieval::finishSlot(Slot slot, const QString &status)
{
    RunState &state = runState();
    DownloadJob &job = m_slots[slot];
    const double value = StatusValue(status);
    TakeStatus(slot, value, m_group == kWeatherBug, state, m_findings);
    job.Finished = true;
    ++state.DownloadsCompleted;
    --state.DownloadsActive;
    ReportProgress(1);
    // A map that timed out has no status: the image shown before stays.
    if (slot == Slot::Map && !status.isEmpty() && value == DownloadStatus::Ok)
        CopyMapFile(job.Url, job.OutputFile, m_map, m_mapFolder);
}

void Retrieval::endUnfinishedChildren()
{
    for (const SlotInfo &info : slotTable()) {
        const DownloadJob &job = m_slots[info.slot];
        if (job.Started && !job.Finished) EndChild(job.ProcessId);
    }
}

void Retrieval::processDocuments()
{
    const QString code = GetPref(QStringLiteral("CityCode"), QStringLiteral("Code"));
    const bool newData = code != m_station.Code;
    if (newData) SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("LastCode"), code);
    say("Processing data...");
    ProcessGroup(m_group, m_slots, newData, m_force);
    say("Processing completed");
    DeleteOldMapFiles(m_mapFile);
    if (m_group == QStringLiteral("WUnderground") && !m_slots[Slot::DailyHistory].Enabled)
        CopySlowValues();
    runState().ProcessingData = false;
    say("Build maps");
    callHook(retrievalHooks().rebuildMapMenu);
    SaveCache(QStringLiteral("Current"), QStringLiteral("downloaded"), NowStamp());
    if (!schedulerValues().RealtimeActive) callHook(retrievalHooks().writeUserLog);
}

// True when everything the interface needs failed.
bool Retrieval::failureTest()
{
    const RunState &state = runState();
    const bool allFailed =
        state.failed(Failure::Conditions) &&
        (state.failed(Failure::Detailed) || state.failed(Failure::NwsDetailed)) &&
        state.failed(Failure::Alerts) && state.failed(Failure::TimeZone) &&
        (m_group == QStringLiteral("WUnderground") || state.failed(Failure::Hourly));
    if (!allFailed) return false;
    m_errorText = m_findings.ProxyAuthRequired ? RunError::ProxyAuthenticationRequired
                  : m_findings.ServerNotFound  ? RunError::ServerNotFound
                                               : RunError::WinHttpNotConfigured;
    say("Abort");
    return true;
}

void Retrieval::refresh()
{
    runState().ProgressPercent = 0;
    if (m_findings.TokenRejected) return;
    say("Refresh interface");
    callHook(retrievalHooks().refreshInterface);
    callHook(retrievalHooks().runExport);
}

// The aftermath of a good run.
void Retrieval::aftermath()
{
    const RetrievalHooks &hooks = retrievalHooks();
    const QString sound = GetPref(QStringLiteral("Sounds"), QStringLiteral("WxRet"));
    if (!sound.isEmpty() && FileExists(sound)) {
        say("Play sound");
        if (hooks.playSound) hooks.playSound(sound);
    }
    if (!GetCache(QStringLiteral("Alerts"), QStringLiteral("title1")).isEmpty())
        callHook(hooks.notifyAlerts);
    say("Alert cleared");
    if (GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("UpdateMaps")) == kTrue) {
        say("Refresh maps");
        callHook(hooks.refreshMapViewers);
    }
    say("Refresh tray icon");
    if (hooks.switchTrayItalic) hooks.switchTrayItalic(false);
    PumpedSleep(kSoundPauseTicks);
    schedulerValues().LastRunFailed = false;
}

// The error report, the progress bar and the daily version check.
void Retrieval::conclude()
{
    say("Done");
    runState().ProcessingData = false;
    if (!m_errorText.isEmpty()) reportError();
    if (process().InterfaceShown) {
        say("Hide progress");
        emit retrievalProgress().progressBarHidden();
    }
    if (GetPref(QStringLiteral("General"), QStringLiteral("Check")) == kTrue &&
        GetPref(QStringLiteral("General"), QStringLiteral("CheckDate")) != TodayStamp()) {
        SavePref(QStringLiteral("General"), QStringLiteral("CheckDate"), TodayStamp());
        if (retrievalHooks().checkForUpdate) retrievalHooks().checkForUpdate(QStringLiteral("No"));
    }
    if (m_findings.TokenRejected) ClearApiToken();
}

void Retrieval::reportError()
{
    Log(QStringLiteral("Error %1 (modRetrieveWeather)").arg(m_errorText));
    schedulerValues().LastRunFailed = true;
    if (!m_automatic) ShowMessageBox(RunErrorMessage(m_errorText));
    if (GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("SetToItalicOnFail")) == kTrue) {
        say("Make tray italic");
        if (retrievalHooks().switchTrayItalic) retrievalHooks().switchTrayItalic(true);
    }
}

void Retrieval::cleanUp()
{
    say("Clean up");
    for (const SlotInfo &info : slotTable()) {
        if (!info.deletedAtCleanUp) continue;
        const DownloadJob &job = m_slots[info.slot];
        if (!job.OutputFile.isEmpty()) DeleteFile(job.OutputFile);
        if (!job.StatusFile.isEmpty()) DeleteFile(job.StatusFile);
    }
    say("Delete temp files");
    DeleteTempFiles(kTempPrefix);
    say("Exit");
    RunState &state = runState();
    state.ProgressPercent = 0;
    state.RetrievalRunning = false;
    say("Return");
}

} // namespace

void setRetrievalTimers(RetrievalTimers *timers)
{
    installedTimers() = timers;
}

bool DownloadTheWeather(bool automatic, bool alertsOnly, bool force)
{
    if (!RequireProgramFile(kMapDrawer, true) || runState().RetrievalRunning) return true;
    runState().RetrievalRunning = true;
    return Retrieval(automatic, alertsOnly, force).run();
}

void UpdateTheWeather(bool automatic, bool alertsOnly, bool resetFailures)
{
    SchedulerValues &values = schedulerValues();
    RetrievalTimers *timers = installedTimers();
    if (resetFailures) process().RealtimeErrorCount = 0;
    const bool realtime = timers && timers->realtimeTimerActive();
    if (realtime) timers->setRealtimeTimerEnabled(false);
    if (timers) timers->setTimer1Enabled(false);
    if (!automatic) {
        values.UpdateMinutes = 0;
        for (Failure flag : {Failure::Conditions, Failure::Detailed, Failure::NwsDetailed})
            runState().failed(flag) = false;
    }
    // A refused token has been cleared by then: the second run fetches a fresh one.
    if (!DownloadTheWeather(automatic, alertsOnly, resetFailures) && !automatic)
        DownloadTheWeather(automatic, alertsOnly, resetFailures);
    const QString rate = GetPref(QStringLiteral("AutoUpdate"), QStringLiteral("Rate"));
    if (!realtime && !rate.isEmpty() && rate != kNeverAutoUpdate) {
        values.UpdateMinutes = 0;
        if (timers) timers->setTimer1Enabled(true);
    }
    if (!alertsOnly)
        SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("Weather"), NowStamp());
    SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("Alerts"), NowStamp());
    if (realtime) timers->setRealtimeTimerEnabled(true);
}

} // namespace Tarnby
