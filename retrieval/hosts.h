#pragma once
// Every remote host the program talks to, each a setting with a built-in default.
//
// Section "Hosts", one key per host; a stored value replaces the default (scheme and
// host, optionally a path, no trailing "/"). One switch, "Hosts"/"Override" =
// "http://127.0.0.1:PORT", points every host at one loopback service, each under its
// own path prefix, so tests and the offline demo reach everything through one server:
//
//   key                 default                                   prefix under Override
//   Vendor              https://service.tarnby.invalid            /vendor
//   VendorPlain         http://www.tarnby.invalid                 /vendor-plain
//   VendorDownloads     https://downloads.tarnby.invalid          /vendor-downloads
//   PulseApi            https://earthnetworks.azure-api.net       /pulse
//   EarthNetworksApi    https://earthnetworks.azure-api.net       /en-api
//   NwsApi              https://api.weather.gov                   /nws-api
//   NwsForecast         https://forecast.weather.gov              /nws-forecast
//   NwsWesternRegion    https://www.wrh.noaa.gov                  /nws-wrh
//   MesoWestApi         https://api.mesowest.net                  /mesowest-api
//   MesoWest            https://mesowest.utah.edu                 /mesowest
//   NoaaMetar           https://tgftp.nws.noaa.gov                /noaa-metar
//   Cwop                http://www.wxqa.com                       /cwop
//   CwopStationInfo     https://weather.gladstonefamily.net       /cwop-info
//   WeatherCompanyApi   https://api.weather.com                   /twc-api
//   Wunderground        https://www.wunderground.com              /wu-web
//   WeatherBug          https://www.weatherbug.com                /wb-web
//   WeatherBugPhotos    https://www.weatherbug.com                /wb-photos
//   WeatherBugCommunity https://www.weatherbug.com                /wb-community
//   Google              https://maps.googleapis.com               /google
//   IpLocation          https://tools.keycdn.com                  /ip-location
//   LightningMap        https://www.lightningmaps.org             /lightning
//   Instagram           https://www.instagram.com                 /instagram
//   NwsWeb              https://www.weather.gov                   /nws-web
//
// The vendor service has no public host: its defaults lie under the reserved name
// ".invalid", which never resolves, so every vendor request fails at once and the
// program degrades as it does for any failed fetch.

#include <QString>

namespace Tarnby
{

enum class Host {
    Vendor,              // settings document, token, probe, relay, remote log, geocoding relay
    VendorPlain,         // the same service over plain HTTP (VendorPlainHttp)
    VendorDownloads,     // the installer bucket
    PulseApi,            // built-in Earth Networks Pulse API root
    EarthNetworksApi,    // the Earth Networks API gateway
    NwsApi,              // stations, points, observations, alerts, icons
    NwsForecast,         // MapClick pages and text forecasts
    NwsWesternRegion,    // getobext pages
    MesoWestApi,         // timeseries
    MesoWest,            // the station table page
    NoaaMetar,           // METAR station files
    Cwop,                // the per-state station pages
    CwopStationInfo,     // a station's page, opened in the browser
    WeatherCompanyApi,   // observations for Weather Underground stations
    Wunderground,        // web pages, opened in the browser
    WeatherBug,          // web host, jump page
    WeatherBugPhotos,    // opened in the browser
    WeatherBugCommunity, // opened in the browser
    Google,              // geocoding and maps
    IpLocation,          // the IP geolocation page
    LightningMap,        // opened in the map viewer
    Instagram,           // opened in the browser
    RadarImages,         // the radar picture the map drawer fetches
    SatelliteImages,     // the satellite picture the map drawer fetches
    NwsWeb,              // the NWS public web site, opened in the browser
};

// The base URL of a host in force: the loopback prefix when "Hosts"/"Override" is set,
// else the stored value, else the default. Never ends with "/".
QString HostUrl(Host host);
// The settings key and the built-in default of a host.
QString HostKey(Host host);
QString HostDefault(Host host);

// "Tarnby/<version> (<contact>)": the contact is "General"/"Contact". Some services
// (the NWS API) refuse anonymous clients; children receive it in TARNBY_USER_AGENT.
QString UserAgent();

// The picture the map drawer (tbradar) fetches for a map type, "radar" or "satellite".
QString MapImageUrl(const QString &mapType);

} // namespace Tarnby
