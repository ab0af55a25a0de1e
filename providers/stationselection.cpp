#include "providers/stationselection.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/numberformat.h"
#include "retrieval/hosts.h"

#include <utility>

namespace Tarnby
{

namespace
{

const QString kSection = QStringLiteral("CityCode");
const QString kMisc = QStringLiteral("Misc");

StationSelectionHooks &hooks()
{
    static StationSelectionHooks installed;
    return installed;
}

void call(const std::function<void()> &hook)
{
    if (hook) hook();
}

QString keyFor(const char *name, bool previous)
{
    return (previous ? QStringLiteral("Last") : QString()) + QLatin1String(name);
}

QString selectionValue(const char *name)
{
    return GetPref(kSection, QLatin1String(name));
}

void saveSelectionValue(const char *name, const QString &value)
{
    SavePref(kSection, QLatin1String(name), value);
}

void writeSelection(const StationEntry &entry, bool previous)
{
    SavePref(kSection, keyFor("City", previous), entry.City);
    SavePref(kSection, keyFor("Code", previous), entry.Code);
    SavePref(kSection, keyFor("ZipCode", previous), entry.ZipCode);
    SavePref(kSection, keyFor("Latitude", previous), entry.Latitude);
    SavePref(kSection, keyFor("Longitude", previous), entry.Longitude);
    SavePref(kSection, keyFor("StationType", previous), entry.StationType);
}

// Writes a new selection in place of the current one and marks it as not yet checked
// or down; the caller decides what becomes of the former one.
void makeSelection(const StationEntry &entry)
{
    saveSelectionValue("CheckedZipCode", QStringLiteral("False"));
    saveSelectionValue("ProviderId", QString());
    writeSelection(entry, false);
    CopySelectionToProcess();
}

void clearStationDown()
{
    SavePref(kMisc, QStringLiteral("StationDown"), QStringLiteral("False"));
    SavePref(kMisc, QStringLiteral("StationDownTimeStamp"), QString());
}

// "Name (KDSM)" gives "KDSM"; a text without " (" stays whole.
QString stationInParentheses(const QString &station)
{
    const qsizetype mark = station.indexOf(QStringLiteral(" ("));
    return mark < 0 ? station : station.mid(mark + 2, station.size() - mark - 3);
}

void markStationDown()
{
    if (GetPref(kMisc, QStringLiteral("StationDown")) != QLatin1String("False")) return;
    SavePref(kMisc, QStringLiteral("StationDown"), QStringLiteral("True"));
    SavePref(kMisc, QStringLiteral("StationDownTimeStamp"), clock().now().toString(Qt::ISODate));
}

void storeRepairedPostalCode(const QString &code, const QString &placeholder)
{
    const QString oldLine = BuildStationEntry();
    QString newLine = oldLine;
    newLine.replace(QStringLiteral("***") + placeholder + QStringLiteral("***"),
                    QStringLiteral("***") + code + QStringLiteral("***"));
    saveSelectionValue("ZipCode", code);
    ReplaceInStationFile(oldLine, newLine);
}

} // namespace

void setStationSelectionHooks(StationSelectionHooks installed)
{
    hooks() = std::move(installed);
}

StationEntry ReadSelection(bool previous)
{
    return StationEntry{GetPref(kSection, keyFor("City", previous)),
                        GetPref(kSection, keyFor("Code", previous)),
                        GetPref(kSection, keyFor("ZipCode", previous)),
                        GetPref(kSection, keyFor("Latitude", previous)),
                        GetPref(kSection, keyFor("Longitude", previous)),
                        GetPref(kSection, keyFor("StationType", previous))};
}

void CopySelectionToProcess()
{
    const StationEntry selection = ReadSelection();
    ProcessValues &pv = process();
    pv.CityCode = selection.Code.isEmpty() ? QStringLiteral("na") : selection.Code;
    pv.StationType = selection.StationType;
    pv.Latitude = selection.Latitude;
    pv.Longitude = selection.Longitude;
}

QString BuildStationEntry()
{
    return ReadSelection().toLine();
}

bool ChangeWeatherStation(const QString &entry)
{
    const StationEntry current = ReadSelection();
    if (current.toLine() == entry) return false;
    const std::optional<StationEntry> chosen = StationEntry::parse(entry);
    if (!chosen) {
        Log(QStringLiteral("Not a station entry: ") + entry +
            QStringLiteral(" (ChangeWeatherStation)"));
        return false;
    }
    if (!current.City.isEmpty()) writeSelection(current, true);
    makeSelection(*chosen);
    if (chosen->Code == current.Code) DeleteStationCache(current.Code);
    call(hooks().reReadUpdateRate);
    clearStationDown();
    return true;
}

void SwitchToLastStation()
{
    const StationEntry current = ReadSelection();
    const StationEntry previous = ReadSelection(true);
    if (previous.Code.isEmpty() || previous.Code == current.Code) return;
    makeSelection(previous);
    writeSelection(current, true);
    clearStationDown();
    call(hooks().rebuildStationMenu);
    if (hooks().updateAllowed && hooks().updateAllowed())
        call(hooks().updateTheWeather);
    else
        call(hooks().refreshInterface);
}

bool SwapCityCodes()
{
    const StationEntry current = ReadSelection();
    const StationEntry previous = ReadSelection(true);
    if (previous.Code.isEmpty()) return false;
    writeSelection(previous, false);
    writeSelection(current, true);
    saveSelectionValue("CheckedZipCode", QStringLiteral("False"));
    CopySelectionToProcess();
    return true;
}

bool SetWeatherStationByCode(const QString &code)
{
    if (code.isEmpty()) return false;
    const QStringList lines = ReadStationLines();
    for (const QString &line : lines) {
        const std::optional<StationEntry> entry = StationEntry::parse(line);
        if (!entry || !entry->complete || entry->Code != code) continue;
        saveSelectionValue("ProviderId", QString());
        writeSelection(*entry, false);
        CopySelectionToProcess();
        return true;
    }
    return false;
}

QString StationGroup()
{
    return StationGroup(process().StationType);
}

QString StationWebPage()
{
    const ProcessValues &values = process();
    const QString group = StationGroup();
    if (group == QStringLiteral("WUnderground"))
        return HostUrl(Host::Wunderground) +
               (values.CityCode.size() == 4 ? QStringLiteral("/weather/")
                                            : QStringLiteral("/dashboard/pws/")) +
               values.CityCode;
    if (group == QStringLiteral("NWS"))
        return HostUrl(Host::NwsForecast) + QStringLiteral("/MapClick.php?lat=") + values.Latitude +
               QStringLiteral("&lon=") + values.Longitude;
    if (group == QStringLiteral("CWOP"))
        return HostUrl(Host::CwopStationInfo) + QStringLiteral("/site/search?site=") +
               values.CityCode + QStringLiteral("&Get+information=Get+information");
    return HostUrl(Host::WeatherBug) + QStringLiteral("/common/jump.aspx?stat=") + values.CityCode;
}

int StationGroupNumber()
{
    return StationGroupNumber(process().StationType);
}

bool IsInternational()
{
    return IsInternational(selectionValue("ZipCode"));
}

QString GetStationDisplayName()
{
    if (GetCache(QStringLiteral("Current"), QStringLiteral("UseActualStationName")) !=
        QLatin1String("True")) {
        SavePref(kMisc, QStringLiteral("StationDown"), QStringLiteral("False"));
        return selectionValue("City");
    }
    const QString cityState = GetCache(QStringLiteral("Current"), QStringLiteral("city-state"));
    const QString station =
        stationInParentheses(GetCache(QStringLiteral("Current"), QStringLiteral("station")));
    markStationDown();
    return cityState.isEmpty() ? selectionValue("City")
                               : cityState + QStringLiteral(" (") + station + QLatin1Char(')');
}

void RepairPostalCode(const PostalCodeLookups &lookups)
{
    if (selectionValue("CheckedZipCode") == QLatin1String("True")) return;
    const StationEntry selection = ReadSelection();
    if (selection.ZipCode == QLatin1String("N/A") && lookups.byLocation) {
        saveSelectionValue("CheckedZipCode", QStringLiteral("True"));
        const QString found = lookups.byLocation(selection.Latitude, selection.Longitude);
        if (isNumeric(found)) storeRepairedPostalCode(found, QStringLiteral("N/A"));
    } else if (selection.ZipCode == QLatin1String("0") &&
               StationGroup(selection.StationType) == QLatin1String("WeatherBug") &&
               lookups.byStation) {
        saveSelectionValue("CheckedZipCode", QStringLiteral("True"));
        const QString found = lookups.byStation(selection.Code);
        if (isNumeric(found) && found != QLatin1String("0"))
            storeRepairedPostalCode(found, QStringLiteral("0"));
    }
}

} // namespace Tarnby
