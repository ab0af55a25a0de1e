#pragma once
// Process-wide values that start-up fills and the whole program reads instead of the
// settings store. Anything that changes the selected station updates CityCode,
// StationType, Latitude and Longitude together.

#include <QDateTime>
#include <QString>

namespace Tarnby
{

struct ProcessValues {
    bool UseINI = false;
    QString Username;
    QString ProfilePath;   // the user's data: Skins, Cache, Magnets, Temp, maps, database
    QString ProgramFolder; // the read-only install folder (skins, pages, maps as shipped)
    QString ConfigFolder;  // where settings.sqlite and <Username>.ini live

    QString CityCode = QStringLiteral("na");
    QString StationType;
    QString Latitude;
    QString Longitude;

    int WindowsMajor = 10;        // kept for the URL rules that test it; always 10 here
    bool VendorPlainHttp = false; // vendor URLs are rewritten to plain HTTP
    QString DbPath;
    QString DbBackupPath;

    QString ProxyServer, ProxyPort, ProxyUser, ProxyPassword;

    QString UnitTemp = QStringLiteral("F");
    QString UnitWind = QStringLiteral("mph");
    QString UnitBar = QStringLiteral("inches");
    QString UnitPre = QStringLiteral("inches");
    QString UnitVis = QStringLiteral("miles");

    QString DecimalSymbol = QStringLiteral(".");
    QString GroupSymbol = QStringLiteral(",");
    bool NonUsNumberFormat = false;

    bool LogEnabled = false;
    QDateTime LogStartedAt;

    bool RoundWind = false;
    bool RememberMapSize = true;
    bool ShowFeels = false;
    bool UpdateWhenConnected = false;
    QString TooltipStyle;
    QString LeftSingleClickAction, LeftDoubleClickAction;
    QString GuiCloseMode = QStringLiteral("Minimize");
    bool InterfaceShown = false;
    bool StartedOk = false;

    // Raised while a live reader writes Current; renderers keep away from the branch.
    bool ProcessingConditions = false;
    // Raised while a forecast reader rewrites Hourly, Daily or UV.
    bool ProcessingForecasts = false;
    // Live readings that failed in a row, and when the last one failed: ten of them
    // silence the realtime fetch for an hour.
    int RealtimeErrorCount = 0;
    QDateTime RealtimeLastError;

    // Service settings in force (vendor settings document; defaults at start).
    QString PulseUrl;
    QString IntlDailyForecastSource = QStringLiteral("wb");
    QString WuSource = QStringLiteral("wu");
    QString NwsSource = QStringLiteral("nws");
    QString MapSource;
    QString WuKey, GoogleGeocodeKey, GoogleMapKey;
    bool SettingsLoaded = false;
    QDateTime SettingsLastAttempt; // when the service settings were last asked for
};

// The one instance. Tests may assign a fresh ProcessValues{} to reset it.
ProcessValues &process();

} // namespace Tarnby
