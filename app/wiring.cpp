#include "app/wiring.h"

#include "alerts/alertformat.h"
#include "alerts/alertingestion.h"
#include "core/processvalues.h"
#include "derive/sunmoon.h"
#include "providers/conditions.h"
#include "providers/forecasts.h"
#include "providers/nwsstation.h"
#include "providers/stationtimezone.h"
#include "providers/weatherbug.h"
#include "run/runhooks.h"
#include "run/runstate.h"
#include "run/scheduler.h"
#include "template/alerttokens.h"
#include "template/exportlog.h"
#include "template/misctokens.h"

namespace Tarnby
{

namespace
{

// A document that could not be read fails its slot as a failed download would.
void registerReader(const QString &kind, DownloadKindHandler reader,
                    std::function<bool()> readFailed, Failure flag)
{
    registerDownloadKind(kind, [=](const QString &path, bool newData, bool force) {
        reader(path, newData, force);
        if (readFailed()) runState().failed(flag) = true;
    });
}

void registerForecastReader(const QString &kind, DownloadKindHandler reader,
                            ForecastDocument document, Failure flag)
{
    registerReader(
        kind, std::move(reader), [document] { return ForecastFailed(document); }, flag);
}

void registerKinds()
{
    registerDownloadKind(QStringLiteral("LiveConditions"),
                         [](const QString &path, bool newData, bool force) {
                             if (process().StationType == QStringLiteral("PWS (WeatherBug)"))
                                 ProcessPwsConditions(path, newData, force);
                             else
                                 ReadWeatherBugConditions(path, newData, force);
                         });
    registerDownloadKind(QStringLiteral("Links"), &BuildWeatherBugLinks);
    registerReader(QStringLiteral("Alerts"), &ProcessAlertsDownload, &AlertsFailed,
                   Failure::Alerts);
    registerForecastReader(QStringLiteral("Detailed"), &ProcessDetailedDownload,
                           ForecastDocument::Daily, Failure::Detailed);
    registerForecastReader(QStringLiteral("NDFD"), &ProcessNdfdDownload, ForecastDocument::Hourly,
                           Failure::Hourly);
    registerForecastReader(QStringLiteral("UV"), &ProcessUvDownload, ForecastDocument::Uv,
                           Failure::Uv);
    registerForecastReader(QStringLiteral("WuUV"), &ProcessWuUvDownload, ForecastDocument::Uv,
                           Failure::Uv);
    registerForecastReader(QStringLiteral("NwsDetailed"), &ProcessNwsDetailedDownload,
                           ForecastDocument::NwsText, Failure::NwsDetailed);
}

RetrievalHooks providerHooks()
{
    RetrievalHooks hooks = retrievalHooks();
    hooks.fetchWeatherBugObservations = [] { return !UpdateWeatherBugConditions().isEmpty(); };
    hooks.fetchNwsObservations = [] { return !UpdateNwsConditions().isEmpty(); };
    hooks.buildMapLinks = &BuildMapLinks;
    // The sun times are those of the machine's zone whether or not the station's own
    // zone is known; an unknown zone fails the step, so that a run in which everything
    // failed says so.
    hooks.timeZoneAndSun = [] {
        const bool zoneKnown = UpdateStationTimeZone();
        WriteSunCache();
        return zoneKnown;
    };
    // The user's export and log files, from their templates in the settings.
    hooks.writeUserLog = &RunLog;
    hooks.runExport = &RunExport;
    return hooks;
}

// The template engine sits below the providers and the alert formatters; it reaches
// them through these sources.
void installTemplateSources()
{
    setAlertTextSource(&AlertTokenText);
    setStationWebPageSource(&StationWebPage);
}

} // namespace

SchedulerHooks ProviderSchedulerHooks()
{
    SchedulerHooks hooks;
    hooks.liveWeatherBug = &UpdateWeatherBugConditions;
    hooks.liveNws = &UpdateNwsConditions;
    return hooks;
}

void InstallRetrievalWiring()
{
    registerKinds();
    setRetrievalHooks(providerHooks());
    installTemplateSources();
}

} // namespace Tarnby
