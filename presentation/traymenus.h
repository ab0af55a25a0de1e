#pragma once
// What the tray's menus hold and what a click on the icon means, decided without
// widgets: the station menu from CityCode.cmb, the map menu from the station's Links
// and the user's FavoriteMaps.tb, and the click actions of TrayIcon.

#include <QList>
#include <QString>

namespace Tarnby
{

struct StationMenuItem {
    QString caption; // the display name; may be empty
    QString entry;   // the whole CityCode.cmb line, handed to the station switch
    bool checked = false;
};

// LoadStationList: one item per well-formed line of CityCode.cmb, the current station
// checked. A missing or empty file is first written with the current station's line.
QList<StationMenuItem> LoadStationList();

struct MapMenuItem {
    QString caption;
    QString url;
    bool separator = false;
    bool page = false; // shown in the map browser, not the image viewer
};

// The station's maps (Links: MapCount, Map<n>, MapURL<n> with [LATITUDE] and
// [LONGITUDE] filled in; a caption "-" is a separator), then the favourites of
// FavoriteMaps.tb ("category|name|link" lines).
QList<MapMenuItem> BuildMapMenuItems();
// A link whose last path component ends in HTM, CFM, ASP, PHP or COM, or that points to
// one of the live map sites, is a page; anything else is an image.
bool IsMapPage(const QString &url);

enum class TrayClickAction {
    None,
    OpenLastMap,
    OpenTarnby,
    OpenOptions,
    RefreshWeather,
    RefreshWallpaper,
    SwapStations,
    WeatherBugSite,
    WUndergroundSite,
    VendorSite,
};

// The action a stored text stands for. The double-click handler knows the station swap
// only by its older wording ("...:  Call SwapCityCodes").
TrayClickAction ClickActionFor(const QString &stored, bool doubleClick);
// TrayIcon/LeftSingleClickAction ("Open Tarnby" when empty) and
// TrayIcon/LeftDoubleClickAction ("No Action" when empty).
QString StoredClickAction(bool doubleClick);

} // namespace Tarnby
