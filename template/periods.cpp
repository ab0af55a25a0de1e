#include "template/periods.h"

#include "core/clock.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "template/cachereads.h"

#include <algorithm>
#include <array>
#include <optional>

namespace Tarnby
{

namespace
{

const QString kHourly = QStringLiteral("Hourly");

struct DayPart {
    const char *start;
    const char *end;
};
// Morning, Afternoon, Evening, Night.
constexpr std::array<DayPart, 4> kParts{
    {{"6 AM", "11 AM"}, {"12 PM", "4 PM"}, {"5 PM", "9 PM"}, {"10 PM", "5 AM"}}};

int partOfHour(int hour)
{
    if (hour >= 6 && hour <= 11) return 0;
    if (hour >= 12 && hour <= 16) return 1;
    if (hour >= 17 && hour <= 21) return 2;
    return 3;
}

// A start in the last two hours of a part moves on to the start of the next part.
bool nearEndOfPart(int hour)
{
    return hour == 10 || hour == 11 || hour == 15 || hour == 16 || hour == 20 || hour == 21 ||
           hour == 4 || hour == 5;
}

QString hourText(int row)
{
    return CacheValue(kHourly, QStringLiteral("hour") + QString::number(row));
}

int wholeValue(const QString &text)
{
    if (!isNumeric(text)) return 0;
    return roundToInt16(readNumber(text).value_or(0)).value_or(0);
}

QString valueAt(const QString &key, int row)
{
    return CacheValue(kHourly, key + QString::number(row));
}

std::optional<QDate> dateOfRow(int row)
{
    const std::optional<QDateTime> date =
        readDate(CacheValue(kHourly, QStringLiteral("date") + QString::number(row)));
    return date ? std::optional<QDate>(date->date()) : std::nullopt;
}

} // namespace

HourSpan HourSpan::whole()
{
    return HourSpan{1, CacheCount(kHourly)};
}

int HourOfDay(const QString &text)
{
    const std::optional<QDateTime> time = readDate(text);
    return time ? time->time().hour() : -1;
}

HourSpan PeriodBounds(int periodIndex)
{
    const QString firstText = hourText(1);
    const int firstHour = HourOfDay(firstText);
    if (firstHour < 0 || periodIndex < 1) return HourSpan{0, 1};
    int part = partOfHour(firstHour);
    QString start = firstText;
    if (nearEndOfPart(firstHour)) {
        part = (part + 1) % 4;
        start = QLatin1StringView(kParts[part].start);
    }
    part = (part + periodIndex - 1) % 4;
    if (periodIndex > 1) start = QLatin1StringView(kParts[part].start);
    const QString end = QLatin1StringView(kParts[part].end);
    // The same hour texts come back a day later, so later periods look from row 20 on.
    HourSpan span{0, 0};
    for (int row = periodIndex >= 5 ? 20 : 1; row <= 48; ++row) {
        const QString hour = hourText(row);
        if (span.firstHour == 0 && hour == start)
            span.firstHour = row;
        else if (span.firstHour != 0 && hour == end)
            span.lastHour = row;
        if (span.firstHour != 0 && span.lastHour != 0) break;
    }
    if (span.lastHour == 0) span.lastHour = 1;
    return span;
}

int PeriodMax(const HourSpan &span, const QString &key)
{
    int most = -999;
    for (int row = span.firstHour; row <= span.lastHour; ++row)
        most = std::max(most, wholeValue(valueAt(key, row)));
    return most;
}

int PeriodMin(const HourSpan &span, const QString &key)
{
    int least = 999;
    for (int row = span.firstHour; row <= span.lastHour; ++row)
        least = std::min(least, wholeValue(valueAt(key, row)));
    return least;
}

QString PeriodOrder(const HourSpan &span, const QString &key)
{
    const QString first = valueAt(key, span.firstHour), last = valueAt(key, span.lastHour);
    const bool falling = isNumeric(first) && isNumeric(last) &&
                         readNumber(first).value_or(0) > readNumber(last).value_or(0);
    return falling ? QStringLiteral("HighToLow") : QStringLiteral("LowToHigh");
}

QString PeriodMostFrequent(const HourSpan &span, const QString &key)
{
    constexpr int kSlots = 8;
    std::array<QString, kSlots> values;
    std::array<int, kSlots> counts{};
    int used = 0;
    for (int row = span.firstHour; row <= span.lastHour; ++row) {
        const QString value = valueAt(key, row);
        const auto found = std::find(values.begin(), values.begin() + used, value);
        if (found != values.begin() + used)
            ++counts[found - values.begin()];
        else if (used < kSlots) {
            values[used] = value;
            counts[used++] = 1;
        }
    }
    int best = 0;
    for (int slot = 1; slot < used; ++slot) {
        if (counts[slot] > counts[best]) best = slot;
    }
    return used ? values[best] : QString();
}

QString PeriodName(int firstHour, bool shortName)
{
    const int hour = HourOfDay(hourText(firstHour));
    if (hour < 0) return {};
    const std::optional<QDate> date = dateOfRow(firstHour);
    const bool tomorrow = date && *date == clock().now().date().addDays(1);
    const QString ahead = tomorrow && !shortName ? QStringLiteral("Tomorrow ") : QString();
    if (hour >= 7 && hour <= 11) return ahead + QStringLiteral("Morning");
    if (hour >= 12 && hour <= 16) return ahead + QStringLiteral("Afternoon");
    if (hour >= 17 && hour <= 21) return ahead + QStringLiteral("Evening");
    if (tomorrow) return shortName ? QStringLiteral("Night") : QStringLiteral("Tomorrow Night");
    return hour >= 1 && hour <= 5 ? QStringLiteral("Early Morning") : QStringLiteral("Tonight");
}

} // namespace Tarnby
