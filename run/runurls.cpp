#include "run/runurls.h"

#include "retrieval/hosts.h"
#include "retrieval/urls.h"

#include <QStringList>

namespace Tarnby
{

namespace
{

constexpr int kCoordinateDecimals = 3;

QString pair(const char *key, const QString &value)
{
    return QLatin1String(key) + QLatin1Char('=') + value;
}

QString address(const QString &base, const char *path, const QStringList &pairs)
{
    return base + QLatin1String(path) + QLatin1Char('?') + pairs.join(QLatin1Char('&'));
}

const QString kVerbose = pair("verbose", QStringLiteral("true"));
const QString kCulture = pair("cultureinfo", QStringLiteral("en-en"));

// Every Pulse request names the place first and the token last.
QString pulseAddress(const RunUrlInput &input, const char *path, const QStringList &middle)
{
    const QString location =
        CutCoordinate(input.latitude) + QLatin1Char(',') + CutCoordinate(input.longitude);
    return address(input.pulseUrl, path,
                   QStringList{pair("location", location),
                               pair("locationtype", QStringLiteral("latitudelongitude")),
                               pair("units", QStringLiteral("english"))} +
                       middle + QStringList{pair("subscription-key", input.token)});
}

QString usAlertsUrl(const RunUrlInput &input)
{
    return address(HostUrl(Host::NwsApi), "/alerts",
                   {pair("active", QStringLiteral("1")),
                    pair("point", input.latitude + QLatin1Char(',') + input.longitude)});
}

QString nwsTextForecastUrl(const RunUrlInput &input)
{
    return address(HostUrl(Host::NwsForecast), "/MapClick.php",
                   {pair("lat", CutCoordinate(input.latitude)),
                    pair("lon", CutCoordinate(input.longitude)),
                    pair("TextType", QStringLiteral("3"))});
}

QString mesoWestTableUrl(const RunUrlInput &input)
{
    return address(HostUrl(Host::MesoWest), "/cgi-bin/droman/meso_table_mesowest.cgi",
                   {pair("stn", input.code), pair("unit", QStringLiteral("0")),
                    pair("month1", QString()), pair("day1", QStringLiteral("0")),
                    pair("year1", QString()), pair("hour1", QStringLiteral("00")),
                    pair("time", QStringLiteral("GMT")), pair("past", QStringLiteral("0"))});
}

} // namespace

QString CutCoordinate(const QString &value)
{
    const qsizetype point = value.indexOf(QLatin1Char('.'));
    return point < 0 ? value : value.left(point + 1 + kCoordinateDecimals);
}

RunUrls BuildRunUrls(const RunUrlInput &input)
{
    RunUrls urls;
    urls[Slot::Detailed] = pulseAddress(input, "/data/forecasts/v1/daily", {kCulture, kVerbose});
    urls[Slot::Hourly] = pulseAddress(
        input, "/getHourly6DayForecast/data/forecasts/v1/hourly",
        {pair("offset", QStringLiteral("0")), pair("metadata", QStringLiteral("true")), kVerbose});
    urls[Slot::UV] = pulseAddress(input, "/getUltraviolet/data/uv/v1", {kVerbose});
    urls[Slot::Alerts] =
        input.international
            ? pulseAddress(input, "/getPublishedAlerts/data/alerts/v1/alerts", {kCulture, kVerbose})
            : usAlertsUrl(input);
    if (!input.international) urls[Slot::NwsDetailed] = nwsTextForecastUrl(input);
    if (input.group == QStringLiteral("CWOP")) urls[Slot::Conditions] = mesoWestTableUrl(input);
    if (input.group == QStringLiteral("WeatherBug"))
        urls[Slot::Links] =
            address(HostUrl(Host::WeatherBug), "/common/jump.aspx", {pair("stat", input.code)});
    for (const SlotInfo &info : slotTable())
        if (!urls[info.slot].isEmpty()) urls[info.slot] = RelayIfOldSystem(urls[info.slot]);
    return urls;
}

} // namespace Tarnby
