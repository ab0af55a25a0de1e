// The hourly tables that the daily reader picks its highs, lows and chances from.

#include "providers/forecasts.h"

#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/textcutters.h"

#include <algorithm>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kHourly = u"Hourly"_s;
const QString kNightHours = u"|7 PM|8 PM|9 PM|10 PM|11 PM|12 AM|1 AM|2 AM|3 AM|4 AM|5 AM|"_s;
// The small hours, which belong to the night of the date before.
const QString kSmallHours = u"|1 AM|2 AM|3 AM|4 AM|5 AM|"_s;
constexpr int kFewestHours = 6;
constexpr int kWholeDay = 24;
constexpr int kHalfDay = 12;

// Where the value of an hour goes: the row of its date, and for the small hours the
// night of the row before when that is the date before.
void addHour(HourlyTable &rows, const QString &hour, double value)
{
    HourlyDateRow &row = rows.last();
    row.whole.add(value);
    if (!kNightHours.contains(hour)) {
        row.day.add(value);
    } else if (!kSmallHours.contains(hour)) {
        row.night.add(value);
    } else if (rows.size() > 1 && rows.at(rows.size() - 2).date == row.date.addDays(-1)) {
        rows[rows.size() - 2].night.add(value);
    }
}

// One walk over the Hourly branch; a row is closed when the date changes.
HourlyTable buildTable(const QString &valueKey)
{
    HourlyTable rows;
    const int count = CacheCount(kHourly);
    for (int row = 1; row <= count; ++row) {
        const QString index = QString::number(row);
        const std::optional<QDateTime> date = readDate(GetCache(kHourly, u"date"_s + index));
        if (!date) continue;
        if (rows.isEmpty() || rows.last().date != date->date())
            rows.append(HourlyDateRow{date->date(), {}, {}, {}, 0});
        ++rows.last().hours;
        const std::optional<double> value = NumberInText(GetCache(kHourly, valueKey + index));
        if (value) addHour(rows, u'|' + GetCache(kHourly, u"hour"_s + index) + u'|', *value);
    }
    rows.removeIf([](const HourlyDateRow &row) { return row.hours < kFewestHours; });
    return rows;
}

std::optional<double> column(const HourlyDateRow &row, PickKind kind)
{
    switch (kind) {
    case PickKind::Low:
        return row.whole.lowest;
    case PickKind::LowNight:
        return row.night.lowest;
    case PickKind::High:
        return row.whole.highest;
    case PickKind::HighDay:
        return row.day.highest;
    case PickKind::HighNight:
        return row.night.highest;
    }
    return std::nullopt;
}

// Highs need half a day of hours; lows and chances, which the night decides, a whole day.
bool trustedTemperature(const HourlyDateRow &row, PickKind kind)
{
    const bool high = kind == PickKind::High || kind == PickKind::HighDay;
    return high ? row.hours >= kHalfDay : row.hours == kWholeDay;
}

bool trustedChance(const HourlyDateRow &row, PickKind)
{
    return row.hours == kWholeDay;
}

QString pick(const HourlyTable &table, const QDate &date, const QString &defaultValue,
             PickKind kind, int period, bool (*trusted)(const HourlyDateRow &, PickKind))
{
    const auto row = std::find_if(table.cbegin(), table.cend(),
                                  [&date](const HourlyDateRow &r) { return r.date == date; });
    if (row == table.cend() || (period != 1 && !trusted(*row, kind))) return defaultValue;
    const std::optional<double> value = column(*row, kind);
    return value ? formatNumber(*value, u"") : defaultValue;
}

} // namespace

void HourlyExtremes::add(double value)
{
    lowest = lowest ? std::min(*lowest, value) : value;
    highest = highest ? std::max(*highest, value) : value;
}

HourlyTable BuildHourlyHighLowTable()
{
    return buildTable(u"temperature"_s);
}

HourlyTable BuildHourlyPrecipitationTable()
{
    return buildTable(u"prob-of-precip"_s);
}

QString PickHighLow(const HourlyTable &table, const QDate &date, const QString &defaultValue,
                    PickKind kind, int period)
{
    return pick(table, date, defaultValue, kind, period, trustedTemperature);
}

QString PickPrecipitation(const HourlyTable &table, const QDate &date, const QString &defaultValue,
                          PickKind kind, int period)
{
    return pick(table, date, defaultValue, kind, period, trustedChance);
}

} // namespace Tarnby
