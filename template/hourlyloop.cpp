// The hourly loop: one row an hour of the hourly forecast.

#include "template/loops.h"

#include "core/weathercache.h"
#include "derive/comfort.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "template/cachereads.h"
#include "template/formatters.h"
#include "template/loopdriver.h"
#include "template/rowtokens.h"

namespace Tarnby
{

namespace
{

const QString kHourly = QStringLiteral("Hourly");

const TokenFamily kDew("HOURLY DEW",
                       {"", "RETURN", "RETURN DEGREE", "RETURN DEGREE ROUND", "PARENS"});
const TokenFamily kFeels("HOURLY FEELS", {"", "PLAIN", "RETURN", "RETURN DEGREE",
                                          "RETURN DEGREE ROUND", "PARENS", "COLOR"});
const TokenFamily kTemp("HOURLY TEMP", {"", "PLAIN", "SINGLE PLAIN", "SINGLE PLAIN WHOLE", "RETURN",
                                        "RETURN DEGREE", "RETURN DEGREE ROUND", "PARENS", "COLOR"});
const TokenFamily kWind("HOURLY WIND", {"FULL", "", "ROUND", "PLAIN", "NO DIRECTION", "NO GUST"});

void expandTemperatures(TokenText &row, const TokenFamily &family, const QString &key)
{
    expandFamily(row, family, [&](const QString &suffix) {
        if (suffix == u"COLOR") return TemperatureColour(CacheValue(kHourly, key));
        return FormatTemperature(kHourly, key, TemperatureDress::fromSuffix(suffix));
    });
}

void expandHourRow(TokenText &row, int hour)
{
    const QString index = QString::number(hour);
    const auto key = [&index](const char *name) { return QLatin1StringView(name) + index; };
    const auto value = [&key](const char *name) {
        return ReadCacheValue(kHourly, key(name), false, true);
    };
    expandToken(row, QStringLiteral("[HOURLY CLOUD COVER LIKELY]"),
                [&] { return CloudLevel(kHourly, key("sky-cover")); });
    expandToken(row, QStringLiteral("[HOURLY CONDITION]"),
                [&] { return value("weather-icon-description"); });
    expandToken(row, QStringLiteral("[HOURLY DAY]"), [&] { return value("day"); });
    expandToken(row, QStringLiteral("[HOURLY DAY ABBREV]"),
                [&] { return AbbreviateDayName(value("day"), false, false); });
    expandToken(row, QStringLiteral("[HOURLY DN]"),
                [&] { return DayOrNight(CacheValue(kHourly, key("weather-icon"))); });
    gated(row, u"[HOURLY DEW", [&] { expandTemperatures(row, kDew, key("dew-point")); });
    gated(row, u"[HOURLY FEELS", [&] { expandTemperatures(row, kFeels, key("feels-like")); });
    expandToken(row, QStringLiteral("[HOURLY HOUR]"),
                [&] { return TimeText(value("hour"), false, true, false, true); });
    expandToken(row, QStringLiteral("[HOURLY HOUR NO MINUTES]"),
                [&] { return TimeText(value("hour"), false, true).remove(QStringLiteral(":00")); });
    expandToken(row, QStringLiteral("[HOURLY HUMIDITY]"),
                [&] { return FormatPercent(kHourly, key("humidity"), true); });
    expandToken(row, QStringLiteral("[HOURLY ICON]"),
                [&] { return IconPathOfCode(CacheValue(kHourly, key("weather-icon"))); });
    expandToken(row, QStringLiteral("[HOURLY PRECIPITATION]"),
                [&] { return FormatChance(kHourly, key("prob-of-precip"), true); });
    expandToken(row, QStringLiteral("[HOURLY PRECIPITATION LIKELY]"),
                [&] { return ChanceLevel(kHourly, key("prob-of-precip")); });
    expandToken(row, QStringLiteral("[HOURLY SKY COVER]"),
                [&] { return FormatChance(kHourly, key("sky-cover"), true); });
    gated(row, u"[HOURLY HUMIDEX", [&] {
        const auto raw = [&] { return CacheValue(kHourly, key("humidex")); };
        expandToken(row, QStringLiteral("[HOURLY HUMIDEX]"), [&] { return value("humidex"); });
        expandToken(row, QStringLiteral("[HOURLY HUMIDEX DEGREE]"), [&] {
            return FormatTemperature(kHourly, key("humidex"),
                                     TemperatureDress::fromSuffix(u"DEGREE"));
        });
        expandToken(row, QStringLiteral("[HOURLY HUMIDEX DESC]"),
                    [&] { return HumidexDescription(raw()); });
        expandToken(row, QStringLiteral("[HOURLY HUMIDEX COLOR]"),
                    [&] { return HumidexColour(raw()); });
    });
    gated(row, u"[HOURLY TEMP", [&] { expandTemperatures(row, kTemp, key("temperature")); });
    gated(row, u"[HOURLY WIND", [&] {
        expandFamily(row, kWind, [&](const QString &suffix) {
            return FormatWind(kHourly, index, WindDress::fromSuffix(suffix));
        });
        expandToken(row, QStringLiteral("[HOURLY WIND DIRECTION]"), [&] {
            return FormatCompass(kHourly, key("wind-direction"), false, true, false);
        });
        expandToken(row, QStringLiteral("[HOURLY WIND DIRECTION PLAIN]"),
                    [&] { return value("wind-direction"); });
    });
}

bool hourRows(const QString &head, const QStringList &pieces, LoopOutput &out)
{
    const int cached = CacheCount(kHourly);
    const int count = std::min(HeadNumber(head, u"COUNT=").value_or(cached), cached);
    const int start = HeadNumber(head, u"START=").value_or(1);
    return SequenceRows(pieces, count, out,
                        [start](TokenText &row, int i) { expandHourRow(row, i + start - 1); });
}

} // namespace

QString ExpandHourlyLoops(QString text, bool forceLoops)
{
    static const LoopKind kind{QStringLiteral("[HOURLY "), QStringLiteral("[HOURLY LOOP "),
                               QStringLiteral("[/HOURLY LOOP]"), 14};
    return ExpandLoopConstructs(std::move(text), forceLoops, kind, hourRows);
}

} // namespace Tarnby
