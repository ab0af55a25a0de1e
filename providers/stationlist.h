#pragma once
// The saved stations: <ProfilePath>/CityCode.cmb, one station a line, lines ended by
// CR LF. A line is
//
//   <name> + 100 blanks + <code>***<zip code>***<latitude>***<longitude>***<type>
//
// The blanks hide the data behind the name where the line stands in a drop-down list.
// A line with four fields has no type. A line without the run of blanks, or with fewer
// fields, is skipped by every reader but stays in the file. There is no escape: a code
// or other field holding "***" is misread.
//
// The file is always replaced whole, so a crash leaves the old list or the new one.
// An unreadable file reads as an empty one; nothing here throws.

#include "providers/station.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

namespace Tarnby
{

// One station as the selection keys and the station list hold it.
struct StationEntry {
    QString City; // the display name
    QString Code;
    QString ZipCode;
    QString Latitude;
    QString Longitude;
    QString StationType;
    // True when the line carried all five fields; a four-field line has no type.
    bool complete = true;

    // The line for CityCode.cmb.
    QString toLine() const;
    // The entry of a line; nothing for a malformed one.
    static std::optional<StationEntry> parse(const QString &line);

    bool operator==(const StationEntry &other) const = default;
};

// The most records LoadSavedStations gives.
inline constexpr int kMaxSavedStations = 501;

QString StationFilePath();
// The non-empty lines of CityCode.cmb, in the file's order, malformed ones included.
QStringList ReadStationLines();

// Adds an entry line at the end of the list. False when the identical line (compared
// exactly) is already there, when the entry is empty, or when the file cannot be written.
bool SaveWeatherStation(const QString &entry);
// The saved stations as records, at most kMaxSavedStations, skipping lines that are
// malformed or lack the type. The name "City, State (Neighborhood)" is split into its
// parts; a station whose zip code reads "0" gets Country instead of State.
QList<clsWxStation> LoadSavedStations();
// Replaces every occurrence of a text in CityCode.cmb. True when anything was replaced
// and the file was written.
bool ReplaceInStationFile(const QString &oldText, const QString &newText);

} // namespace Tarnby
