#include "retrieval/hosts.h"

#include "core/settingsstore.h"

#include <array>

namespace Tarnby
{

namespace
{

struct HostEntry {
    Host host;
    const char *key;
    const char *defaultUrl;
    const char *loopbackPrefix;
};

constexpr std::array<HostEntry, 25> kHosts{{
    {Host::Vendor, "Vendor", "https://service.tarnby.invalid", "/vendor"},
    {Host::VendorPlain, "VendorPlain", "http://www.tarnby.invalid", "/vendor-plain"},
    {Host::VendorDownloads, "VendorDownloads", "https://downloads.tarnby.invalid",
     "/vendor-downloads"},
    {Host::PulseApi, "PulseApi", "https://earthnetworks.azure-api.net", "/pulse"},
    {Host::EarthNetworksApi, "EarthNetworksApi", "https://earthnetworks.azure-api.net", "/en-api"},
    {Host::NwsApi, "NwsApi", "https://api.weather.gov", "/nws-api"},
    {Host::NwsForecast, "NwsForecast", "https://forecast.weather.gov", "/nws-forecast"},
    {Host::NwsWesternRegion, "NwsWesternRegion", "https://www.wrh.noaa.gov", "/nws-wrh"},
    {Host::MesoWestApi, "MesoWestApi", "https://api.mesowest.net", "/mesowest-api"},
    {Host::MesoWest, "MesoWest", "https://mesowest.utah.edu", "/mesowest"},
    {Host::NoaaMetar, "NoaaMetar", "https://tgftp.nws.noaa.gov", "/noaa-metar"},
    {Host::Cwop, "Cwop", "http://www.wxqa.com", "/cwop"},
    {Host::CwopStationInfo, "CwopStationInfo", "https://weather.gladstonefamily.net", "/cwop-info"},
    {Host::WeatherCompanyApi, "WeatherCompanyApi", "https://api.weather.com", "/twc-api"},
    {Host::Wunderground, "Wunderground", "https://www.wunderground.com", "/wu-web"},
    {Host::WeatherBug, "WeatherBug", "https://www.weatherbug.com", "/wb-web"},
    {Host::WeatherBugPhotos, "WeatherBugPhotos", "https://www.weatherbug.com", "/wb-photos"},
    {Host::WeatherBugCommunity, "WeatherBugCommunity", "https://www.weatherbug.com",
     "/wb-community"},
    {Host::Google, "Google", "https://maps.googleapis.com", "/google"},
    {Host::IpLocation, "IpLocation", "https://tools.keycdn.com", "/ip-location"},
    {Host::LightningMap, "LightningMap", "https://www.lightningmaps.org", "/lightning"},
    {Host::Instagram, "Instagram", "https://www.instagram.com", "/instagram"},
    {Host::RadarImages, "RadarImages", "https://radar.weather.gov", "/radar-images"},
    {Host::SatelliteImages, "SatelliteImages", "https://cdn.star.nesdis.noaa.gov",
     "/satellite-images"},
    {Host::NwsWeb, "NwsWeb", "https://www.weather.gov", "/nws-web"},
}};

constexpr bool inEnumOrder()
{
    for (std::size_t i = 0; i < kHosts.size(); ++i)
        if (static_cast<std::size_t>(kHosts[i].host) != i) return false;
    return true;
}
static_assert(inEnumOrder(), "kHosts must list the hosts in the order of enum Host");

const HostEntry &entry(Host host)
{
    return kHosts[static_cast<std::size_t>(host)];
}

QString withoutTrailingSlash(QString url)
{
    while (url.endsWith(QLatin1Char('/')))
        url.chop(1);
    return url;
}

const QString kHostsSection = QStringLiteral("Hosts");

} // namespace

QString HostKey(Host host)
{
    return QString::fromLatin1(entry(host).key);
}

QString HostDefault(Host host)
{
    return QString::fromLatin1(entry(host).defaultUrl);
}

QString HostUrl(Host host)
{
    const QString loopback = GetPref(kHostsSection, QStringLiteral("Override")).trimmed();
    if (!loopback.isEmpty())
        return withoutTrailingSlash(loopback) + QString::fromLatin1(entry(host).loopbackPrefix);
    return withoutTrailingSlash(GetPref(kHostsSection, HostKey(host), HostDefault(host)).trimmed());
}

QString UserAgent()
{
    const QString contact = GetPref(QStringLiteral("General"), QStringLiteral("Contact"),
                                    QStringLiteral("Tarnby desktop weather station"));
    return QStringLiteral("Tarnby/%1 (%2)").arg(QStringLiteral(TARNBY_VERSION), contact);
}

QString MapImageUrl(const QString &mapType)
{
    return mapType == QStringLiteral("satellite")
               ? HostUrl(Host::SatelliteImages) +
                     QStringLiteral("/GOES16/ABI/CONUS/GEOCOLOR/1250x750.jpg")
               : HostUrl(Host::RadarImages) + QStringLiteral("/ridge/standard/CONUS_0.gif");
}

} // namespace Tarnby
