#include "presentation/links.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "providers/stationselection.h"
#include "retrieval/hosts.h"
#include "template/misctokens.h"

#include <QDesktopServices>
#include <QHash>

namespace Tarnby
{

namespace
{

const QString kWeatherBug = QStringLiteral("WeatherBug");
const QString kWUnderground = QStringLiteral("WUnderground");

LinkOpener &linkOpener()
{
    static LinkOpener opener;
    return opener;
}

QString link(const QString &key)
{
    return GetCache(QStringLiteral("Links"), key);
}

QString webcams(const QString &query)
{
    return HostUrl(Host::Wunderground) + QStringLiteral("/webcams/index.html?") + query;
}

// The links that are a fixed place on a service's web host.
const QHash<QString, std::pair<Host, QString>> &fixedLinks()
{
    static const QHash<QString, std::pair<Host, QString>> table = [] {
        QHash<QString, std::pair<Host, QString>> rows;
        const auto add = [&rows](std::initializer_list<const char *> names, Host host,
                                 const char *path) {
            for (const char *name : names)
                rows.insert(QString::fromLatin1(name), {host, QString::fromLatin1(path)});
        };
        add({"newsarchives", "topstories", "wunewsrecent"}, Host::Wunderground, "/news");
        add({"wunewsblogs"}, Host::Wunderground, "/blog");
        add({"wuvideostopstories", "livelocalforecast", "nationaloutlook", "communityvideos"},
            Host::Wunderground, "/video/top-stories");
        add({"wuvideosscience"}, Host::Wunderground, "/video/science");
        add({"wuvideostv"}, Host::Wunderground, "/wutv");
        add({"wbvideoscommunity"}, Host::WeatherBugCommunity, "/video");
        add({"wbphotosrecent", "recentphotos"}, Host::WeatherBugPhotos, "/photos/explore/recent");
        add({"wbphotosfeatured", "worldviewphotos"}, Host::WeatherBugPhotos,
            "/photos/explore/featured");
        add({"wuphotos", "wunderphotos"}, Host::Instagram, "/explore/tags/wunderphotos");
        add({"wucamsus", "localcameras", "featuredcameras", "localcameramap", "seasonalcameras",
             "beachcameras", "citycameras", "mountaincameras", "nationalparkcameras",
             "stadiumcameras"},
            Host::Wunderground, "/webcams/index.html?region=us");
        add({"wucamsglobal"}, Host::Wunderground, "/webcams/index.html?range=intl&region=gl");
        return rows;
    }();
    return table;
}

// The webcam regions outside the USA, centred where the service centres them.
QString webcamRegion(const QString &name)
{
    if (name == u"wucamseurope")
        return webcams(QStringLiteral("qlat=48.60385747104044&qlon=11.601562505&qzoom=4"
                                      "&range=intl&region=eu"));
    if (name == u"wucamsaustralia")
        return webcams(QStringLiteral("qlat=-25.12539279935161&qlon=-224.73632812000008&qzoom=4"
                                      "&range=intl&region=au"));
    if (name == u"wucamsasia")
        return webcams(QStringLiteral("qlat=32.87958699883&qlon=96.50390625499996&qzoom=3"
                                      "&range=intl&region=as"));
    return QString();
}

QString historicalWeather()
{
    const QString group = StationGroup();
    if (group == kWeatherBug) return link(QStringLiteral("URL-localconds"));
    if (group != kWUnderground) return QString();
    const QString code = process().CityCode;
    if (process().StationType.contains(QStringLiteral("NWS "))) {
        const QDate today = clock().now().date();
        return HostUrl(Host::Wunderground) +
               QStringLiteral("/history/airport/%1/%2/%3/%4/DailyHistory.html")
                   .arg(code)
                   .arg(today.year())
                   .arg(today.month())
                   .arg(today.day());
    }
    return HostUrl(Host::Wunderground) +
           QStringLiteral("/personal-weather-station/dashboard?ID=%1#history/data").arg(code);
}

QString dailyForecast()
{
    const QString group = StationGroup();
    if (group == kWeatherBug) return link(QStringLiteral("URL-detailfcast"));
    if (group != kWUnderground) return QString();
    const QString forecast = link(QStringLiteral("ForecastURL3"));
    return forecast.isEmpty() ? StationWebPage() : forecast;
}

// The map zoom behind a WeatherBug map link: the user's zoom for a US station, else 2.
QString weatherBugZoom()
{
    const QString zoom = GetPref(QStringLiteral("Skins"), QStringLiteral("MapZoomLevel"));
    bool numeric = false;
    zoom.toInt(&numeric);
    return numeric && !IsInternational() ? zoom : QStringLiteral("2");
}

QString weatherBugMap()
{
    QString address = link(QStringLiteral("URL-doppler"));
    if (!address.isEmpty()) address += QStringLiteral("&map_animate=1");
    if (address.isEmpty()) address = link(QStringLiteral("URL-infrared"));
    if (address.isEmpty()) address = link(QStringLiteral("URL-slmap"));
    if (address.isEmpty()) return address;
    return address + QStringLiteral("&image_type=") + weatherBugZoom();
}

QString radarMap(bool isRadar)
{
    if (isRadar) {
        const QString own =
            GetPref(QStringLiteral("Skins"),
                    QStringLiteral("Option20") + InterfaceSkinName() + u'-' + process().CityCode);
        const QString address = own.section(QLatin1Char('|'), 0, 0);
        if (!address.isEmpty()) return address;
    }
    const QString group = StationGroup();
    if (group == kWeatherBug) return weatherBugMap();
    if (group != kWUnderground) return QString();
    return HostUrl(Host::Wunderground) +
           QStringLiteral("/wundermap/?isPresentationActive=0&renderer=2&Units=english&zoom=9"
                          "&lat=%1&lon=%2&wxstn=0&wxstnmode=tw&radar=1&radaropa=0.7"
                          "&satellite=0&satelliteopa=0.8")
               .arg(process().Latitude, process().Longitude);
}

QString namedAddress(const QString &name, bool isRadar)
{
    if (name == u"weatherbug" || name == u"wxstationhomepage") return StationWebPage();
    if (name == u"historicalweather") return historicalWeather();
    if (name == u"dailyforecast") return dailyForecast();
    if (name == u"radarmap") return radarMap(isRadar);
    if (name == u"wbphotoslocal")
        return HostUrl(Host::WeatherBugPhotos) +
               QStringLiteral("/photos/explore/local?latlon=%1,%2")
                   .arg(process().Latitude, process().Longitude);
    if (const auto fixed = fixedLinks().constFind(name); fixed != fixedLinks().cend())
        return HostUrl(fixed->first) + fixed->second;
    return webcamRegion(name);
}

QString familyFallback()
{
    const QString group = StationGroup();
    if (group == kWeatherBug) {
        const QString local = link(QStringLiteral("URL-localconds"));
        return local.isEmpty() ? HostUrl(Host::WeatherBug) + u'/' : local;
    }
    if (group == kWUnderground) return HostUrl(Host::Wunderground) + u'/';
    return QString();
}

bool onWeatherBugWeb(const QString &address)
{
    const QString lower = address.toLower();
    return lower.contains(QStringLiteral("weatherbug.com")) ||
           lower.startsWith(HostUrl(Host::WeatherBug).toLower());
}

// The WeatherBug web pages show the station the user picked when told its code.
QString withStation(const QString &address, bool isRadar)
{
    if (isRadar || StationGroup() != kWeatherBug || !onWeatherBugWeb(address) ||
        address.contains(QStringLiteral("stat=")))
        return address;
    return address + (address.contains(u'?') ? u'&' : u'?') + QStringLiteral("stat=") +
           process().CityCode;
}

} // namespace

void setLinkOpener(LinkOpener opener)
{
    linkOpener() = std::move(opener);
}

QString LinkAddress(const QString &name, bool isRadar)
{
    QString address = namedAddress(name.toLower(), isRadar);
    if (address.isEmpty()) address = familyFallback();
    return withStation(address, isRadar);
}

void OpenLink(const QString &name, bool isRadar)
{
    const QString address = LinkAddress(name, isRadar);
    if (address.isEmpty()) {
        Log(QStringLiteral("No address for the link %1 (frmIface.OpenLink)").arg(name));
        return;
    }
    OpenAddress(address);
}

void OpenAddress(const QString &address)
{
    const QUrl url(address.trimmed());
    if (address.trimmed().isEmpty() || !url.isValid()) {
        Log(QStringLiteral("Cannot open the address \"%1\" (frmIface.OpenLink)").arg(address));
        return;
    }
    if (linkOpener())
        linkOpener()(url);
    else
        QDesktopServices::openUrl(url);
}

} // namespace Tarnby
