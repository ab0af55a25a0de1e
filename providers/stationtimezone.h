#pragma once
// The station's own time zone: its name, its offset from UTC and the moment of its next
// change, asked of the vendor service (or, for a station of the NWS, read from the
// station's document and the time zone database) and kept until that change.

#include <QDateTime>
#include <QString>

#include <optional>

namespace Tarnby
{

struct StationTimeZone {
    QString name; // "America/Chicago"
    int offsetSeconds = 0;
    QDateTime changesAt; // UTC; invalid when no change is known
};

// The vendor's answer: <status>OK</status>, <zoneName>, <offset> in seconds east of UTC
// and <zoneEnd>, the Unix time of the next change (0 or missing: none known).
std::optional<StationTimeZone> ReadTimeZoneDocument(const QString &document);

// The zone of a time zone database name at a moment: nullopt for an unknown name.
std::optional<StationTimeZone> TimeZoneFromDatabase(const QString &name, const QDateTime &utc);

// Asks the vendor service for the zone of a point; zone.name, when set, is sent as the
// zone the program knows. True when an answer was read into zone.
bool GetTimeZone(const QString &latitude, const QString &longitude, StationTimeZone &zone);

// The run's time-zone step for the current station: the stored zone while it holds,
// else a new answer, stored as TimeZoneName, TimeZoneOffset and TimeZoneOffsetExpires in
// the branch Cache; timezone-offset of Current in hours. False when no zone is known.
bool UpdateStationTimeZone();

} // namespace Tarnby
