#include "providers/stationlist.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"

namespace Tarnby
{

namespace
{

const QString &nameSeparator()
{
    static const QString blanks(100, QLatin1Char(' '));
    return blanks;
}

const QString kFieldSeparator = QStringLiteral("***");
const QString kLineEnd = QStringLiteral("\r\n");

bool writeStationFile(const QString &text, const QString &routine)
{
    if (WriteFileAtomic(StationFilePath(), text)) return true;
    Log(QStringLiteral("Cannot write ") + StationFilePath() + QStringLiteral(" (StationList.") +
        routine + QLatin1Char(')'));
    return false;
}

// "City, State (Neighborhood)": the part behind ", " is a country for a foreign station.
void splitDisplayName(const QString &name, clsWxStation &station)
{
    const QStringList parts = name.split(QStringLiteral(" ("));
    const QString place = parts.first();
    const qsizetype comma = place.indexOf(QStringLiteral(", "));
    station.setCity(place.left(comma));
    if (comma >= 0) {
        const QString region = place.mid(comma + 2);
        if (station.ZipCode() == QLatin1String("0"))
            station.setCountry(region);
        else
            station.setState(region);
    }
    if (parts.size() > 1) station.setNeighborhood(QString(parts.at(1)).remove(QLatin1Char(')')));
}

clsWxStation stationFromEntry(const StationEntry &entry)
{
    clsWxStation station;
    station.setName(entry.City);
    station.setId(entry.Code);
    station.setZipCode(entry.ZipCode);
    station.setLatitude(entry.Latitude);
    station.setLongitude(entry.Longitude);
    station.setStationType(entry.StationType);
    splitDisplayName(entry.City, station);
    return station;
}

} // namespace

QString StationEntry::toLine() const
{
    return City + nameSeparator() +
           QStringList{Code, ZipCode, Latitude, Longitude, StationType}.join(kFieldSeparator);
}

std::optional<StationEntry> StationEntry::parse(const QString &line)
{
    const qsizetype cut = line.indexOf(nameSeparator());
    if (cut < 0) return std::nullopt;
    const QStringList fields = line.mid(cut + nameSeparator().size()).split(kFieldSeparator);
    if (fields.size() < 4) return std::nullopt;
    StationEntry entry{line.left(cut), fields.at(0),    fields.at(1),      fields.at(2),
                       fields.at(3),   fields.value(4), fields.size() >= 5};
    return entry;
}

QString StationFilePath()
{
    return process().ProfilePath + QStringLiteral("/CityCode.cmb");
}

QStringList ReadStationLines()
{
    QStringList lines = ReadFile(StationFilePath()).split(kLineEnd);
    lines.removeAll(QString());
    return lines;
}

bool SaveWeatherStation(const QString &entry)
{
    QStringList lines = ReadStationLines();
    if (entry.isEmpty() || lines.contains(entry)) return false;
    lines.append(entry);
    return writeStationFile(lines.join(kLineEnd) + kLineEnd, QStringLiteral("SaveWeatherStation"));
}

QList<clsWxStation> LoadSavedStations()
{
    QList<clsWxStation> stations;
    const QStringList lines = ReadStationLines();
    for (const QString &line : lines) {
        const std::optional<StationEntry> entry = StationEntry::parse(line);
        if (!entry || !entry->complete) continue;
        stations.append(stationFromEntry(*entry));
        if (stations.size() == kMaxSavedStations) break;
    }
    return stations;
}

bool ReplaceInStationFile(const QString &oldText, const QString &newText)
{
    QString text = ReadFile(StationFilePath());
    if (oldText.isEmpty() || !text.contains(oldText)) return false;
    text.replace(oldText, newText);
    return writeStationFile(text, QStringLiteral("ReplaceInStationFile"));
}

} // namespace Tarnby
