#include "template/graphs.h"

#include "derive/comfort.h"
#include "derive/dateformat.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/units.h"
#include "template/cachereads.h"
#include "template/formatters.h"
#include "template/stringbuilder.h"

#include <QList>

#include <algorithm>
#include <array>

namespace Tarnby
{

namespace
{

const QString kHourly = QStringLiteral("Hourly");

// One hour of the span, read once before the rows are drawn.
struct Hour {
    QString label;         // "7 PM"
    QString shown;         // the temperature in the user's unit
    QString whole;         // the same as a whole number
    QString colour;        // by the temperature in °F
    QString shade;         // the colour's lighter border
    double fahrenheit = 0; // 0 when missing
    int chance = 0;        // of precipitation, 0 when missing
    int hourOfDay = -1;
    QDate date;
    QString weekday; // "Monday"
};

// The hours of a span with the span's lowest and highest whole temperature.
struct Hours {
    QList<Hour> hours;
    double lowest = 0;
    double highest = 0;
};

int numberOr(const QString &text, int fallback)
{
    if (!isNumeric(text)) return fallback;
    return roundToInt16(readNumber(text).value_or(fallback)).value_or(fallback);
}

QString rowValue(const char *key, int row)
{
    return CacheValue(kHourly, QLatin1StringView(key) + QString::number(row));
}

QString weekdayOf(const QDate &date, const QString &fallback)
{
    return date.isValid() ? formatDateTime(wallClock(date), QStringLiteral("dddd"), dateLocale())
                          : fallback;
}

Hours readHours(const HourSpan &span)
{
    Hours read;
    read.lowest = PeriodMin(span, QStringLiteral("temperature"));
    read.highest = PeriodMax(span, QStringLiteral("temperature"));
    QString lastDateText, lastWeekday;
    QDate lastDate;
    for (int row = span.firstHour; row <= span.lastHour; ++row) {
        Hour hour;
        const QString hourText = rowValue("hour", row);
        hour.label = TimeText(hourText, false, true, false, true);
        hour.hourOfDay = HourOfDay(hourText);
        const QString temperature = rowValue("temperature", row);
        hour.shown = ToCelsius(temperature);
        hour.whole = RoundedOrSame(hour.shown);
        hour.colour = TemperatureColour(temperature);
        hour.shade = ShadeColour(hour.colour, 0.2);
        hour.fahrenheit = isNumeric(temperature) ? readNumber(temperature).value_or(0) : 0;
        hour.chance = numberOr(rowValue("prob-of-precip", row), 0);
        const QString dateText = rowValue("date", row);
        if (dateText != lastDateText || row == span.firstHour) {
            // Hours come a day at a time: read each date once.
            const std::optional<QDateTime> date = readDate(dateText);
            lastDate = date ? date->date() : QDate();
            lastWeekday = weekdayOf(lastDate, rowValue("day", row));
            lastDateText = dateText;
        }
        hour.date = lastDate;
        hour.weekday = lastWeekday;
        read.hours.append(hour);
    }
    return read;
}

// The hours of a span, read once an expansion: the graphs of a skin draw the same hours.
const Hours &hoursOf(const HourSpan &span)
{
    struct Kept {
        quint64 expansion = 0;
        int first = 0;
        int last = -1;
        Hours hours;
    };
    thread_local Kept kept;
    const quint64 expansion = ExpansionCache::current();
    if (expansion == 0 || kept.expansion != expansion || kept.first != span.firstHour ||
        kept.last != span.lastHour)
        kept = Kept{expansion, span.firstHour, span.lastHour, readHours(span)};
    return kept.hours;
}

// Bar heights in pixels between the lowest and the highest temperature. A span without a
// range would divide by zero: that bar keeps the height of the one before.
QList<int> barHeights(const Hours &read, int drawHeight)
{
    QList<int> heights;
    int height = 0;
    for (const Hour &hour : read.hours) {
        if (read.highest != read.lowest)
            height = roundToInt16((hour.fahrenheit - read.lowest) / (read.highest - read.lowest) *
                                  drawHeight)
                         .value_or(height);
        heights.append(height);
    }
    return heights;
}

struct ChanceShade {
    const char16_t *background;
    const char16_t *text; // empty: the default colour
};

ChanceShade chanceShade(int chance)
{
    if (chance < 16) return {u"#f1f1f1", u""};
    if (chance < 29) return {u"#79e279", u""};
    if (chance < 69) return {u"#029202", u"#FFF"};
    return {u"#006400", u"#FFF"};
}

QString textColourCss(const ChanceShade &shade)
{
    return *shade.text ? QStringLiteral(" color:%1;").arg(QStringView(shade.text)) : QString();
}

// What a graph is drawn with, fixed for all its rows.
struct Frame {
    QString width;    // of a column, in percent
    QString fontSize; // pixels
    QString background;
    int drawHeight;
    bool daily; // weekday in the tooltips, marks at day boundaries, a label per day
    bool showLabels;
};

Frame frameFor(const HourSpan &span, const GraphStyle &style, bool daily)
{
    Frame frame;
    const int columns = std::max(1, span.size());
    frame.width = QString::number(roundToInt16(100.0 / columns).value_or(0));
    frame.fontSize = QString::number(numberOr(style.fontSize, 11));
    frame.background = style.background;
    frame.drawHeight = roundToInt16(numberOr(style.height, 40) / 2.0).value_or(20);
    frame.daily = daily;
    frame.showLabels = style.showLabels;
    return frame;
}

// The TITLE of a bar: the hour (under its weekday in the daily graph) and the temperature.
void appendTooltip(cStringBuilder &out, const Hour &hour, const Frame &frame)
{
    if (frame.daily)
        out.Append(u"<STRONG>", hour.weekday, u"</STRONG><BR><STRONG STYLE='color:#888;'>");
    else
        out.Append(u"<STRONG>");
    out.Append(hour.label, u"</STRONG><BR>", hour.shown, u"&deg;");
}

void barRow(cStringBuilder &out, const QList<Hour> &hours, const QList<int> &heights,
            const Frame &frame)
{
    out.Append(u"<TR>");
    for (qsizetype i = 0; i < hours.size(); ++i) {
        const Hour &hour = hours[i];
        out.Append(u"<TD STYLE='vertical-align:bottom; width:", frame.width, u"%;'>");
        if (i % 2 == 1)
            out.Append(u"<DIV STYLE=\"font-size:", frame.fontSize,
                       u"px; white-space: nowrap; text-align:center;\">", hour.whole,
                       u"&deg;</DIV>");
        else
            out.Append(u"<DIV><IMG STYLE='height:0px; width:0px;'></DIV>");
        out.Append(u"<DIV STYLE=\"height:", QString::number(heights[i]), u"px; background-color:",
                   hour.colour, u"; border-left:1px solid ", hour.shade, u";\" TITLE=\"");
        appendTooltip(out, hour, frame);
        out.Append(u"\"><IMG STYLE=\"height:0px; width:0px;\"></DIV></TD>");
    }
    out.Append(u"</TR>");
}

// The base under every bar, so that all bars stand on one line.
void baseRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    const QString height = QString::number(frame.drawHeight);
    out.Append(u"<TR>");
    for (const Hour &hour : hours) {
        out.Append(u"<TD STYLE='width:", frame.width, u"%;'><DIV STYLE='height:", height,
                   u"px; border-left:1px solid ", hour.shade, u"; background-color:", hour.colour,
                   u";' TITLE='");
        appendTooltip(out, hour, frame);
        out.Append(u"'><IMG STYLE='height:0px; width:0px;'></DIV></TD>");
    }
    out.Append(u"</TR>");
}

void chanceRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    const QString height = frame.daily ? QStringLiteral("16") : QStringLiteral("20");
    out.Append(u"<TR>");
    for (qsizetype i = 0; i < hours.size(); ++i) {
        const Hour &hour = hours[i];
        const ChanceShade shade = chanceShade(hour.chance);
        const QString chance = QString::number(hour.chance);
        out.Append(u"<TD STYLE='width:", frame.width, u"%;'><DIV STYLE='height:", height,
                   u"px; padding:3px 2px; background-color:", shade.background,
                   u"; border-top:1px solid #A5A5A5;", textColourCss(shade), u" font-size:",
                   frame.fontSize, u"px; text-align:center;' TITLE='<STRONG>", hour.label,
                   u"</STRONG><BR>", chance, u"% chance of precipitation'>");
        out.Append(i % 2 == 1 ? QStringView(chance) : QStringView(u"&nbsp;"), u"</DIV></TD>");
    }
    out.Append(u"</TR>");
}

bool startsDay(const QList<Hour> &hours, qsizetype i)
{
    return i > 0 && hours[i].date != hours[i - 1].date;
}

void tickRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    for (qsizetype i = 0; i < hours.size(); ++i) {
        out.Append(u"<TD STYLE='padding:0px; border-top:1px solid #A5A5A5; background-color:",
                   frame.background, u";'>");
        if (frame.daily && startsDay(hours, i)) {
            out.Append(u"<DIV STYLE='border-left:solid 1px #757575; height:10px;'></DIV>");
        } else {
            const bool six = hours[i].hourOfDay >= 0 && hours[i].hourOfDay % 6 == 0;
            out.Append(u"<DIV STYLE='height:", six ? u"4" : u"2",
                       u"px; border-left:1px solid #A5A5A5;'></DIV>");
        }
        out.Append(u"</TD>");
    }
    out.Append(u"</TR>");
}

void appendLabelCell(cStringBuilder &out, const QString &width, const QString &fontSize,
                     QStringView text, int span = 1)
{
    out.Append(u"<TD", span > 1 ? QStringLiteral(" COLSPAN='%1'").arg(span) : QString(),
               u" STYLE=\"width:", width, u"%; white-space:nowrap; font-size:", fontSize,
               u"px; color:#868686; font-weight:bold; text-align:center; padding-top:2px;\">", text,
               u"</TD>");
}

void hourLabelRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    for (const Hour &hour : hours) {
        const bool six = hour.hourOfDay >= 0 && hour.hourOfDay % 6 == 0;
        appendLabelCell(out, frame.width, frame.fontSize,
                        six ? QStringView(hour.label) : QStringView(u"&nbsp;"));
    }
    out.Append(u"</TR>");
}

void dayLabelRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    const int width = numberOr(frame.width, 0);
    for (qsizetype i = 0; i < hours.size();) {
        qsizetype end = i + 1;
        while (end < hours.size() && !startsDay(hours, end))
            ++end;
        const int span = int(end - i);
        appendLabelCell(out, QString::number(width * span), frame.fontSize, hours[i].weekday, span);
        i = end;
    }
    out.Append(u"</TR>");
}

QString barGraph(const HourSpan &span, const GraphStyle &style, bool daily)
{
    const Frame frame = frameFor(span, style, daily);
    const Hours &read = hoursOf(span);
    const QList<Hour> &hours = read.hours;
    cStringBuilder out;
    out.Append(
        u"<TABLE STYLE='width:100%; border-collapse:collapse; border-spacing:0; padding:0px;'>");
    barRow(out, hours, barHeights(read, frame.drawHeight), frame);
    baseRow(out, hours, frame);
    if (frame.showLabels) chanceRow(out, hours, frame);
    tickRow(out, hours, frame);
    if (daily)
        dayLabelRow(out, hours, frame);
    else
        hourLabelRow(out, hours, frame);
    out.Append(u"</TABLE>");
    return out.take();
}

constexpr int kPopDays = 11;

} // namespace

QString GraphHourly(const HourSpan &span, const GraphStyle &style)
{
    return barGraph(span, style, false);
}

QString GraphDaily(const HourSpan &span, const GraphStyle &style)
{
    return barGraph(span, style, true);
}

QString TableHourlyPop(const HourSpan &span, const GraphStyle &style)
{
    const Frame frame = frameFor(span, style, true);
    const QList<Hour> &hours = hoursOf(span).hours;
    // Days in the order met, each with the hour of its 24 columns that has data.
    std::array<std::array<const Hour *, 24>, kPopDays> grid{};
    std::array<QString, kPopDays> weekdays;
    int days = 0;
    for (qsizetype i = 0; i < hours.size(); ++i) {
        if (i == 0 || startsDay(hours, i)) ++days;
        if (days > kPopDays) break;
        weekdays[days - 1] = hours[i].weekday;
        if (hours[i].hourOfDay >= 0) grid[days - 1][hours[i].hourOfDay] = &hours[i];
    }
    cStringBuilder out;
    out.Append(u"<TABLE ID='PopHeaderTable' STYLE='width:100%; border-collapse:collapse; "
               u"border-spacing:0;'>"
               u"<TR><TD STYLE='width:79px;'>&nbsp;</TD>");
    for (int column = 0; column < 24; ++column) {
        const QString label = column % 3 == 0 ? FormatTime(QStringLiteral("%1:00").arg(column),
                                                           false, true, false, true)
                                              : QStringLiteral("&nbsp;");
        out.Append(u"<TD STYLE='font-size:", frame.fontSize,
                   u"px; color:#868686; text-align:center;'>", label, u"</TD>");
    }
    out.Append(u"</TR></TABLE><DIV ID='PopBodyTable' STYLE='padding:0px 2px 50px 2px; "
               u"background-color:#FFF;'>"
               u"<TABLE STYLE='width:100%; border-collapse:collapse; border-spacing:0;'>");
    for (int day = 0; day < std::min(days, kPopDays); ++day) {
        out.Append(u"<TR><TD STYLE='white-space:nowrap; border:solid 2px FFF; border-top:0px; "
                   u"border-left:0px; text-align:right; padding:8px 4px; width:41px;'>",
                   weekdays[day], u"</TD>");
        for (const Hour *hour : grid[day]) {
            if (!hour) {
                out.Append(
                    u"<TD STYLE='background-color:#f8f8f8; border:solid 2px #FFF;'>&nbsp;</TD>");
                continue;
            }
            const ChanceShade shade = chanceShade(hour->chance);
            out.Append(u"<TD STYLE='background-color:", shade.background,
                       u"; border:solid 2px #FFF;", textColourCss(shade), u"' TITLE='<STRONG>",
                       hour->label, u"</STRONG><BR>", QString::number(hour->chance),
                       u"% chance of precipitation'>&nbsp;</TD>");
        }
        out.Append(u"</TR>");
    }
    out.Append(u"</TABLE></DIV>");
    return out.take();
}

QString ShadeColour(const QString &colour, double factor)
{
    QString hex = colour.startsWith(u'#') ? colour.mid(1) : colour;
    if (hex.size() == 3) hex = QString(hex[0]) + hex[0] + hex[1] + hex[1] + hex[2] + hex[2];
    if (hex.size() != 6) return colour;
    QString out = QStringLiteral("#");
    for (int channel = 0; channel < 3; ++channel) {
        bool ok = false;
        const int value = hex.mid(channel * 2, 2).toInt(&ok, 16);
        if (!ok) return colour;
        const int lighter =
            std::clamp<int>(roundToInt16(value * factor + value).value_or(255), 0, 255);
        out += QStringLiteral("%1").arg(lighter, 2, 16, QLatin1Char('0')).toUpper();
    }
    return out;
}

} // namespace Tarnby
