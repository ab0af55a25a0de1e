#include "core/timestamp.h"

#include "core/clock.h"

#include <QLocale>

namespace Tarnby
{

QString TimeStamp(const QDateTime &time)
{
    return time.toLocalTime().toString(Qt::ISODate);
}

QString NowStamp()
{
    return TimeStamp(clock().now());
}

QString TodayStamp()
{
    return clock().now().date().toString(Qt::ISODate);
}

QDateTime ReadTimeStamp(const QString &text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty()) return {};
    QDateTime time = QDateTime::fromString(trimmed, Qt::ISODateWithMs);
    if (time.isValid()) return time;
    const QLocale locale = QLocale::system();
    for (QLocale::FormatType format : {QLocale::ShortFormat, QLocale::LongFormat}) {
        time = locale.toDateTime(trimmed, format);
        if (time.isValid()) return time;
    }
    const QDate date = QDate::fromString(trimmed, Qt::ISODate);
    return date.isValid() ? date.startOfDay() : QDateTime();
}

std::optional<qint64> StampAgeSeconds(const QString &text, const QDateTime &now)
{
    const QDateTime stamp = ReadTimeStamp(text);
    if (!stamp.isValid()) return std::nullopt;
    return stamp.secsTo(now);
}

bool StampIsFresh(const QString &text, qint64 maxAgeSeconds, const QDateTime &now)
{
    const std::optional<qint64> age = StampAgeSeconds(text, now);
    return age && *age <= maxAgeSeconds;
}

} // namespace Tarnby
