#pragma once
// The map image of the interface skin: fetched from the skin's own map link by the Map
// slot, or drawn by the map drawer (tbradar) beside the run. Either way it ends as
// map.<extension> in the skin's cache folder of the station.

#include <QDateTime>
#include <QString>

namespace Tarnby
{

inline const QString kMapDrawer = QStringLiteral("tbradar");

struct MapSource {
    QString link;      // the skin's map link; empty: the map drawer draws the map
    QString extension; // of the map file
};

// Skins/Option20<skin>-<code>, "<link>|<name with the extension>" or "<link>". The
// extension is the last three characters of the second part, or of the link when there
// is none; "jpg" when that gives nothing. Logs the value when it is set.
MapSource ReadMapSource(const QString &skin, const QString &code);
MapSource ParseMapSource(const QString &value);

// Skins/Interface, or the stock skin.
QString InterfaceSkin();
// A skin whose name begins with "TextOnly" shows no map.
bool IsTextOnlySkin(const QString &skin);
// <ProfilePath>/Skins/Interface/<skin>/Cache/<code>
QString MapFolder(const QString &skin, const QString &code);

// Skins/MapZoomLevel, "9" when it is empty or not a number.
QString MapZoomLevel();
// The zoom the map drawer takes for a zoom level: 1, 2, 5 to 9 become 1 to 7, and
// anything else 6.
QString MapDrawerZoom(const QString &zoomLevel);
// Skins/MapType: "satellite" for "Satellite", otherwise "radar".
QString MapTypeName();
// Starts the map drawer for the folder; its process id, 0 when it could not start.
qint64 LaunchMapDrawer(const QString &folder, const QString &mapType, const QString &zoom);

// Copies a downloaded map to map.<extension> in the folder, the extension being the
// last three characters of url (or "jpg" without a map link), and stamps
// LastUpdated/Map.
void CopyMapFile(const QString &url, const QString &outputFile, const MapSource &source,
                 const QString &folder);
// The last-write time of a file, invalid when it is missing.
QDateTime FileWriteTime(const QString &path);
// Waits up to ten rounds of PumpedSleep(10) for the drawer to rewrite the map file,
// logging the wait and its outcome; stamps LastUpdated/Map when it did.
bool WaitForMapDrawer(const QString &mapFile, const QDateTime &writtenBefore);
// Deletes every map.* beside the map file but the map file itself.
void DeleteOldMapFiles(const QString &mapFile);

} // namespace Tarnby
