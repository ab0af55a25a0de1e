#include "run/mapfile.h"

#include "core/log.h"
#include "core/paths.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/timestamp.h"
#include "core/weathercache.h"
#include "derive/numberformat.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace Tarnby
{

namespace
{

constexpr int kMapWaitRounds = 10;
constexpr int kMapWaitTicks = 10;
const QString kSkins = QStringLiteral("Skins");
const QString kDefaultExtension = QStringLiteral("jpg");

QString lastThree(const QString &text)
{
    return text.right(3);
}

void stampMap()
{
    SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("Map"), NowStamp());
}

} // namespace

MapSource ParseMapSource(const QString &value)
{
    if (value.isEmpty()) return {QString(), kDefaultExtension};
    const QStringList parts = value.split(QLatin1Char('|'));
    // The second part only names the kind of image behind a link without an extension.
    const QString extension = lastThree(parts.size() > 1 ? parts.at(1) : value);
    return {parts.first(), extension.isEmpty() ? kDefaultExtension : extension};
}

MapSource ReadMapSource(const QString &skin, const QString &code)
{
    const QString value =
        GetPref(kSkins, QStringLiteral("Option20") + skin + QLatin1Char('-') + code);
    if (!value.isEmpty()) Log(QStringLiteral("Map Image Link = ") + value);
    return ParseMapSource(value);
}

QString InterfaceSkin()
{
    return GetPref(kSkins, QStringLiteral("Interface"), QStringLiteral("Splendid4"));
}

bool IsTextOnlySkin(const QString &skin)
{
    return skin.startsWith(QStringLiteral("TextOnly"));
}

QString MapFolder(const QString &skin, const QString &code)
{
    return process().ProfilePath + QStringLiteral("/Skins/Interface/") + skin +
           QStringLiteral("/Cache/") + code;
}

QString MapZoomLevel()
{
    const QString level = GetPref(kSkins, QStringLiteral("MapZoomLevel"));
    return isNumeric(level) ? level : QStringLiteral("9");
}

QString MapDrawerZoom(const QString &zoomLevel)
{
    static const QStringList levels{QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("5"),
                                    QStringLiteral("6"), QStringLiteral("7"), QStringLiteral("8"),
                                    QStringLiteral("9")};
    const qsizetype index = levels.indexOf(zoomLevel);
    return index < 0 ? QStringLiteral("6") : QString::number(index + 1);
}

QString MapTypeName()
{
    return GetPref(kSkins, QStringLiteral("MapType")) == QStringLiteral("Satellite")
               ? QStringLiteral("satellite")
               : QStringLiteral("radar");
}

qint64 LaunchMapDrawer(const QString &folder, const QString &mapType, const QString &zoom)
{
    QDir().mkpath(folder);
    return LaunchProcess(HelperProgram(kMapDrawer), {folder, QStringLiteral("MapSource5"),
                                                     QStringLiteral("MapType") + mapType, zoom});
}

void CopyMapFile(const QString &url, const QString &outputFile, const MapSource &source,
                 const QString &folder)
{
    const QString extension = source.link.isEmpty() ? kDefaultExtension : lastThree(url);
    const QString target = folder + QStringLiteral("/map.") + extension;
    QDir().mkpath(folder);
    QFile::remove(target);
    if (!QFile::copy(outputFile, target)) {
        Log(QStringLiteral("Cannot copy the map to %1 (CopyMapFile)").arg(target));
        return;
    }
    stampMap();
}

QDateTime FileWriteTime(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() ? info.lastModified() : QDateTime();
}

bool WaitForMapDrawer(const QString &mapFile, const QDateTime &writtenBefore)
{
    Log(QStringLiteral("Waiting for map... (modRetrieveWeather)"));
    for (int round = 0; round < kMapWaitRounds; ++round) {
        PumpedSleep(kMapWaitTicks);
        if (FileWriteTime(mapFile) != writtenBefore) {
            stampMap();
            Log(QStringLiteral("Map downloaded (modRetrieveWeather)"));
            return true;
        }
    }
    Log(QStringLiteral("Map timed out (modRetrieveWeather)"));
    return false;
}

void DeleteOldMapFiles(const QString &mapFile)
{
    const QFileInfo current(mapFile);
    QDir folder = current.dir();
    const QStringList names = folder.entryList({QStringLiteral("map.*")}, QDir::Files);
    for (const QString &name : names)
        if (name != current.fileName()) folder.remove(name);
}

} // namespace Tarnby
