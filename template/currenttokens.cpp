#include "template/currenttokens.h"

#include "core/processvalues.h"
#include "derive/comfort.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "derive/sunmoon.h"
#include "derive/units.h"
#include "providers/station.h"
#include "template/cachereads.h"
#include "template/formatters.h"
#include "template/graphs.h"
#include "template/passtools.h"

#include <initializer_list>

namespace Tarnby
{

namespace
{

const QString kCurrent = QStringLiteral("Current");

using Suffixes = QList<const char *>;

// The suffixes of the temperature stems, in the order they are tried.
const Suffixes kAllSuffixes{"",
                            "ROUND",
                            "DEGREE",
                            "DEGREE ROUND",
                            "DEGREE TENTHS",
                            "PLAIN",
                            "PLAIN SINGLE",
                            "PLAIN ROUND",
                            "PLAIN ROUND SINGLE",
                            "RETURN",
                            "RETURN ROUND",
                            "PARENS",
                            "PARENS ROUND",
                            "PLAIN NOT CONVERTED",
                            "PLAIN NOT CONVERTED ROUND"};
const Suffixes kTempHighLowSuffixes = kHighLowSuffixes + Suffixes{"DEGREE TENTHS"};
const Suffixes kFeelsSuffixes{"",      "DEGREE",      "DEGREE ROUND",        "DEGREE TENTHS",
                              "PLAIN", "PLAIN ROUND", "PLAIN NOT CONVERTED", "RETURN",
                              "PARENS"};
const Suffixes kRateSuffixes{"", "DEGREE", "PLAIN"};
const Suffixes kHumidexSuffixes{"DEGREE", "DEGREE ROUND"};
// [WET BULB TEMP] is the bare form: "TEMP" is no dress word.
const Suffixes kWetBulbSuffixes{"TEMP", "DEGREE", "PLAIN"};

QString rawValue(const QString &key)
{
    return ReadCacheValue(kCurrent, key, false, true);
}

// One temperature token of "Current" by its suffix.
QString currentTemperature(const QString &key, const QString &suffix)
{
    if (!suffix.startsWith(QStringLiteral("PLAIN NOT CONVERTED")))
        return FormatTemperature(kCurrent, key, TemperatureDress::fromSuffix(suffix));
    const QString raw = rawValue(key);
    if (!suffix.endsWith(QStringLiteral("ROUND"))) return raw;
    return RoundedWhole(raw).value_or(QString());
}

// One temperature family of "Current": the stem's tokens and its cached key.
struct TemperatureFamily {
    TokenFamily tokens;
    QString key;
};

const TemperatureFamily kDew{{"DEW", kAllSuffixes}, QStringLiteral("dew-point")};
const TemperatureFamily kDewHigh{{"DEW HIGH", kHighLowSuffixes}, QStringLiteral("dew-point-high")};
const TemperatureFamily kDewLow{{"DEW LOW", kHighLowSuffixes}, QStringLiteral("dew-point-low")};
const TemperatureFamily kFeels{{"FEELS", kFeelsSuffixes}, QStringLiteral("feels-like")};
const TemperatureFamily kHumidex{{"HUMIDEX", kHumidexSuffixes}, QStringLiteral("humidex")};
const TemperatureFamily kTemp{{"TEMP", kAllSuffixes}, QStringLiteral("temp")};
const TemperatureFamily kTempRate{{"TEMP RATE", kRateSuffixes}, QStringLiteral("temp-rate")};
const TemperatureFamily kTempHigh{{"TEMP HIGH", kTempHighLowSuffixes}, QStringLiteral("temp-high")};
const TemperatureFamily kTempLow{{"TEMP LOW", kTempHighLowSuffixes}, QStringLiteral("temp-low")};
const TemperatureFamily kWetBulb{{"WET BULB", kWetBulbSuffixes}, QStringLiteral("wet-bulb")};

void expandTemperatures(TokenText &text, const TemperatureFamily &family)
{
    expandFamily(text, family.tokens,
                 [&](const QString &suffix) { return currentTemperature(family.key, suffix); });
}

void expandBarometer(TokenText &text)
{
    for (const auto &[name, suffix] :
         {std::pair{"BAROMETER", ""}, std::pair{"BAROMETER HIGH", "-high"},
          std::pair{"BAROMETER LOW", "-low"}, std::pair{"BAROMETER RATE", "-rate"}}) {
        const QString stem = QLatin1StringView(name), keySuffix = QLatin1StringView(suffix);
        expandToken(text, tokenName(stem), [&] { return FormatBarometer(true, keySuffix); });
        expandToken(text, tokenName(stem, QStringLiteral("PLAIN")),
                    [&] { return FormatBarometer(false, keySuffix); });
    }
    for (const auto &[name, key] :
         {std::pair{"BAROMETER", "pressure"}, std::pair{"BAROMETER HIGH", "pressure-high"},
          std::pair{"BAROMETER LOW", "pressure-low"}}) {
        expandToken(text, tokenName(QLatin1StringView(name), QStringLiteral("PLAIN NOT CONVERTED")),
                    [&] { return rawValue(QLatin1StringView(key)); });
    }
}

void expandHumidity(TokenText &text)
{
    const QString humidity = QStringLiteral("humidity");
    expandToken(text, QStringLiteral("[HUMIDITY]"),
                [&] { return FormatPercent(kCurrent, humidity, true); });
    expandToken(text, QStringLiteral("[HUMIDITY PLAIN]"),
                [&] { return FormatPercent(kCurrent, humidity, false); });
    expandToken(text, QStringLiteral("[HUMIDITY ROUND]"),
                [&] { return FormatPercent(kCurrent, humidity, true, false, true); });
    for (const char *part : {"HIGH", "LOW", "RATE"}) {
        const QString word = QLatin1StringView(part);
        const QString key = humidity + u'-' + word.toLower();
        expandToken(text, tokenName(QStringLiteral("HUMIDITY"), word),
                    [&] { return FormatPercent(kCurrent, key, true); });
        expandToken(text, tokenName(QStringLiteral("HUMIDITY"), word + QStringLiteral(" PLAIN")),
                    [&] { return FormatPercent(kCurrent, key, false); });
    }
}

void expandHumidex(TokenText &text)
{
    expandTemperatures(text, kHumidex);
    const auto raw = [] { return CacheValue(kCurrent, QStringLiteral("humidex")); };
    expandToken(text, QStringLiteral("[HUMIDEX]"), [&] {
        const QString value = ToCelsius(raw());
        return value.isEmpty() ? QStringLiteral("N/A") : value;
    });
    expandToken(text, QStringLiteral("[HUMIDEX DESC]"), [&] { return HumidexDescription(raw()); });
}

void expandIcon(TokenText &text)
{
    expandToken(text, QStringLiteral("[ICON]"), [] {
        return IconPath(kCurrent, QStringLiteral("image-icon"), false, false, false, false,
                        StationGroup(process().StationType));
    });
    expandToken(text, QStringLiteral("[ICON STYLE]"),
                [] { return IconStyle(IconSetName(false), QString()); });
    expandToken(text, QStringLiteral("[ICON STYLE SLIDER]"),
                [] { return IconStyle(IconSetName(false), QStringLiteral("width:50px;")); });
}

void expandSun(TokenText &text)
{
    for (const bool ampm : {false, true}) {
        for (const auto &[name, key] :
             {std::pair{"DAWN", "dawn-time1"}, std::pair{"DUSK", "dusk-time1"},
              std::pair{"SUNRISE", "sunrise-time1"}, std::pair{"SUNSET", "sunset-time1"}}) {
            const QString token =
                tokenName(QLatin1StringView(name), ampm ? QStringLiteral("AMPM") : QString());
            expandToken(text, token, [&] {
                const QString time = CacheValue(QStringLiteral("Sun"), QLatin1StringView(key));
                return time.isEmpty() ? QStringLiteral("N/A") : TimeText(time, !ampm, false, true);
            });
        }
    }
}

void expandRain(TokenText &text)
{
    for (const char *part : {"MONTH", "RATE", "RATE MAX", "TODAY", "YEAR"}) {
        const QString word = QLatin1StringView(part);
        const QString key = QStringLiteral("rain-") + word.toLower().replace(u' ', u'-');
        expandToken(text, tokenName(QStringLiteral("RAIN"), word),
                    [&] { return FormatRain(key, true); });
        expandToken(text, tokenName(QStringLiteral("RAIN"), word + QStringLiteral(" PLAIN")),
                    [&] { return FormatRain(key, false); });
    }
    for (const char *part : {"MONTH", "TODAY", "YEAR"}) {
        const QString word = QLatin1StringView(part);
        expandToken(
            text, tokenName(QStringLiteral("RAIN"), word + QStringLiteral(" PLAIN NOT CONVERTED")),
            [&] { return rawValue(QStringLiteral("rain-") + word.toLower()); });
    }
}

// The raw wind values and the directions of "Current", by token, in the order they are tried.
enum class DirectionShown { Raw, Compass, Degrees, DegreesReversed, DegreesWithSign };
struct WindDirectionToken {
    QString token;
    QString key;
    DirectionShown shown;
};
const WindDirectionToken kWindDirections[] = {
    {QStringLiteral("[WIND PLAIN NOT CONVERTED]"), QStringLiteral("wind-speed"),
     DirectionShown::Raw},
    {QStringLiteral("[WIND DEGREES]"), QStringLiteral("wind-direction"), DirectionShown::Degrees},
    {QStringLiteral("[WIND DEGREES REVERSED]"), QStringLiteral("wind-direction"),
     DirectionShown::DegreesReversed},
    {QStringLiteral("[WIND DEGREES AVG]"), QStringLiteral("wind-direction-avg"),
     DirectionShown::Degrees},
    {QStringLiteral("[WIND DIRECTION]"), QStringLiteral("wind-direction"), DirectionShown::Compass},
    {QStringLiteral("[WIND DIRECTION PLAIN]"), QStringLiteral("wind-direction"),
     DirectionShown::Raw},
    {QStringLiteral("[WIND DIRECTION AVG]"), QStringLiteral("wind-direction-avg"),
     DirectionShown::Raw},
    {QStringLiteral("[WIND GUST DEGREES]"), QStringLiteral("gust-direction"),
     DirectionShown::DegreesWithSign},
    {QStringLiteral("[WIND GUST DEGREES PLAIN]"), QStringLiteral("gust-direction"),
     DirectionShown::Degrees},
    {QStringLiteral("[WIND GUST DIRECTION]"), QStringLiteral("gust-direction"),
     DirectionShown::Compass},
    {QStringLiteral("[WIND GUST DIRECTION PLAIN]"), QStringLiteral("gust-direction"),
     DirectionShown::Raw},
};

QString windDirection(const WindDirectionToken &direction)
{
    switch (direction.shown) {
    case DirectionShown::Raw:
        return rawValue(direction.key);
    case DirectionShown::Compass:
        return FormatCompass(kCurrent, direction.key, false, true, false);
    case DirectionShown::Degrees:
    case DirectionShown::DegreesReversed:
    case DirectionShown::DegreesWithSign:
        break;
    }
    return CompassToDegrees(CacheValue(kCurrent, direction.key),
                            direction.shown == DirectionShown::DegreesReversed,
                            direction.shown == DirectionShown::DegreesWithSign);
}

void expandWind(TokenText &text)
{
    const QString wind = QStringLiteral("WIND");
    for (const char *suffix : {"", "FULL", "PLAIN", "NO DIRECTION", "NO GUST"}) {
        const QString words = QLatin1StringView(suffix);
        expandToken(text, tokenName(wind, words),
                    [&] { return FormatWind(kCurrent, QString(), WindDress::fromSuffix(words)); });
    }
    for (const WindDirectionToken &direction : kWindDirections)
        expandToken(text, direction.token, [&] { return windDirection(direction); });
    for (const char *suffix : {"", "ROUND", "PLAIN"}) {
        const QString words = QLatin1StringView(suffix);
        expandToken(text, tokenName(QStringLiteral("WIND GUST"), words), [&] {
            return FormatWind(kCurrent, QStringLiteral("gust-speed"), WindDress::fromSuffix(words));
        });
    }
    expandToken(text, QStringLiteral("[WIND GUST PLAIN NOT CONVERTED]"),
                [] { return rawValue(QStringLiteral("gust-speed")); });
}

void expandGraphs(TokenText &text)
{
    const GraphStyle style{QStringLiteral("60"), QStringLiteral("#F8F8F6"), QStringLiteral("11"),
                           true};
    gated(text, u"[GRAPH", [&] {
        expandToken(text, QStringLiteral("[GRAPH HOURLY]"),
                    [&] { return GraphHourly(HourSpan::whole(), style); });
        expandToken(text, QStringLiteral("[GRAPH DAILY]"),
                    [&] { return GraphDaily(HourSpan::whole(), style); });
    });
    gated(text, u"[TABLE", [&] {
        expandToken(text, QStringLiteral("[TABLE HOURLY POP]"),
                    [&] { return TableHourlyPop(HourSpan::whole(), style); });
    });
}

} // namespace

void ExpandCurrentTokens(TokenText &text)
{
    gated(text, u"[BAROMETER", [&] { expandBarometer(text); });
    expandToken(text, QStringLiteral("[CONDITION]"), CurrentCondition);
    gated(text, u"[DEW", [&] { expandTemperatures(text, kDew); });
    gated(text, u"[DEW HIGH", [&] { expandTemperatures(text, kDewHigh); });
    gated(text, u"[DEW LOW", [&] { expandTemperatures(text, kDewLow); });
    gated(text, u"[FEELS", [&] { expandTemperatures(text, kFeels); });
    expandGraphs(text);
    gated(text, u"[HUMIDITY", [&] { expandHumidity(text); });
    gated(text, u"[HUMIDEX", [&] { expandHumidex(text); });
    gated(text, u"[ICON", [&] { expandIcon(text); });
    expandToken(text, QStringLiteral("[IS DAYTIME]"),
                [] { return IsDaytime() ? QStringLiteral("True") : QStringLiteral("False"); });
    // [DAWN] and [DUSK] stand behind this gate too, and stay in a template without "[SUN".
    gated(text, u"[SUN", [&] { expandSun(text); });
    gated(text, u"[RAIN", [&] { expandRain(text); });
    gated(text, u"[TEMP", [&] {
        expandTemperatures(text, kTemp);
        expandTemperatures(text, kTempRate);
    });
    gated(text, u"[TEMP HIGH", [&] { expandTemperatures(text, kTempHigh); });
    gated(text, u"[TEMP LOW", [&] { expandTemperatures(text, kTempLow); });
    gated(text, u"[UV", [&] {
        expandToken(text, QStringLiteral("[UV]"), [] { return FormatUv(false); });
        expandToken(text, QStringLiteral("[UV DESCRIPTION]"), [] { return FormatUv(true); });
    });
    gated(text, u"[VISIBILITY", [&] {
        const QString key = QStringLiteral("visibility");
        expandToken(text, QStringLiteral("[VISIBILITY]"),
                    [&] { return FormatVisibility(key, true); });
        expandToken(text, QStringLiteral("[VISIBILITY PLAIN]"),
                    [&] { return FormatVisibility(key, false); });
    });
    gated(text, u"[WIND", [&] { expandWind(text); });
    gated(text, u"[WET BULB", [&] { expandTemperatures(text, kWetBulb); });
}

QString ExpandCurrentTokens(QString text)
{
    return runPass(std::move(text), [](TokenText &working) { ExpandCurrentTokens(working); });
}

} // namespace Tarnby
