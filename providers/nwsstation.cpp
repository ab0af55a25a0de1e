#include "providers/nwsstation.h"

#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/sunmoon.h"
#include "derive/units.h"
#include "providers/conditions.h"
#include "providers/discovery.h"
#include "providers/livereading.h"
#include "providers/metar.h"
#include "providers/observationdatabase.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "retrieval/urls.h"

#include <optional>
#include <utility>

namespace Tarnby
{

namespace
{

constexpr int kFetchSeconds = 15;
constexpr int kNearPointSeconds = 30;
constexpr int kMostStations = 501;
// The form of the operator's token; a real one replaces it in the settings.
const QString kTokenPlaceholder = QStringLiteral("0123456789abcdef0123456789abcdef");

QString fetch(const QString &url, int seconds = kFetchSeconds)
{
    return DownloadIt(RelayIfOldSystem(url), seconds);
}

// The text between two marks, empty when either is missing: a damaged answer must not
// pass for a report.
QString between(const QString &text, const QString &start, const QString &end)
{
    return CutBetweenMarks(text, start, end).value_or(QString());
}

// ---- station lists ------------------------------------------------------------------

// "City, ST" or "City - Place" split into City and State.
void setPlace(clsWxStation &station, const QString &name)
{
    for (const QString &mark : {QStringLiteral(", "), QStringLiteral(" - ")}) {
        const qsizetype at = name.indexOf(mark);
        if (at < 0) continue;
        station.setCity(name.left(at));
        station.setState(name.mid(at + mark.size()));
        return;
    }
}

clsWxStation stationOfPiece(const QString &piece)
{
    clsWxStation station;
    station.setDataSource(QStringLiteral("NWS"));
    station.setStationType(QStringLiteral("NWS"));
    const QString name =
        between(piece, QStringLiteral("\"name\": \""), QStringLiteral("\"")).trimmed();
    station.setNeighborhood(name);
    setPlace(station, name);
    station.setCountry(QStringLiteral("US"));
    station.setId(between(piece, QStringLiteral("\"stationIdentifier\": \""), QStringLiteral("\""))
                      .trimmed());
    return station;
}

// The pieces of a station list, one a station; the text before the first is dropped.
QStringList stationPieces(const QString &document)
{
    QStringList pieces = document.split(QStringLiteral("\"id\": \""));
    pieces.removeFirst();
    return pieces;
}

// ---- the live reading ---------------------------------------------------------------

// Statute miles of a report ("1 1/2", "M1/4", "10") as a number's text; empty when
// it holds none.
QString visibilityMiles(const QString &text)
{
    double miles = 0;
    bool any = false;
    for (const QString &part : text.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList fraction = part.split(QLatin1Char('/'));
        const std::optional<double> top = leadingNumber(KeepNumberCharacters(fraction.first()));
        const std::optional<double> bottom =
            fraction.size() > 1 ? leadingNumber(fraction.at(1)) : std::optional<double>(1);
        if (!top || !bottom || *bottom == 0) continue;
        miles += *top / *bottom;
        any = true;
    }
    return any ? ToLocaleNumber(QString::number(miles)) : QString();
}

void writeVisibility(const clsMetar &metar)
{
    const QString key = QStringLiteral("visibility");
    QString miles = visibilityMiles(metar.Visibility());
    if (miles.isEmpty()) miles = GetCache(kCurrentSection, key);
    if (miles.isEmpty()) miles = kNotAvailable;
    SaveCache(kCurrentSection, key, miles);
    const QString unit = process().UnitVis;
    if (unit.isEmpty() || unit == QStringLiteral("miles")) return;
    SaveCache(kCurrentSection, key + QLatin1Char('C'), VisibilityFromMiles(miles, unit));
}

QString dayExtremeFromDatabase(const QDate &day, bool highest)
{
    ObservationDatabase &database = observationDatabase();
    if (!database.exists()) return {};
    return highest ? database.GetHighTempFromDatabase(day) : database.GetLowTempFromDatabase(day);
}

// The rows a report has; the others (rain, rates, averages) keep their cached values.
LiveValueSource reportValues(const clsMetar &metar, const QDate &day)
{
    return [&metar, day](const QString &key) -> std::optional<QString> {
        if (key == QLatin1String("temp")) return metar.TemperatureF();
        if (key == QLatin1String("temp-high")) return dayExtremeFromDatabase(day, true);
        if (key == QLatin1String("temp-low")) return dayExtremeFromDatabase(day, false);
        if (key == QLatin1String("feels-like")) return metar.FeelsLikeF();
        if (key == QLatin1String("dew-point")) return metar.DewPointF();
        if (key == QLatin1String("humidity")) return metar.Humidity();
        // A report's gust blows from the wind's direction.
        if (key == QLatin1String("wind-direction") || key == QLatin1String("gust-direction"))
            return metar.WindDirection();
        if (key == QLatin1String("wind-speed")) return metar.WindSpeedMph();
        if (key == QLatin1String("gust-speed")) return metar.WindGustSpeedMph();
        if (key == QLatin1String("pressure")) return metar.Pressure();
        return std::nullopt;
    };
}

std::optional<QDateTime> observationTime(const clsMetar &metar)
{
    QString text = metar.DateTimeUtc();
    text.replace(QLatin1Char('T'), QLatin1Char(' ')).remove(QLatin1Char('Z'));
    const std::optional<QDateTime> utc = readDate(text);
    if (!utc) return std::nullopt;
    return utcToLocal(*utc);
}

QString writeReport(const clsMetar &metar, const QDateTime &observed)
{
    const QString observedText = generalDateText(observed);
    SaveCache(kCurrentSection, QStringLiteral("observed"), observedText);
    SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("CurrentTimeStamp"), observedText);
    RealtimeArguments arguments;
    arguments.add(ObservedStamp(observedText));
    arguments.add(observedText);
    const QString condition = metar.Condition();
    if (!condition.isEmpty()) {
        SaveCache(kCurrentSection, QStringLiteral("description"), condition);
        SaveCache(kCurrentSection, QStringLiteral("image-icon"), GetNwsIconAddress(condition));
    }
    WriteLiveRows(reportValues(metar, observed.date()), observed.date(), arguments);
    writeVisibility(metar);
    UpdateHumidex();
    StoreLastPressure();
    SaveObservation();
    return arguments.toString();
}

QString latestReport(const QString &code)
{
    const clsNwsStation station;
    return process().NwsSource == QStringLiteral("mesowest") ? station.GetMesowestMetar(code)
                                                             : station.GetNwsMetar(code);
}

// The sky's icon name, replaced by the first weather word that fits.
QString iconName(const QString &condition)
{
    static const std::pair<const char *, const char *> kSky[] = {
        {"Clear", "skc"},         {"Mostly Clear", "few"}, {"Partly Cloudy", "sct"},
        {"Mostly Cloudy", "bkn"}, {"Overcast", "ovc"},
    };
    static const std::pair<const char *, const char *> kWeather[] = {
        {"haze", "haze"},
        {"smoke", "smoke"},
        {"dust", "dust"},
        {"sand", "dust"},
        {"funnel cloud", "tornado"},
        {"fog", "fog"},
        {"squall", "blizzard"},
        {"ice crystals", "skc"},
        {"snow", "snow"},
        {"thunderstorm", "tsra_sct"},
        {"ice pellets", "sleet"},
        {"hail", "sleet"},
        {"rain", "rain"},
        {"drizzle", "rain"},
    };
    QString name;
    for (const auto &[sky, icon] : kSky)
        if (condition == QLatin1String(sky)) name = QLatin1String(icon);
    for (const auto &[word, icon] : kWeather)
        if (condition.contains(QLatin1String(word), Qt::CaseInsensitive))
            return QLatin1String(icon);
    return name.isEmpty() ? QStringLiteral("skc") : name;
}

// ---- value objects -----------------------------------------------------------------

QString convertQuantity(const QString &value, const QString &unit, const QString &wanted)
{
    // The API writes numbers the invariant way.
    if (!isNumeric(value, kInvariantSymbols)) return value;
    const double number = value.toDouble();
    if (unit == QLatin1String("degC") && wanted == QLatin1String("F"))
        return formatNumber(number * 1.8 + 32, u"###.0");
    if (unit == QLatin1String("Pa") && wanted == QLatin1String("in"))
        return formatNumber(number / 3386.389, u"###.00");
    const QString local = ToLocaleNumber(value);
    if (unit == QLatin1String("m_s-1") && wanted == QLatin1String("mph"))
        return MilesPerHourFromMetresPerSecond(local);
    if (unit == QLatin1String("m") && wanted == QLatin1String("mi")) return MilesFromMetres(local);
    return value;
}

} // namespace

QString MesoWestToken()
{
    return GetPref(QStringLiteral("Misc"), QStringLiteral("MesoWestToken"), kTokenPlaceholder);
}

QString clsNwsStation::GetXml(const QString &id) const
{
    const QString document =
        fetch(HostUrl(Host::NwsWesternRegion) + QStringLiteral("/mesowest/getobextXml.php?sid=") +
              id + QStringLiteral("&num=1"));
    const QString end = QStringLiteral("</ob>");
    const qsizetype at = document.indexOf(end);
    return at < 0 ? QString() : document.left(at + end.size());
}

QString clsNwsStation::GetNwsMetar(const QString &id) const
{
    const QString document = fetch(HostUrl(Host::NwsApi) + QStringLiteral("/stations/") + id +
                                   QStringLiteral("/observations/current"));
    return between(document, QStringLiteral("\"rawMessage\": \""), QStringLiteral("\""));
}

QString clsNwsStation::GetMesowestMetar(const QString &id) const
{
    const QString document =
        fetch(HostUrl(Host::MesoWestApi) + QStringLiteral("/v2/stations/timeseries?stid=") + id +
              QStringLiteral("&recent=11520&obtimezone=local&complete=1&hfmetars=1&token=") +
              MesoWestToken());
    const QString list =
        between(document, QStringLiteral("\"metar_set_1\":["), QStringLiteral("],"));
    if (list.isEmpty()) return {};
    QString report = list.section(QLatin1Char(','), -1);
    return report.remove(QLatin1Char('"')).replace(QStringLiteral("\\/"), QStringLiteral("/"));
}

QString clsNwsStation::GetNoaaMetar(const QString &id) const
{
    const QString document =
        fetch(HostUrl(Host::NoaaMetar) + QStringLiteral("/data/observations/metar/stations/") + id +
              QStringLiteral(".TXT"));
    const QStringList lines = document.split(QLatin1Char('\n'));
    return lines.size() < 2 ? QString() : lines.at(1).trimmed();
}

QString clsNwsStation::GetMetar(const QString &id) const
{
    const QString document =
        fetch(HostUrl(Host::NwsWesternRegion) + QStringLiteral("/zoa/getobext.php?wfo=&sid=") + id +
              QStringLiteral("&num=1&raw=1"));
    const QString prefix = QStringLiteral("METAR ") + id + QLatin1Char(' ');
    const QString lessThan = QStringLiteral("<");
    for (const QString &start :
         {QLatin1Char('>') + prefix, QLatin1Char('>') + id + QLatin1Char(' ')}) {
        const QString body = between(document, start, lessThan).trimmed();
        if (body.isEmpty()) continue;
        const QString report = prefix + body;
        if (clsMetar::IsValidMetar(report)) return report;
    }
    return {};
}

QList<clsWxStation> clsNwsStation::GetWeatherStations(const QString &latitude,
                                                      const QString &longitude) const
{
    const QString document = fetch(HostUrl(Host::NwsApi) + QStringLiteral("/points/") + latitude +
                                   QLatin1Char(',') + longitude + QStringLiteral("/stations"));
    return StationsOf(document, [](const QString &, const clsWxStation &) { return true; });
}

QList<clsWxStation>
clsNwsStation::GetWeatherStationsNearPoint(const QString &latitude, const QString &longitude,
                                           const QString &top, const QString &left,
                                           const QString &bottom, const QString &right) const
{
    const QString document =
        fetch(HostUrl(Host::NwsApi) + QStringLiteral("/points/") + latitude +
                  QStringLiteral("%2C") + longitude + QStringLiteral("/stations"),
              kNearPointSeconds);
    if (!document.contains(QStringLiteral("\"coordinates\":"))) return {};
    const QString zoneMark = HostUrl(Host::NwsApi) + QStringLiteral("/zones/forecast/");
    return StationsOf(document, [&](const QString &piece, const clsWxStation &station) {
        return !between(piece, zoneMark, QStringLiteral("\"")).isEmpty() &&
               IsInsideBounds(top, left, bottom, right, station.latitude(), station.longitude());
    });
}

QList<clsWxStation> clsNwsStation::StationsOf(const QString &document, const StationFilter &keep)
{
    QList<clsWxStation> stations;
    for (const QString &piece : stationPieces(document)) {
        if (stations.size() == kMostStations) break;
        clsWxStation station = stationOfPiece(piece);
        // Longitude first, as GeoJSON has it.
        const QString position =
            between(piece, QStringLiteral("\"coordinates\": ["), QStringLiteral("]"));
        station.setLongitude(CleanCoordinate(position.section(QLatin1Char(','), 0, 0)));
        station.setLatitude(CleanCoordinate(position.section(QLatin1Char(','), 1, 1)));
        if (keep(piece, station)) stations.append(station);
    }
    return stations;
}

QString clsNwsStation::CleanCoordinate(const QString &text)
{
    QString clean = text;
    return clean.remove(QLatin1Char('\n')).trimmed();
}

QString ReadJsonQuantity(const QString &document, const QString &key, const QString &wantedUnit)
{
    const QString piece =
        between(document, QLatin1Char('"') + key + QStringLiteral("\":"), QStringLiteral("}"));
    const QString valueMark = QStringLiteral("\"value\": ");
    const qsizetype valueAt = piece.indexOf(valueMark);
    if (valueAt < 0) return {};
    const QString value =
        piece.mid(valueAt + valueMark.size()).section(QLatin1Char(','), 0, 0).trimmed();
    // "unit:degC" and "wmoUnit:degC" both name degC.
    const QString unitMark = QStringLiteral("unit:");
    const qsizetype unitAt = piece.indexOf(unitMark, 0, Qt::CaseInsensitive);
    const QString unit = unitAt < 0
                             ? QString()
                             : piece.mid(unitAt + unitMark.size()).section(QLatin1Char('"'), 0, 0);
    return convertQuantity(value, unit, wantedUnit);
}

QString GetNwsIconAddress(const QString &condition)
{
    const QString time = IsDaytime() ? QStringLiteral("day") : QStringLiteral("night");
    return HostUrl(Host::NwsApi) + QStringLiteral("/icons/land/") + time + QLatin1Char('/') +
           iconName(condition) + QStringLiteral("?size=medium");
}

QString UpdateNwsConditions()
{
    const QString code = process().CityCode;
    if (!code.startsWith(QLatin1Char('K'))) return {};
    const QString report = latestReport(code);
    clsMetar metar;
    QString arguments;
    if (!report.isEmpty() && metar.ParseMetarData(report)) {
        const SettingsBatch batch;
        RememberConditions();
        SaveCache(kCurrentSection, QStringLiteral("downloaded"), generalDateText(localNow()));
        // A report without its time group is broken: nothing of it is written.
        if (const std::optional<QDateTime> observed = observationTime(metar))
            arguments = writeReport(metar, *observed);
    }
    if (arguments.isEmpty())
        Log(QStringLiteral("No usable report for %1 (UpdateNwsConditions)").arg(code));
    CountLiveReading(!arguments.isEmpty());
    return arguments;
}

} // namespace Tarnby
