#include "providers/weatherbug.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/conditions.h"
#include "providers/livereading.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "retrieval/servicesettings.h"

#include <optional>

namespace Tarnby
{

using Slot = clsWeatherBugStation::Slot;

namespace
{

const QString kLastUpdated = QStringLiteral("LastUpdated");
constexpr int kObservationSeconds = 30;

// What a numeric document value becomes in its slot.
enum class Treatment { None, Icon, OneDecimal, RiseSign, Compass, TwoDecimals };

struct DocumentKey {
    const char *key;
    Slot slot;
    Treatment treatment = Treatment::None;
};

// The keys read, in the order of the walk; the service's other keys are not used.
constexpr DocumentKey kDocumentKeys[] = {
    {"key", Slot::StationKey},
    {"stationId", Slot::StationId},
    {"providerId", Slot::StationProviderId},
    {"observationTimeLocalStr", Slot::ObservationTimeLocal},
    {"observationTimeUtcStr", Slot::ObservationTimeUtc},
    {"iconCode", Slot::IconCode, Treatment::Icon},
    {"dewPoint", Slot::DewPoint},
    {"humidity", Slot::Humidity},
    {"humidityRate", Slot::HumidityRate, Treatment::OneDecimal},
    {"pressureSeaLevel", Slot::Pressure},
    {"pressureSeaLevelRate", Slot::PressureRate, Treatment::RiseSign},
    {"rainDaily", Slot::RainDaily, Treatment::TwoDecimals},
    {"rainRate", Slot::RainRate, Treatment::TwoDecimals},
    {"rainMonthly", Slot::RainMonthly, Treatment::TwoDecimals},
    {"rainYearly", Slot::RainYearly, Treatment::TwoDecimals},
    {"temperature", Slot::Temperature},
    {"temperatureLow", Slot::TemperatureLow},
    {"temperatureHigh", Slot::TemperatureHigh},
    {"temperatureRate", Slot::TemperatureRate, Treatment::OneDecimal},
    {"windSpeed", Slot::WindSpeed},
    {"windDirection", Slot::WindDirection, Treatment::Compass},
    {"windSpeedAvg", Slot::WindSpeedAvg},
    {"windDirectionAvg", Slot::WindDirectionAvg, Treatment::Compass},
    {"windGustHourly", Slot::WindGustSpeedHourly},
    {"windGustDaily", Slot::WindGustSpeedDaily},
    {"feelsLike", Slot::FeelsLike},
    {"wetBulbTemperature", Slot::WetBulbTemperature},
    {"pressureSeaLevelLow", Slot::PressureLow},
    {"pressureSeaLevelHigh", Slot::PressureHigh},
    {"humidityLow", Slot::HumidityLow},
    {"humidityHigh", Slot::HumidityHigh},
    {"rainRateMax", Slot::RainRateMax, Treatment::TwoDecimals},
    {"windGustDirectionDaily", Slot::WindGustDirectionDaily, Treatment::Compass},
    {"windGustDirectionHourly", Slot::WindGustDirectionHourly, Treatment::Compass},
    {"stationName", Slot::StationName},
};

QString treated(const QString &value, Treatment treatment)
{
    const std::optional<double> number = NumberInText(value);
    if (!number) return value;
    switch (treatment) {
    case Treatment::None:
        return value;
    case Treatment::Icon:
        return PulseConditionCode(value);
    case Treatment::OneDecimal:
        return formatNumber(*number, u"0.0");
    case Treatment::RiseSign:
        return value.at(0).isDigit() ? QLatin1Char('+') + value : value;
    case Treatment::Compass:
        return CompassWord(value);
    case Treatment::TwoDecimals:
        return formatNumber(*number, u"0.00");
    }
    return value;
}

QString pulseRoot()
{
    const QString root = process().PulseUrl;
    return root.isEmpty() ? HostUrl(Host::PulseApi) : root;
}

bool holdsObservation(const QString &document)
{
    return document.contains(QStringLiteral("\"observation\""), Qt::CaseInsensitive);
}

// "2014-10-16T10:14:44Z" in UTC to the machine's local date and time.
std::optional<QDateTime> observationTime(const QString &utcText)
{
    QString text = utcText;
    text.replace(QLatin1Char('T'), QLatin1Char(' ')).remove(QLatin1Char('Z'));
    const std::optional<QDateTime> utc = readDate(text);
    if (!utc) return std::nullopt;
    return utcToLocal(*utc);
}

QString cached(const QString &key)
{
    return GetCache(kCurrentSection, key);
}

void save(const QString &key, const QString &value)
{
    SaveCache(kCurrentSection, key, value);
}

// The slot of each live row of the argument list.
struct RowSlot {
    const char *key;
    Slot slot;
};

constexpr RowSlot kRowSlots[] = {
    {"temp", Slot::Temperature},
    {"temp-high", Slot::TemperatureHigh},
    {"temp-low", Slot::TemperatureLow},
    {"feels-like", Slot::FeelsLike},
    {"temp-rate", Slot::TemperatureRate},
    {"wet-bulb", Slot::WetBulbTemperature},
    {"dew-point", Slot::DewPoint},
    {"humidity", Slot::Humidity},
    {"humidity-high", Slot::HumidityHigh},
    {"humidity-low", Slot::HumidityLow},
    {"humidity-rate", Slot::HumidityRate},
    {"rain-today", Slot::RainDaily},
    {"rain-rate", Slot::RainRate},
    {"rain-rate-max", Slot::RainRateMax},
    {"rain-month", Slot::RainMonthly},
    {"wind-direction", Slot::WindDirection},
    {"wind-direction-avg", Slot::WindDirectionAvg},
    {"wind-speed", Slot::WindSpeed},
    {"wind-speed-avg", Slot::WindSpeedAvg},
    {"gust-direction", Slot::WindGustDirectionHourly},
    {"gust-speed", Slot::WindGustSpeedHourly},
    {"pressure", Slot::Pressure},
    {"pressure-high", Slot::PressureHigh},
    {"pressure-low", Slot::PressureLow},
    {"pressure-rate", Slot::PressureRate},
};

// A Pulse observation has every row; a value it lacks is "NA" and the pipeline keeps
// the cached one.
LiveValueSource stationValues(const clsWeatherBugStation &station)
{
    return [&station](const QString &key) -> std::optional<QString> {
        for (const RowSlot &row : kRowSlots)
            if (key == QLatin1String(row.key)) return station.value(row.slot);
        return std::nullopt;
    };
}

// Whether a reading is to be dropped: it is older than the cached one, unless it is the
// first good reading of a newly selected station.
bool isStale(const QDateTime &observed, const QString &stationId)
{
    const std::optional<QDateTime> cachedTime = readDate(cached(QStringLiteral("observed")));
    if (!cachedTime || observed >= *cachedTime) return false;
    const bool newSelection =
        cached(QStringLiteral("station-id")) != stationId && stationId == process().CityCode;
    return !newSelection;
}

void writeStationKeys(const clsWeatherBugStation &station, const QString &observedText)
{
    SaveCache(kLastUpdated, QStringLiteral("LastCode"), station.StationId());
    save(QStringLiteral("observed"), observedText);
    SaveCache(kLastUpdated, QStringLiteral("CurrentTimeStamp"), observedText);
    save(QStringLiteral("station-id"), station.StationId());
    save(QStringLiteral("station-key"), station.StationKey());
    save(QStringLiteral("station-provider-id"), station.StationProviderId());
}

QString writeObservation(const clsWeatherBugStation &station)
{
    const std::optional<QDateTime> observed = observationTime(station.ObservationTimeUtc());
    if (!observed || isStale(*observed, station.StationId())) {
        Log(QStringLiteral(
            "Observation not newer than the cached one (UpdateWeatherBugConditions)"));
        return {};
    }
    const QString observedText = generalDateText(*observed);
    writeStationKeys(station, observedText);
    RealtimeArguments arguments;
    arguments.add(ObservedStamp(observedText));
    arguments.add(observedText);
    WriteLiveRows(stationValues(station), observed->date(), arguments);
    StoreLastPressure();
    SaveObservation();
    return arguments.toString();
}

// The older reader maps document keys straight onto cache keys.
struct CacheKey {
    const char *documentKey;
    const char *cacheKey;
    Treatment treatment = Treatment::None;
};

constexpr CacheKey kCacheKeys[] = {
    {"key", "station-key"},
    {"stationId", "station-id"},
    {"providerId", "station-provider-id"},
    {"observationTimeUtcStr", "observationTimeUtcStr"},
    {"dewPoint", "dew-point"},
    {"dewPointRate", "dew-point-rate"},
    {"heatIndex", "heat-index"},
    {"humidity", "humidity"},
    {"humidityRate", "humidity-rate"},
    {"pressureSeaLevel", "pressure"},
    {"pressureSeaLevelRate", "pressure-rate", Treatment::RiseSign},
    {"rainDaily", "rain-today"},
    {"rainRate", "rain-rate"},
    {"rainMonthly", "rain-month"},
    {"rainYearly", "rain-year"},
    {"temperature", "temp"},
    {"temperatureRate", "temp-rate"},
    {"visibility", "visibility"},
    {"visibilityRate", "visibility-rate"},
    {"windChill", "wind-chill"},
    {"windSpeed", "wind-speed"},
    {"windDirection", "wind-direction", Treatment::Compass},
    {"windGustHourly", "gust-speed"},
    {"windGustDirectionHourly", "gust-direction", Treatment::Compass},
    {"feelsLike", "feels-like"},
};

// The icon of a condition on the WeatherBug web host.
QString iconAddress(const QString &iconCode)
{
    const QString code = treated(iconCode, Treatment::Icon);
    if (!code.startsWith(QStringLiteral("cond"))) return {};
    return HostUrl(Host::WeatherBug) + QStringLiteral("/images/icons/") + code +
           QStringLiteral(".gif");
}

void writeDocumentKeys(const QString &document)
{
    for (const CacheKey &entry : kCacheKeys) {
        const QString value = ReadJsonValue(document, QLatin1String(entry.documentKey)).trimmed();
        // A key the document lacks keeps its cached value.
        if (value != QStringLiteral("NA"))
            save(QLatin1String(entry.cacheKey), treated(value, entry.treatment));
    }
    const QString stationId = ReadJsonValue(document, QStringLiteral("stationId"));
    const bool foreign = stationId.compare(process().CityCode, Qt::CaseInsensitive) != 0;
    save(QStringLiteral("UseActualStationName"),
         foreign ? QStringLiteral("True") : QStringLiteral("False"));
    const QString image = iconAddress(ReadJsonValue(document, QStringLiteral("iconCode")));
    if (!image.isEmpty()) save(QStringLiteral("image"), image);
}

} // namespace

QString clsWeatherBugStation::ObservationsUrl(const QString &latitude, const QString &longitude)
{
    // The doubled "?&" is what the service has always been sent.
    return pulseRoot() + QStringLiteral("/data/observations/v4/current?&location=") + latitude +
           QLatin1Char(',') + longitude +
           QStringLiteral("&locationtype=latitudelongitude&units=english&cultureinfo=en-en"
                          "&verbose=true&subscription-key=") +
           GetApiToken();
}

void clsWeatherBugStation::GetObservationsByLocation(const QString &latitude,
                                                     const QString &longitude, bool &found)
{
    found = false;
    if (latitude.isEmpty() || longitude.isEmpty()) return;
    const QString document = DownloadIt(ObservationsUrl(latitude, longitude), kObservationSeconds);
    if (!holdsObservation(document)) {
        Log(QStringLiteral("No observation for %1, %2 (GetObservationsByLocation)")
                .arg(latitude, longitude));
        return;
    }
    ParseObservation(document);
    found = true;
}

void clsWeatherBugStation::ParseObservation(const QString &document)
{
    for (const DocumentKey &entry : kDocumentKeys) {
        const QString value = ReadJsonValue(document, QLatin1String(entry.key)).trimmed();
        setValue(entry.slot, treated(value, entry.treatment));
    }
    // A station that reports no feels-like gets one of the program's own.
    const bool computeFeelsLike = isNumeric(Temperature()) && isNumeric(DewPoint()) &&
                                  isNumeric(Humidity()) && isNumeric(WindSpeed()) &&
                                  !isNumeric(FeelsLike());
    if (computeFeelsLike)
        setValue(Slot::FeelsLike, FeelsLikeText(Humidity(), Temperature(), WindSpeed()));
}

QString UpdateWeatherBugConditions()
{
    clsWeatherBugStation station;
    bool found = false;
    station.GetObservationsByLocation(process().Latitude, process().Longitude, found);
    QString arguments;
    if (found) {
        const SettingsBatch batch;
        RememberConditions();
        save(QStringLiteral("downloaded"), generalDateText(localNow()));
        arguments = writeObservation(station);
        UpdateHumidex();
    }
    CountLiveReading(found);
    return arguments;
}

void ReadWeatherBugConditions(const QString &documentPath, bool, bool force)
{
    const QString document = ReadFile(documentPath);
    if (!holdsObservation(document)) {
        Log(QStringLiteral("No observation in the document (ReadWeatherBugConditions)"));
        return;
    }
    const std::optional<QDateTime> observed =
        observationTime(ReadJsonValue(document, QStringLiteral("observationTimeUtcStr")));
    const QString observedText = observed ? generalDateText(*observed) : QString();
    const QString stamp = GetCache(kLastUpdated, QStringLiteral("CurrentTimeStamp"));
    if (!force && !observedText.isEmpty() && observedText == stamp) return;

    process().ProcessingConditions = true;
    RememberConditions();
    const ConditionWatch watch;
    writeDocumentKeys(document);
    if (!observedText.isEmpty()) {
        save(QStringLiteral("observed"), observedText);
        SaveCache(kLastUpdated, QStringLiteral("CurrentTimeStamp"), observedText);
    }
    watch.popIfChanged();
    StoreLastPressure();
    process().ProcessingConditions = false;
}

} // namespace Tarnby
