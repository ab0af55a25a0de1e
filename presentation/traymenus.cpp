#include "presentation/traymenus.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "providers/stationlist.h"
#include "providers/stationselection.h"

#include <QUrl>

#include <array>
#include <optional>

namespace Tarnby
{

namespace
{

const QString kSwapOld = QStringLiteral("Switch to previous weather station:  Call SwapCityCodes");

// Live maps are pages although their addresses end in no page extension.
constexpr std::array<const char *, 4> kLiveMapSites{"radar.weather.gov", "rainviewer.com",
                                                    "windy.com", "lightningmaps.org"};

QString withPosition(QString url)
{
    url.replace(QStringLiteral("[LATITUDE]"),
                GetPref(QStringLiteral("CityCode"), QStringLiteral("Latitude")));
    url.replace(QStringLiteral("[LONGITUDE]"),
                GetPref(QStringLiteral("CityCode"), QStringLiteral("Longitude")));
    return url;
}

MapMenuItem mapItem(const QString &caption, const QString &url)
{
    MapMenuItem item;
    item.caption = caption;
    item.separator = caption == QLatin1String("-");
    item.url = withPosition(url);
    item.page = IsMapPage(item.url);
    return item;
}

// "category|name|link": only the first two bars split; other lines are skipped.
std::optional<MapMenuItem> favourite(const QString &line)
{
    const qsizetype first = line.indexOf(u'|');
    const qsizetype second = first < 0 ? -1 : line.indexOf(u'|', first + 1);
    if (second < 0) return std::nullopt;
    QString name = line.mid(first + 1, second - first - 1);
    name.remove(u'*');
    return mapItem(name, line.mid(second + 1));
}

bool isWeatherBugSite(const QString &text)
{
    return (text.startsWith(QLatin1String("Visit")) || text.startsWith(QLatin1String("Goto"))) &&
           text.contains(QLatin1String("WeatherBug"));
}

} // namespace

QList<StationMenuItem> LoadStationList()
{
    QStringList lines = ReadStationLines();
    if (lines.isEmpty()) {
        SaveWeatherStation(BuildStationEntry());
        lines = ReadStationLines();
    }
    const QString current = GetPref(QStringLiteral("CityCode"), QStringLiteral("Code"));
    QList<StationMenuItem> items;
    for (const QString &line : lines) {
        const std::optional<StationEntry> entry = StationEntry::parse(line);
        if (!entry) continue;
        items.append({entry->City, line, !current.isEmpty() && entry->Code == current});
    }
    return items;
}

QList<MapMenuItem> BuildMapMenuItems()
{
    QList<MapMenuItem> items;
    const QString links = QStringLiteral("Links");
    const int count = std::min(GetCache(links, QStringLiteral("MapCount")).toInt(), kMaxCacheRows);
    for (int n = 1; n <= count; ++n)
        items.append(mapItem(GetCache(links, QStringLiteral("Map%1").arg(n)),
                             GetCache(links, QStringLiteral("MapURL%1").arg(n))));
    const QString favourites = ReadFile(process().ProfilePath + QStringLiteral("/FavoriteMaps.tb"));
    for (const QString &line : favourites.split(QStringLiteral("\r\n"), Qt::SkipEmptyParts)) {
        if (const std::optional<MapMenuItem> item = favourite(line.trimmed())) items.append(*item);
    }
    return items;
}

bool IsMapPage(const QString &url)
{
    const QUrl parsed(url);
    for (const char *site : kLiveMapSites)
        if (parsed.host().endsWith(QLatin1String(site), Qt::CaseInsensitive)) return true;
    const QString path = parsed.isValid() ? parsed.path() : url;
    const QString last = path.section(u'/', -1);
    static const QString pages = QStringLiteral("|HTM|CFM|ASP|PHP|COM|");
    return last.size() >= 3 && pages.contains(u'|' + last.right(3).toUpper() + u'|');
}

TrayClickAction ClickActionFor(const QString &stored, bool doubleClick)
{
    if (stored == QLatin1String("Open last viewed map")) return TrayClickAction::OpenLastMap;
    if (stored == QLatin1String("Open Tarnby")) return TrayClickAction::OpenTarnby;
    if (stored == QLatin1String("Open Tarnby Options")) return TrayClickAction::OpenOptions;
    if (stored == QLatin1String("Refresh weather information"))
        return TrayClickAction::RefreshWeather;
    if (stored == QLatin1String("Refresh wallpaper")) return TrayClickAction::RefreshWallpaper;
    if (stored == QLatin1String("Switch to previous Active City") ||
        stored == (doubleClick ? kSwapOld : QStringLiteral("Switch to previous weather station")))
        return TrayClickAction::SwapStations;
    if (isWeatherBugSite(stored)) return TrayClickAction::WeatherBugSite;
    if (stored.startsWith(QLatin1String("Visit")) &&
        stored.contains(QLatin1String("Weather Underground")))
        return TrayClickAction::WUndergroundSite;
    if (stored.startsWith(QLatin1String("Visit")) && stored.contains(QLatin1String("Tarnby")))
        return TrayClickAction::VendorSite;
    return TrayClickAction::None;
}

QString StoredClickAction(bool doubleClick)
{
    return doubleClick
               ? GetPref(QStringLiteral("TrayIcon"), QStringLiteral("LeftDoubleClickAction"),
                         QStringLiteral("No Action"))
               : GetPref(QStringLiteral("TrayIcon"), QStringLiteral("LeftSingleClickAction"),
                         QStringLiteral("Open Tarnby"));
}

} // namespace Tarnby
