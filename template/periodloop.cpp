// The period sequence loop: one row a forecast period, made from the hourly forecast.

#include "template/loops.h"

#include "core/processvalues.h"
#include "derive/comfort.h"
#include "derive/units.h"
#include "template/cachereads.h"
#include "template/formatters.h"
#include "template/graphs.h"
#include "template/loopdriver.h"
#include "template/periods.h"
#include "template/rowtokens.h"

namespace Tarnby
{

namespace
{

const QString kHourly = QStringLiteral("Hourly");
const QString kDash = QStringLiteral("&ndash;");
const QString kLongDash =
    QStringLiteral("&ndash;&ndash;<IMG CLASS='Placeholder' STYLE='width:2px;'>");

const QList<const char *> kTempLowHighSuffixes = kHighLowSuffixes + QList<const char *>{"COLOR"};
// The span's own suffixes around those of a high or low.
const QList<const char *> kTempSpanSuffixes = QList<const char *>{"", "DEGREE", "DEGREE LONGDASH"} +
                                              kHighLowSuffixes.mid(2) +
                                              QList<const char *>{"COLOR 1", "COLOR 2"};

const TokenFamily kTempLow("PERIOD TEMP LOW", kTempLowHighSuffixes);
const TokenFamily kTempHigh("PERIOD TEMP HIGH", kTempLowHighSuffixes);
const TokenFamily kOrderedSpan("PERIOD ORDERED TEMP SPAN", kTempSpanSuffixes);
const TokenFamily kTempSpan("PERIOD TEMP SPAN", kTempSpanSuffixes);
const TokenFamily kFeelsLow("PERIOD FEELS LOW", kHighLowSuffixes);
const TokenFamily kFeelsHigh("PERIOD FEELS HIGH", kHighLowSuffixes);
const TokenFamily kFeelsSpan("PERIOD FEELS SPAN", kHighLowSuffixes);
const TokenFamily kDewSpan("PERIOD DEW SPAN", {"", "DEGREE"});
const TokenFamily kHumidexHigh("PERIOD HUMIDEX HIGH", {"", "DEGREE", "COLOR"});
const TokenFamily kHumidexLow("PERIOD HUMIDEX LOW", {"", "DEGREE", "COLOR"});
const TokenFamily kWind("PERIOD WIND", {"", "PLAIN"});

// What the hours of one period have in common, computed once a row. Numbers are whole,
// as text, in the cache's units.
struct PeriodRecord {
    int id = 0;
    HourSpan span;
    QString tempMax, tempMin, tempOrder;
    QString feelsMax, feelsMin;
    QString dewMax, dewMin;
    QString humidityMax, humidityMin;
    QString popMax, popMin;
    QString humidexMax, humidexMin, humidexMaxWord, humidexMinWord;
    QString windMax, windMin;
    QString icon, condition, name, shortName;
};

PeriodRecord readPeriod(int id)
{
    PeriodRecord p;
    p.id = id;
    p.span = PeriodBounds(id);
    const auto most = [&p](const char *key) {
        return QString::number(PeriodMax(p.span, QLatin1StringView(key)));
    };
    const auto least = [&p](const char *key) {
        return QString::number(PeriodMin(p.span, QLatin1StringView(key)));
    };
    p.tempMax = most("temperature");
    p.tempMin = least("temperature");
    p.tempOrder = PeriodOrder(p.span, QStringLiteral("temperature"));
    p.feelsMax = most("feels-like");
    p.feelsMin = least("feels-like");
    p.dewMax = most("dew-point");
    p.dewMin = least("dew-point");
    p.humidityMax = most("humidity");
    p.humidityMin = least("humidity");
    p.popMax = most("prob-of-precip");
    p.popMin = least("prob-of-precip");
    p.humidexMax = most("humidex");
    p.humidexMin = least("humidex");
    p.humidexMaxWord = HumidexDescription(p.humidexMax);
    p.humidexMinWord = HumidexDescription(p.humidexMin);
    p.windMax = most("wind-speed");
    p.windMin = least("wind-speed");
    p.icon = PeriodMostFrequent(p.span, QStringLiteral("weather-icon"));
    p.condition = PeriodMostFrequent(p.span, QStringLiteral("weather-icon-description"));
    if (p.condition.startsWith(QStringLiteral("Chance")) && p.popMax != u"0")
        p.condition = p.popMax + QStringLiteral("% ") + p.condition;
    p.name = PeriodName(p.span.firstHour, false);
    p.shortName = PeriodName(p.span.firstHour, true);
    return p;
}

// A temperature span in one unit; "COLOR 1" and "COLOR 2" are the colours of its ends.
QString temperatureSpan(const QString &first, const QString &second, const QString &suffix)
{
    if (suffix == u"COLOR 1") return TemperatureColour(first);
    if (suffix == u"COLOR 2") return TemperatureColour(second);
    if (suffix == u"PLAIN NOT CONVERTED")
        return SpanOf(first, second, kDash, [](const QString &v) { return v; });
    TemperatureDress dress = TemperatureDress::fromSuffix(suffix);
    dress.single = true;
    return SpanOf(
        first, second, suffix == u"DEGREE LONGDASH" ? kLongDash : kDash,
        [&dress](const QString &v) { return FormatTemperature(kHourly, v, dress, true); });
}

void expandTemperatures(TokenText &row, const PeriodRecord &p)
{
    gated(row, u"[PERIOD TEMP ", [&] {
        gated(row, u"[PERIOD TEMP LOW", [&] {
            expandFamily(row, kTempLow,
                         [&](const QString &s) { return GivenTemperature(p.tempMin, s); });
        });
        expandFamily(row, kTempHigh,
                     [&](const QString &s) { return GivenTemperature(p.tempMax, s); });
    });
    gated(row, u"[PERIOD ORDERED TEMP SPAN ", [&] {
        const bool falling = p.tempOrder == u"HighToLow";
        expandFamily(row, kOrderedSpan, [&](const QString &s) {
            return falling ? temperatureSpan(p.tempMax, p.tempMin, s)
                           : temperatureSpan(p.tempMin, p.tempMax, s);
        });
    });
    gated(row, u"[PERIOD TEMP ", [&] {
        expandFamily(row, kTempSpan,
                     [&](const QString &s) { return temperatureSpan(p.tempMin, p.tempMax, s); });
    });
    gated(row, u"[PERIOD FEELS ", [&] {
        expandFamily(row, kFeelsLow,
                     [&](const QString &s) { return GivenTemperature(p.feelsMin, s); });
        expandFamily(row, kFeelsHigh,
                     [&](const QString &s) { return GivenTemperature(p.feelsMax, s); });
        expandFamily(row, kFeelsSpan,
                     [&](const QString &s) { return temperatureSpan(p.feelsMin, p.feelsMax, s); });
    });
    gated(row, u"[PERIOD DEW ", [&] {
        expandFamily(row, kDewSpan,
                     [&](const QString &s) { return temperatureSpan(p.dewMin, p.dewMax, s); });
    });
}

void expandHumidex(TokenText &row, const PeriodRecord &p)
{
    // Shown in one unit; "COLOR" is the humidex colour.
    const auto humidex = [](const QString &value, const QString &suffix) {
        if (suffix == u"COLOR") return HumidexColour(value);
        TemperatureDress dress = TemperatureDress::fromSuffix(suffix);
        dress.single = true;
        return FormatTemperature(kHourly, value, dress, true);
    };
    expandFamily(row, kHumidexHigh, [&](const QString &s) { return humidex(p.humidexMax, s); });
    expandFamily(row, kHumidexLow, [&](const QString &s) { return humidex(p.humidexMin, s); });
    expandToken(row, QStringLiteral("[PERIOD HUMIDEX DESC]"), [&] { return p.humidexMaxWord; });
    expandToken(row, QStringLiteral("[PERIOD HUMIDEX HIGH DESC]"),
                [&] { return p.humidexMaxWord; });
    expandToken(row, QStringLiteral("[PERIOD HUMIDEX LOW DESC]"), [&] { return p.humidexMinWord; });
    expandToken(row, QStringLiteral("[PERIOD HUMIDEX SPAN]"), [&] {
        return temperatureSpan(p.humidexMin, p.humidexMax, QStringLiteral("DEGREE"));
    });
    expandToken(row, QStringLiteral("[PERIOD HUMIDEX SPAN DESC]"), [&] {
        return SpanOf(p.humidexMinWord, p.humidexMaxWord, kDash,
                      [](const QString &v) { return v; });
    });
}

void expandChances(TokenText &row, const PeriodRecord &p)
{
    gated(row, u"[PERIOD HUMIDITY", [&] {
        const auto percent = [](const QString &v) { return FormatPercent(kHourly, v, true, true); };
        expandToken(row, QStringLiteral("[PERIOD HUMIDITY HIGH]"),
                    [&] { return percent(p.humidityMax); });
        expandToken(row, QStringLiteral("[PERIOD HUMIDITY LOW]"),
                    [&] { return percent(p.humidityMin); });
        expandToken(row, QStringLiteral("[PERIOD HUMIDITY SPAN]"),
                    [&] { return SpanOf(p.humidityMin, p.humidityMax, kDash, percent); });
    });
    gated(row, u"[PERIOD PRECIPITATION", [&] {
        const auto chance = [](const QString &v) { return FormatChance(kHourly, v, true, true); };
        expandToken(row, QStringLiteral("[PERIOD PRECIPITATION HIGH]"),
                    [&] { return chance(p.popMax); });
        expandToken(row, QStringLiteral("[PERIOD PRECIPITATION HIGH PLAIN]"),
                    [&] { return FormatChance(kHourly, p.popMax, false, true); });
        expandToken(row, QStringLiteral("[PERIOD PRECIPITATION LOW]"),
                    [&] { return chance(p.popMin); });
        expandToken(row, QStringLiteral("[PERIOD PRECIPITATION SPAN]"),
                    [&] { return SpanOf(p.popMin, p.popMax, kDash, chance); });
    });
}

void expandWind(TokenText &row, const PeriodRecord &p)
{
    expandFamily(row, kWind, [&](const QString &suffix) {
        return FormatWind(kHourly, p.windMax, WindDress::fromSuffix(suffix), true);
    });
    // Both forms carry the unit behind the last value.
    const auto span = [&p] {
        const QString &unit = process().UnitWind;
        return SpanOf(WindFromMph(p.windMin, unit), WindFromMph(p.windMax, unit), kDash,
                      [](const QString &v) { return v; }) +
               u' ' + unit;
    };
    expandToken(row, QStringLiteral("[PERIOD WIND SPAN]"), span);
    expandToken(row, QStringLiteral("[PERIOD WIND SPAN PLAIN]"), span);
}

void expandPeriodRow(TokenText &row, const PeriodRecord &p)
{
    expandToken(row, QStringLiteral("[PERIOD ID]"), [&] { return QString::number(p.id); });
    expandToken(row, QStringLiteral("[PERIOD NAME]"), [&] { return p.name; });
    expandToken(row, QStringLiteral("[PERIOD NAME SHORT]"), [&] { return p.shortName; });
    expandToken(row, QStringLiteral("[PERIOD ICON]"), [&] { return IconPathOfCode(p.icon); });
    expandToken(row, QStringLiteral("[PERIOD CONDITION]"), [&] { return p.condition; });
    expandTemperatures(row, p);
    gated(row, u"[PERIOD HUMIDEX", [&] { expandHumidex(row, p); });
    expandChances(row, p);
    gated(row, u"[PERIOD WIND", [&] { expandWind(row, p); });
    expandToken(row, QStringLiteral("[PERIOD GRAPH]"), [&] {
        return GraphHourly(p.span, GraphStyle{QStringLiteral("40"), QStringLiteral("#F8F8F6"),
                                              QStringLiteral("11"), false});
    });
}

bool periodRows(const QString &head, const QStringList &pieces, LoopOutput &out)
{
    const int count = PeriodHeadCount(head);
    const int start = HeadNumber(head, u"START=").value_or(1);
    // The record is computed for every row, whether or not its values are used.
    return SequenceRows(pieces, count, out, [start](TokenText &row, int i) {
        expandPeriodRow(row, readPeriod(i + start - 1));
    });
}

} // namespace

QString ExpandPeriodLoops(QString text, bool forceLoops)
{
    static const LoopKind kind{QStringLiteral("[PERIOD SEQUENCE "),
                               QStringLiteral("[PERIOD SEQUENCE LOOP "),
                               QStringLiteral("[/PERIOD SEQUENCE LOOP]"), 23};
    return ExpandLoopConstructs(std::move(text), forceLoops, kind, periodRows);
}

} // namespace Tarnby
