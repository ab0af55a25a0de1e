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
    QString label;  // "7 PM"
    QString shown;  // the temperature in the user's unit
    QString whole;  // the same as a whole number
    QString colour; // by the temperature in °F
    QString shade;  // the colour's lighter border
    int chance = 0; // of precipitation, 0 when missing
    int height = 0; // of the bar, in pixels
    int hourOfDay = -1;
    QDate date;
    QString weekday; // "Monday"
};

int numberOr(const QString &text, int fallback)
{
    if (!isNumeric(text)) return fallback;
    return roundToInt16(readNumber(text).value_or(fallback)).value_or(fallback);
}

double numberOrZero(const QString &text)
{
    return isNumeric(text) ? readNumber(text).value_or(0) : 0;
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

QList<Hour> readHours(const HourSpan &span, int drawHeight)
{
    const double lowest = PeriodMin(span, QStringLiteral("temperature"));
    const double highest = PeriodMax(span, QStringLiteral("temperature"));
    QList<Hour> hours;
    int height = 0; // a span without a range keeps the last height
    for (int row = span.firstHour; row <= span.lastHour; ++row) {
        Hour hour;
        const QString hourText = rowValue("hour", row);
        hour.label = FormatTime(hourText, false, true, false, true);
        hour.hourOfDay = HourOfDay(hourText);
        const QString temperature = rowValue("temperature", row);
        hour.shown = ToCelsius(temperature);
        hour.whole = RoundedOrSame(hour.shown);
        hour.colour = TemperatureColour(temperature);
        hour.shade = ShadeColour(hour.colour, 0.2);
        hour.chance = numberOr(rowValue("prob-of-precip", row), 0);
        if (highest != lowest)
            height =
                roundToInt16((numberOrZero(temperature) - lowest) / (highest - lowest) * drawHeight)
                    .value_or(height);
        hour.height = height;
        const std::optional<QDateTime> date = readDate(rowValue("date", row));
        hour.date = date ? date->date() : QDate();
        hour.weekday = weekdayOf(hour.date, rowValue("day", row));
        hours.append(hour);
    }
    return hours;
}

struct ChanceShade {
    const char *background;
    const char *text; // empty: the default colour
};

ChanceShade chanceShade(int chance)
{
    if (chance < 16) return {"#f1f1f1", ""};
    if (chance < 29) return {"#79e279", ""};
    if (chance < 69) return {"#029202", "#FFF"};
    return {"#006400", "#FFF"};
}

QString textColourCss(const ChanceShade &shade)
{
    return *shade.text ? QStringLiteral(" color:") + QLatin1StringView(shade.text) + u';'
                       : QString();
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

QString tooltip(const Hour &hour, const Frame &frame)
{
    const QString head =
        frame.daily ? QStringLiteral("<STRONG>") + hour.weekday +
                          QStringLiteral("</STRONG><BR><STRONG STYLE='color:#888;'>") + hour.label
                    : QStringLiteral("<STRONG>") + hour.label;
    return head + QStringLiteral("</STRONG><BR>") + hour.shown + QStringLiteral("&deg;");
}

void barRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    for (qsizetype i = 0; i < hours.size(); ++i) {
        const Hour &hour = hours[i];
        out.Append(QStringLiteral("<TD STYLE='vertical-align:bottom; width:") + frame.width +
                   QStringLiteral("%;'>"));
        if (i % 2 == 1)
            out.Append(QStringLiteral("<DIV STYLE=\"font-size:") + frame.fontSize +
                       QStringLiteral("px; white-space: nowrap; text-align:center;\">") +
                       hour.whole + QStringLiteral("&deg;</DIV>"));
        else
            out.Append(u"<DIV><IMG STYLE='height:0px; width:0px;'></DIV>");
        out.Append(QStringLiteral("<DIV STYLE=\"height:") + QString::number(hour.height) +
                   QStringLiteral("px; background-color:") + hour.colour +
                   QStringLiteral("; border-left:1px solid ") + hour.shade +
                   QStringLiteral(";\" TITLE=\"") + tooltip(hour, frame) +
                   QStringLiteral("\"><IMG STYLE=\"height:0px; width:0px;\"></DIV></TD>"));
    }
    out.Append(u"</TR>");
}

// The base under every bar, so that all bars stand on one line.
void baseRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    for (const Hour &hour : hours) {
        out.Append(QStringLiteral("<TD STYLE='width:") + frame.width +
                   QStringLiteral("%;'><DIV STYLE='height:") + QString::number(frame.drawHeight) +
                   QStringLiteral("px; border-left:1px solid ") + hour.shade +
                   QStringLiteral("; background-color:") + hour.colour +
                   QStringLiteral(";' TITLE='") + tooltip(hour, frame) +
                   QStringLiteral("'><IMG STYLE='height:0px; width:0px;'></DIV></TD>"));
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
        out.Append(QStringLiteral("<TD STYLE='width:") + frame.width +
                   QStringLiteral("%;'><DIV STYLE='height:") + height +
                   QStringLiteral("px; padding:3px 2px; background-color:") +
                   QLatin1StringView(shade.background) +
                   QStringLiteral("; border-top:1px solid #A5A5A5;") + textColourCss(shade) +
                   QStringLiteral(" font-size:") + frame.fontSize +
                   QStringLiteral("px; text-align:center;' TITLE='<STRONG>") + hour.label +
                   QStringLiteral("</STRONG><BR>") + chance +
                   QStringLiteral("% chance of precipitation'>") +
                   (i % 2 == 1 ? chance : QStringLiteral("&nbsp;")) +
                   QStringLiteral("</DIV></TD>"));
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
        out.Append(QStringLiteral(
                       "<TD STYLE='padding:0px; border-top:1px solid #A5A5A5; background-color:") +
                   frame.background + QStringLiteral(";'>"));
        if (frame.daily && startsDay(hours, i)) {
            out.Append(u"<DIV STYLE='border-left:solid 1px #757575; height:10px;'></DIV>");
        } else {
            const bool six = hours[i].hourOfDay >= 0 && hours[i].hourOfDay % 6 == 0;
            out.Append(QStringLiteral("<DIV STYLE='height:") +
                       (six ? QStringLiteral("4") : QStringLiteral("2")) +
                       QStringLiteral("px; border-left:1px solid #A5A5A5;'></DIV>"));
        }
        out.Append(u"</TD>");
    }
    out.Append(u"</TR>");
}

QString labelCell(const QString &width, const QString &fontSize, const QString &text, int span = 1)
{
    const QString colspan = span > 1 ? QStringLiteral(" COLSPAN='%1'").arg(span) : QString();
    return QStringLiteral("<TD") + colspan + QStringLiteral(" STYLE=\"width:") + width +
           QStringLiteral("%; white-space:nowrap; font-size:") + fontSize +
           QStringLiteral(
               "px; color:#868686; font-weight:bold; text-align:center; padding-top:2px;\">") +
           text + QStringLiteral("</TD>");
}

void hourLabelRow(cStringBuilder &out, const QList<Hour> &hours, const Frame &frame)
{
    out.Append(u"<TR>");
    for (const Hour &hour : hours) {
        const bool six = hour.hourOfDay >= 0 && hour.hourOfDay % 6 == 0;
        out.Append(
            labelCell(frame.width, frame.fontSize, six ? hour.label : QStringLiteral("&nbsp;")));
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
        out.Append(
            labelCell(QString::number(width * span), frame.fontSize, hours[i].weekday, span));
        i = end;
    }
    out.Append(u"</TR>");
}

QString barGraph(const HourSpan &span, const GraphStyle &style, bool daily)
{
    const Frame frame = frameFor(span, style, daily);
    const QList<Hour> hours = readHours(span, frame.drawHeight);
    cStringBuilder out;
    out.Append(
        u"<TABLE STYLE='width:100%; border-collapse:collapse; border-spacing:0; padding:0px;'>");
    barRow(out, hours, frame);
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
    const QList<Hour> hours = readHours(span, frame.drawHeight);
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
        out.Append(QStringLiteral("<TD STYLE='font-size:") + frame.fontSize +
                   QStringLiteral("px; color:#868686; text-align:center;'>") + label +
                   QStringLiteral("</TD>"));
    }
    out.Append(u"</TR></TABLE><DIV ID='PopBodyTable' STYLE='padding:0px 2px 50px 2px; "
               u"background-color:#FFF;'>"
               u"<TABLE STYLE='width:100%; border-collapse:collapse; border-spacing:0;'>");
    for (int day = 0; day < std::min(days, kPopDays); ++day) {
        out.Append(QStringLiteral(
                       "<TR><TD STYLE='white-space:nowrap; border:solid 2px FFF; border-top:0px; "
                       "border-left:0px; text-align:right; padding:8px 4px; width:41px;'>") +
                   weekdays[day] + QStringLiteral("</TD>"));
        for (const Hour *hour : grid[day]) {
            if (!hour) {
                out.Append(
                    u"<TD STYLE='background-color:#f8f8f8; border:solid 2px #FFF;'>&nbsp;</TD>");
                continue;
            }
            const ChanceShade shade = chanceShade(hour->chance);
            out.Append(QStringLiteral("<TD STYLE='background-color:") +
                       QLatin1StringView(shade.background) +
                       QStringLiteral("; border:solid 2px #FFF;") + textColourCss(shade) +
                       QStringLiteral("' TITLE='<STRONG>") + hour->label +
                       QStringLiteral("</STRONG><BR>") + QString::number(hour->chance) +
                       QStringLiteral("% chance of precipitation'>&nbsp;</TD>"));
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
