#pragma once
// The selected station: the CityCode section of the settings (Code, City, ZipCode,
// Latitude, Longitude, StationType, ProviderId, CheckedZipCode and the Last* keys of the
// station before), mirrored in process().CityCode, StationType, Latitude and Longitude.
// Every routine here that changes the selection updates the four process values
// together. Nothing here throws; a failure leaves the selection as it was.

#include "providers/stationlist.h"

#include <QString>

#include <functional>

namespace Tarnby
{

// What a change of selection sets off in the layers above (scheduler, menus, run,
// interface). Each call is optional; what is not installed is not done.
struct StationSelectionHooks {
    // The update rate may depend on the station; the scheduler reads it again.
    std::function<void()> reReadUpdateRate;
    std::function<void()> rebuildStationMenu;
    // Whether the scheduler allows a retrieval now.
    std::function<bool()> updateAllowed;
    std::function<void()> updateTheWeather;
    std::function<void()> refreshInterface;
};

// Installs the hooks for the rest of the process; an empty set removes them.
void setStationSelectionHooks(StationSelectionHooks hooks);

// The selection as it is stored, or the Last* keys when previous is true.
StationEntry ReadSelection(bool previous = false);
// Copies Code, StationType, Latitude and Longitude from the settings into the process
// values; an empty code becomes "na".
void CopySelectionToProcess();

// The CityCode.cmb line of the current selection.
QString BuildStationEntry();
// Makes an entry line the selection. False when it already is, or when the line is
// malformed. The former selection moves to the Last* keys unless there was none. An
// entry with the current code but other data deletes that code's Weather cache, since
// the cached data describe another reading of the station.
bool ChangeWeatherStation(const QString &entry);
// Exchanges the selection with the Last* keys, so a second call swaps back; then
// retrieves (or, where the scheduler forbids it, only refreshes the interface). Does
// nothing without a previous station or when it has the current code.
void SwitchToLastStation();
// SwapCityCodes: exchanges the selection with the Last* keys (a second call swaps
// back) and marks the postal code as unchecked. False, changing nothing, when there is
// no previous station. The caller starts the retrieval that follows.
bool SwapCityCodes();
// Selects the first saved station whose code equals the given one exactly. True when
// one was found; otherwise the selection stays. The Last* keys are not touched.
bool SetWeatherStationByCode(const QString &code);

// The family of the current selection's type, its number, and whether its postal code
// lies outside the United States.
QString StationGroup();
int StationGroupNumber();
bool IsInternational();

// The address of the selected station's web page, by its family: the WeatherBug jump
// page, the Weather Underground dashboard (or airport page for a four-character code),
// the NWS forecast page of its position, or its page on the CWOP station site.
QString StationWebPage();

// The name shown for the current station. When the service reports that it answers
// with another station than the chosen one (UseActualStationName in the Current
// cache), that station's name, and Misc/StationDown becomes "True" with the time in
// StationDownTimeStamp; otherwise the selection's City, and StationDown is "False".
QString GetStationDisplayName();

// The postal-code repair at the start of a retrieval run. A selection with "N/A" is
// looked up by its position; a WeatherBug selection with "0" (so far taken for a
// foreign one) is asked of the WeatherBug station. Each selection is tried once
// (CheckedZipCode). A numeric answer (not "0" for the second lookup) becomes the
// ZipCode and is written into the station's line in CityCode.cmb.
struct PostalCodeLookups {
    std::function<QString(const QString &latitude, const QString &longitude)> byLocation;
    std::function<QString(const QString &code)> byStation;
};
void RepairPostalCode(const PostalCodeLookups &lookups);

} // namespace Tarnby
