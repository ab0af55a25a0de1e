#pragma once
// What the retrieval run leaves to the layers above it. The run knows the order of the
// work; the work itself (parsers, time zone, database, interface, tray, sounds, alerts)
// is installed here by the providers and the desktop layer. An entry that is not
// installed is not done, and the run goes on.
//
// Document kinds: ProcessDownload looks a kind up in a table of entry points. The
// kinds the run asks for are "LiveConditions", "NDFD", "Detailed", "Alerts", "Links",
// "UV", "WuDetailed", "WuNDFD", "WuDailyHistory", "WuYearlyHistory" and
// "CwopApiLiveConditions"; "WuLiveConditions", "WuAlerts", "WuUV", "NwsDetailed",
// "NwsApiLiveConditions", "NwsApiDetailed" and "NwsApiNDFD" are kinds of the same
// table for the providers' own use. An entry point does its kind's after-work too
// (conditions post-processing after "LiveConditions", hourly post-processing after
// "NDFD", ...) and chooses between parsers where the kind has two ("Alerts" by
// IsInternational, "LiveConditions" for "PWS (WeatherBug)").

#include "providers/stationselection.h"

#include <QString>

#include <functional>

namespace Tarnby
{

// documentPath: the downloaded body (empty when the slot had no address); newData: the
// station changed during the run; force: the run was asked to take every document as
// new.
using DownloadKindHandler =
    std::function<void(const QString &documentPath, bool newData, bool force)>;

// Installs the entry point of a kind; an empty handler removes it.
void registerDownloadKind(const QString &kind, DownloadKindHandler handler);
// The entry point of a kind; empty when none is registered.
DownloadKindHandler downloadKind(const QString &kind);

// The steps of a run that are not parsers, in the order the run takes them.
struct RetrievalHooks {
    // While it answers true the run waits, pumping events, before it begins (the
    // interface's browser is still loading a page). Asked only while the interface
    // window is shown.
    std::function<bool()> interfaceBusy;
    // The postal-code repair of a WeatherBug selection (station discovery).
    PostalCodeLookups postalCodeLookups;

    // Observations through the provider classes; true when a reading was found. A fetch
    // that is not installed, or finds nothing, counts as a failed Conditions download.
    std::function<bool()> fetchWeatherBugObservations;
    std::function<bool()> fetchWUObservations;
    std::function<bool()> fetchNwsObservations;
    // Time zone and sun; false when the time zone lookup failed. Not installed counts
    // as failed, so that a run in which everything failed is told as such.
    std::function<bool()> timeZoneAndSun;
    // The observation database insert; called only when the database file exists.
    std::function<void()> insertObservation;
    std::function<void()> postProcessForecasts;
    std::function<void()> rewritePrecipitation; // Weather Underground stations
    std::function<void()> buildLightningLink;   // Weather Underground stations
    std::function<void()> buildMapLinks;        // NWS and CWOP stations
    std::function<void()> rebuildMapMenu;
    // The user's log file, written after processing unless realtime updates are on.
    std::function<void()> writeUserLog;

    // RefreshInterface(true, ...) and then the user's export, after a run whose token
    // was not refused.
    std::function<void()> refreshInterface;
    std::function<void()> runExport;

    // The aftermath of a good run.
    std::function<void(const QString &soundFile)> playSound;
    // The alert notification; called when Alerts/title1 is not empty.
    std::function<void()> notifyAlerts;
    // RefreshMap on every open map viewer (AutoUpdate/UpdateMaps).
    std::function<void()> refreshMapViewers;
    std::function<void(bool italic)> switchTrayItalic;

    // The daily version check, with "No" for an automatic one.
    std::function<void(const QString &manual)> checkForUpdate;
};

// Runs a hook when it is installed.
inline void callHook(const std::function<void()> &hook)
{
    if (hook) hook();
}

// Installs the hooks for the rest of the process; an empty set removes them.
void setRetrievalHooks(RetrievalHooks hooks);
const RetrievalHooks &retrievalHooks();

} // namespace Tarnby
