#pragma once
// Time stamps kept as text in the settings and the Weather cache (LastUpdated/Weather,
// Alerts, UV, Map, General/CheckDate ...). They are written as local date and time in
// ISO form and read back leniently, so that a stamp in the locale's short form counts
// as a date too. A text that is no date is never fresh.

#include <QDateTime>
#include <QString>

#include <optional>

namespace Tarnby
{

// "yyyy-MM-ddTHH:mm:ss", local time.
QString TimeStamp(const QDateTime &time);
// TimeStamp of clock().now().
QString NowStamp();
// "yyyy-MM-dd" of clock().now().
QString TodayStamp();

// The date and time a stamp names; invalid when the text is no date.
QDateTime ReadTimeStamp(const QString &text);
// Seconds from the stamp to now; nothing when the text is no date.
std::optional<qint64> StampAgeSeconds(const QString &text, const QDateTime &now);
// True when the text is a date and at most maxAgeSeconds older than now.
bool StampIsFresh(const QString &text, qint64 maxAgeSeconds, const QDateTime &now);

} // namespace Tarnby
