#include "providers/weatherbug.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/conditions.h"
#include "providers/observationdatabase.h"
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

QString orNotAvailable(const QString &value)
{
    return value.isEmpty() ? kNotAvailable : value;
}

// The number characters of a document value, else the cached value of the key.
QString numberOrCached(const QString &property, const QString &key)
{
    const QString number = KeepNumberCharacters(property);
    return isNumeric(number) ? number : cached(key);
}

// How each reading of the observation reaches the cache and the argument list.
enum class Row {
    Reading,
    DayHigh,
    DayLow,
    DewPoint,
    Humidity,
    HumidityHigh,
    HumidityLow,
    Plain,
    Direction
};

struct LiveRow {
    Slot slot;
    const char *key;
    Row row;
    ReadingRule rule = ReadingRule::Temperature;
};

// The order is the skins' contract: they read the argument list by place.
constexpr LiveRow kLiveRows[] = {
    {Slot::Temperature, "temp", Row::Reading},
    {Slot::TemperatureHigh, "temp-high", Row::DayHigh},
    {Slot::TemperatureLow, "temp-low", Row::DayLow},
    {Slot::FeelsLike, "feels-like", Row::Reading},
    {Slot::TemperatureRate, "temp-rate", Row::Reading, ReadingRule::Rate},
    {Slot::WetBulbTemperature, "wet-bulb", Row::Reading},
    {Slot::DewPoint, "dew-point", Row::DewPoint},
    {Slot::Humidity, "humidity", Row::Humidity},
    {Slot::HumidityHigh, "humidity-high", Row::HumidityHigh},
    {Slot::HumidityLow, "humidity-low", Row::HumidityLow},
    {Slot::HumidityRate, "humidity-rate", Row::Plain},
    {Slot::RainDaily, "rain-today", Row::Reading, ReadingRule::Rain},
    {Slot::RainRate, "rain-rate", Row::Reading, ReadingRule::Rain},
    {Slot::RainRateMax, "rain-rate-max", Row::Reading, ReadingRule::Rain},
    {Slot::RainMonthly, "rain-month", Row::Reading, ReadingRule::Rain},
    {Slot::WindDirection, "wind-direction", Row::Direction},
    {Slot::WindDirectionAvg, "wind-direction-avg", Row::Direction},
    {Slot::WindSpeed, "wind-speed", Row::Reading, ReadingRule::Wind},
    {Slot::WindSpeedAvg, "wind-speed-avg", Row::Reading, ReadingRule::Wind},
    {Slot::WindGustDirectionHourly, "gust-direction", Row::Direction},
    {Slot::WindGustSpeedHourly, "gust-speed", Row::Reading, ReadingRule::Wind},
    {Slot::Pressure, "pressure", Row::Reading, ReadingRule::Pressure},
    {Slot::PressureHigh, "pressure-high", Row::Reading, ReadingRule::Pressure},
    {Slot::PressureLow, "pressure-low", Row::Reading, ReadingRule::Pressure},
    {Slot::PressureRate, "pressure-rate", Row::Reading, ReadingRule::Pressure},
};

class ObservationWriter
{
public:
    ObservationWriter(const clsWeatherBugStation &station, const QDate &day)
        : m_station(station), m_day(day)
    {
    }

    void write(const LiveRow &row, RealtimeArguments &arguments);

private:
    QString property(const LiveRow &row) const;
    QString dayExtreme(const LiveRow &row, bool highest) const;
    void writePlain(const QString &key, const QString &value, RealtimeArguments &arguments);
    void writeDirection(const LiveRow &row, RealtimeArguments &arguments);
    void addCachedDewPointExtremes(RealtimeArguments &arguments) const;

    const clsWeatherBugStation &m_station;
    QDate m_day;
    QString m_humidity;
};

QString ObservationWriter::property(const LiveRow &row) const
{
    return m_station.value(row.slot);
}

QString ObservationWriter::dayExtreme(const LiveRow &row, bool highest) const
{
    const QString number = numberOrCached(property(row), QLatin1String(row.key));
    if (isNumeric(number)) return number;
    ObservationDatabase &database = observationDatabase();
    if (!database.exists()) return number;
    return highest ? database.GetHighTempFromDatabase(m_day)
                   : database.GetLowTempFromDatabase(m_day);
}

void ObservationWriter::writePlain(const QString &key, const QString &value,
                                   RealtimeArguments &arguments)
{
    const QString written = orNotAvailable(value);
    save(key, written);
    arguments.add(written);
}

// A direction is written only when the document has one; the list then shows the
// cached direction instead.
void ObservationWriter::writeDirection(const LiveRow &row, RealtimeArguments &arguments)
{
    const QString key = QLatin1String(row.key);
    const QString direction = CompassWord(property(row));
    // "NA" is the text cutters' word for a key the document lacks.
    if (direction.isEmpty() || direction == kNotAvailable || direction == QStringLiteral("NA")) {
        arguments.add(cached(key));
        return;
    }
    save(key, direction);
    arguments.add(direction);
}

void ObservationWriter::addCachedDewPointExtremes(RealtimeArguments &arguments) const
{
    for (const char *key : {"dew-point-high", "dew-point-low"})
        arguments.add(ReadingRule::Temperature,
                      ApplyReadingRule(ReadingRule::Temperature, cached(QLatin1String(key))));
}

void ObservationWriter::write(const LiveRow &row, RealtimeArguments &arguments)
{
    const QString key = QLatin1String(row.key);
    switch (row.row) {
    case Row::Reading:
        WriteReading(arguments, key, row.rule, numberOrCached(property(row), key));
        break;
    case Row::DayHigh:
    case Row::DayLow:
        WriteReading(arguments, key, row.rule, dayExtreme(row, row.row == Row::DayHigh));
        break;
    case Row::DewPoint:
        WriteReading(arguments, key, row.rule, numberOrCached(property(row), key));
        addCachedDewPointExtremes(arguments);
        break;
    case Row::Humidity: {
        // A humidity of 0 is a sensor without a reading.
        QString humidity = KeepNumberCharacters(property(row), QStringLiteral("Humidity"));
        if (!isNumeric(humidity) || humidity == QStringLiteral("0")) humidity = cached(key);
        m_humidity = WholeNumberText(humidity);
        writePlain(key, m_humidity, arguments);
        break;
    }
    case Row::HumidityHigh:
    case Row::HumidityLow:
        writePlain(key,
                   ClampedHumidityBound(numberOrCached(property(row), key), m_humidity,
                                        row.row == Row::HumidityHigh),
                   arguments);
        break;
    case Row::Plain:
        writePlain(key, numberOrCached(property(row), key), arguments);
        break;
    case Row::Direction:
        writeDirection(row, arguments);
        break;
    }
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

// The time a skin shows beside the live values; the list quotes with "'".
QString observedStamp(const QString &observedText)
{
    return FormatTime(observedText, false, false, true)
        .replace(QStringLiteral("'"), QStringLiteral("\\'"));
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
    arguments.add(observedStamp(observedText));
    arguments.add(observedText);
    ObservationWriter writer(station, observed->date());
    for (const LiveRow &row : kLiveRows)
        writer.write(row, arguments);
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
