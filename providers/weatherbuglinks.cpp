// The Links branch of a WeatherBug station: its forecast pages on the WeatherBug web
// host and the maps of the tray's map menu. The pages take the station from "stat=",
// which the link opener adds to every WeatherBug address.

#include "providers/weatherbug.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "providers/station.h"
#include "retrieval/hosts.h"

namespace Tarnby
{

namespace
{

const QString kLinks = QStringLiteral("Links");

struct NamedLink {
    const char *name;
    QString url;
};

void saveLink(const char *key, const QString &value)
{
    SaveCache(kLinks, QLatin1String(key), value);
}

// Writes <prefix><n> and <prefix>URL<n> for each link, then the count.
void saveNumbered(const QString &prefix, const QList<NamedLink> &links)
{
    for (int n = 1; n <= links.size(); ++n) {
        const NamedLink &link = links.at(n - 1);
        SaveCache(kLinks, prefix + QString::number(n), QLatin1String(link.name));
        SaveCache(kLinks, prefix + QStringLiteral("URL") + QString::number(n), link.url);
    }
    SaveCache(kLinks, prefix + QStringLiteral("Count"), QString::number(links.size()));
}

} // namespace

void BuildMapLinks()
{
    const QString web = HostUrl(Host::WeatherBug);
    // The map page of the station's position; the radar layer covers the US alone.
    const QString map = web + QStringLiteral("/maps/?lat=") + process().Latitude +
                        QStringLiteral("&lon=") + process().Longitude;
    const bool international =
        IsInternational(GetPref(QStringLiteral("CityCode"), QStringLiteral("ZipCode")));
    saveLink("URL-doppler", international ? QString() : map + QStringLiteral("&layer=radar"));
    saveLink("URL-infrared", map + QStringLiteral("&layer=satellite"));
    saveLink("URL-slmap", map + QStringLiteral("&layer=temperature"));
    const QString mapByPosition = web + QStringLiteral("/maps/?lat=[LATITUDE]&lon=[LONGITUDE]");
    QList<NamedLink> maps{
        {"Lightning", HostUrl(Host::LightningMap) + QStringLiteral("/realtime?lang=en")}};
    if (!international)
        maps.append({"Doppler Radar", mapByPosition + QStringLiteral("&layer=radar")});
    maps.append({"Satellite", mapByPosition + QStringLiteral("&layer=satellite")});
    saveNumbered(QStringLiteral("Map"), maps);
    SaveCache(QStringLiteral("LastUpdated"), kLinks, generalDateText(localNow()));
}

void BuildWeatherBugLinks(const QString &, bool, bool)
{
    DelCache(kLinks);
    const QString web = HostUrl(Host::WeatherBug);
    const QString forecast = web + QStringLiteral("/weather-forecast/10-day-weather/");
    const QString now = web + QStringLiteral("/weather-forecast/now/");
    const QString history = web + QStringLiteral("/weather-forecast/history/");
    saveLink("URL-detailfcast", forecast);
    saveLink("URL-localconds", now);

    saveNumbered(QStringLiteral("Forecast"),
                 {{"Daily Forecast", forecast}, {"Current Conditions", now}, {"History", history}});
    BuildMapLinks();
}

} // namespace Tarnby
