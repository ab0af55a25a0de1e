#pragma once
// What the tray and its menus ask of the rest of the desktop program: the interface
// window, the other windows and the run. The program installs the calls it has; a menu
// item whose call is missing stays disabled, a click action whose call is missing does
// nothing.

#include <QString>

#include <functional>

namespace Tarnby
{

struct TrayHooks {
    // ShowTarnby: brings the interface window up and to the front.
    std::function<void()> showTarnby;
    // Whether the interface window is on screen; opening it stops the flashing.
    std::function<bool()> interfaceShown;
    // A manual retrieval, as the "Update Weather" item asks for it.
    std::function<void()> updateWeather;
    // The forced retrieval after a station change (TimerUpdateWeather).
    std::function<void()> updateAfterStationChange;
    // The options window, on a named page or (empty) the last one shown.
    std::function<void(const QString &page)> openOptions;
    std::function<void()> viewAlerts;
    std::function<void()> refreshWallpaper;
    std::function<void()> createDesktopMagnet;
    std::function<void()> mapManager;
    // A map link: the map browser for a page, the map viewer for an image.
    std::function<void(const QString &url, bool page)> openMap;
    std::function<void()> mapBrowser;
    std::function<void()> localObservations;
    std::function<void()> monthlyObservations;
    std::function<void()> addNewStation;
    // The station's page on its provider's site.
    std::function<void()> stationWebsite;
    std::function<void()> vendorWebsite;
    std::function<void()> helpManual;
    std::function<void()> tarnbyManual;
    // The version check asked for by the user.
    std::function<void()> checkForUpdate;
    std::function<void()> about;
    // Stops a playing sound and its loop.
    std::function<void()> stopSound;
    // ExitTB: the one way out. Without it the application's event loop ends.
    std::function<void()> exitTarnby;
};

} // namespace Tarnby
