#include "run/processing.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "run/runhooks.h"
#include "run/runprogress.h"
#include "run/runstate.h"

#include <functional>

namespace Tarnby
{

namespace
{

class GroupProcessing
{
public:
    GroupProcessing(RunSlots &jobs, bool newData, bool force)
        : m_slots(jobs), m_newData(newData), m_force(force), m_hooks(retrievalHooks())
    {
    }

    void weatherBug();
    void wunderground();
    void nws();
    void cwop();

private:
    void document(const char *kind, Slot slot)
    {
        ProcessDownload(QLatin1String(kind), m_slots[slot],
                        runState().failed(slotInfo(slot).failure), m_newData, m_force);
    }
    static void observations(const std::function<bool()> &fetch)
    {
        runState().failed(Failure::Conditions) = !(fetch && fetch());
    }
    void timeZoneAndSun()
    {
        runState().failed(Failure::TimeZone) =
            !(m_hooks.timeZoneAndSun && m_hooks.timeZoneAndSun());
    }
    void databaseInsert()
    {
        if (FileExists(process().DbPath)) callHook(m_hooks.insertObservation);
    }
    void linksFromMapBuilder()
    {
        DelCache(QStringLiteral("Links"));
        callHook(m_hooks.buildMapLinks);
    }
    void finish()
    {
        databaseInsert();
        callHook(m_hooks.postProcessForecasts);
    }

    RunSlots &m_slots;
    bool m_newData;
    bool m_force;
    const RetrievalHooks &m_hooks;
};

void GroupProcessing::weatherBug()
{
    if (!m_slots[Slot::Conditions].Enabled) observations(m_hooks.fetchWeatherBugObservations);
    document("LiveConditions", Slot::Conditions);
    document("NDFD", Slot::Hourly);
    document("Detailed", Slot::Detailed);
    timeZoneAndSun();
    document("Alerts", Slot::Alerts);
    document("UV", Slot::UV);
    // The links are built from the station, with or without a download.
    runState().failed(Failure::Links) = false;
    m_slots[Slot::Links].Enabled = true;
    document("Links", Slot::Links);
    finish();
}

void GroupProcessing::wunderground()
{
    observations(m_hooks.fetchWUObservations);
    document("NDFD", Slot::Hourly);
    document(m_slots[Slot::Detailed].Url.isEmpty() ? "WuDetailed" : "Detailed", Slot::Detailed);
    timeZoneAndSun();
    document("WuNDFD", Slot::Hourly);
    document("Alerts", Slot::Alerts);
    document("WuDailyHistory", Slot::DailyHistory);
    document("WuYearlyHistory", Slot::YearlyHistory);
    document("UV", Slot::UV);
    finish();
    callHook(m_hooks.rewritePrecipitation);
    callHook(m_hooks.buildLightningLink);
}

void GroupProcessing::nws()
{
    document("NDFD", Slot::Hourly);
    document("Detailed", Slot::Detailed);
    observations(m_hooks.fetchNwsObservations);
    linksFromMapBuilder();
    timeZoneAndSun();
    document("Alerts", Slot::Alerts);
    document("UV", Slot::UV);
    finish();
}

void GroupProcessing::cwop()
{
    document("NDFD", Slot::Hourly);
    document("Detailed", Slot::Detailed);
    document("CwopApiLiveConditions", Slot::Conditions);
    linksFromMapBuilder();
    timeZoneAndSun();
    document("Alerts", Slot::Alerts);
    document("UV", Slot::UV);
    finish();
}

} // namespace

void ProcessDownload(const QString &kind, const DownloadJob &job, bool failed, bool newData,
                     bool force)
{
    if (job.Enabled && !failed)
        if (const DownloadKindHandler handler = downloadKind(kind)) {
            // A reader in another process sees the document's keys all at once.
            const SettingsBatch batch;
            handler(job.OutputFile, newData, force);
        }
    ReportProgress(1);
}

void ProcessGroup(const QString &group, RunSlots &jobs, bool newData, bool force)
{
    GroupProcessing processing(jobs, newData, force);
    if (group == QStringLiteral("WUnderground"))
        processing.wunderground();
    else if (group == QStringLiteral("NWS"))
        processing.nws();
    else if (group == QStringLiteral("CWOP"))
        processing.cwop();
    else
        processing.weatherBug();
}

void CopySlowValues()
{
    const QString cache = QStringLiteral("Cache");
    const QString current = QStringLiteral("Current");
    for (const char *key : {"rain-today", "rain-todayC", "rain-month", "rain-monthC", "rain-year",
                            "rain-yearC", "humidity-low"})
        SaveCache(current, QLatin1String(key), GetCache(cache, QLatin1String(key)));
    // The low's twin lands on the high: a crossing of keys kept as it has always been.
    SaveCache(current, QStringLiteral("humidity-high"),
              GetCache(cache, QStringLiteral("humidity-lowC")));
}

} // namespace Tarnby
