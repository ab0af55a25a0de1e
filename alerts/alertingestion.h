#pragma once
// Alert documents into the Alerts branch of the Weather cache (Cache\<code>\Alerts).
//
// A United States station reads the NWS API's active alerts, a station elsewhere the
// Pulse alert service. Each parser cuts its answer by text marks, names each alert's
// type by GetAlertCode, keeps the alerts of the types the user selected and replaces the
// branch with them:
//   issued<n>, expires<n>, short-title<n>, title<n>, msg-body<n>, severity<n> (n from 1),
//   Type ("NWS" or "EarthNetworks", only with at least one alert), Count,
//   AlertsAvailable ("True"/"False"), AlertEpoch (the identity of the alert set).
// The rows are written first and Count and AlertEpoch last.
//
// A document that is not a whole answer of the service (empty, truncated, an error page,
// another service's document) or that holds an alert without bulletin text leaves the
// branch exactly as it was and sets AlertsFailed. An answer with an empty list is a good
// answer: it empties the branch.

#include <QList>
#include <QString>

#include <optional>

namespace Tarnby
{

// One kept alert as a parser read it; the short title is made when it is stored.
struct AlertRecord {
    QString issued;
    QString expires;
    QString title;
    QString body;     // the bulletin, with the JSON escapes "\n" and "\r" as they came
    QString severity; // AlertSeverity of the alert's name
};

// The kept alerts of one answer and the identity of the set (AlertEpoch): the ids of the
// kept NWS alerts joined by commas; for Pulse the id of the last alert read.
struct AlertSet {
    QList<AlertRecord> alerts;
    QString epoch;
};

// The user's alert selection (SevereAlert/SelectedAlerts): type numbers joined by
// commas; the default list when the setting is empty. The list "," selects nothing.
QString SelectedAlerts();

// Whether an alert of this type is kept: its number is in the list, or it is of no known
// type ("0") and the list selects anything at all.
bool IsAlertSelected(const QString &code, const QString &selectedList);

// The type number of an alert name, or of several names joined by commas: the first
// name whose number is selected wins, otherwise the last name's number stands. An
// unknown name that speaks of an "Abduction" is a child abduction emergency ("303").
QString GetAlertCode(const QString &names, const QString &selectedList);

// "warning" when the name holds "warning" (in any case), else "watch" when it holds
// "watch", else "other".
QString AlertSeverity(const QString &name);

// The run's flag for the alert step. The run sets it when the download failed; a parser
// sets it when it starts on a list and clears it once it has gone through the whole list,
// so it stays set when a parse stops half-way.
bool AlertsFailed();
void setAlertsFailed(bool failed);

// The readers of one answer's text, under the user's selection. Nothing when the answer
// is damaged (AlertsFailed is then set and a line naming `source` is logged). They write
// nothing to the cache, but they leave AlertsFailed set for a non-empty list: storing
// the set is what clears it.
std::optional<AlertSet> ReadWeatherBugAlerts(const QString &document, const QString &source);
std::optional<AlertSet> ReadNwsAlerts(const QString &document, const QString &source);

// The parsers: read the downloaded answer at `documentPath` and replace the Alerts
// branch with its alerts, or leave the branch as it is when the answer is damaged.
void ProcessWeatherBugAlerts(const QString &documentPath);
void ProcessNwsAlerts(const QString &documentPath);

// The run's "Alerts" step: the parser of the selected station's service (the Pulse
// parser for a station outside the United States, else the NWS one). Alerts are parsed
// whenever they were fetched, so newData and force change nothing.
void ProcessAlertsDownload(const QString &documentPath, bool newData, bool force);

} // namespace Tarnby
