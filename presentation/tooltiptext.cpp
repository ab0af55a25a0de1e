#include "presentation/tooltiptext.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "derive/numberformat.h"
#include "derive/sunmoon.h"
#include "providers/stationselection.h"
#include "template/cachereads.h"
#include "template/formatters.h"

#include <QList>

#include <cmath>
#include <optional>
#include <utility>

namespace Tarnby
{

namespace
{

const QString kSection = QStringLiteral("TrayTooltip");
const QString kCurrent = QStringLiteral("Current");
const QString kCrLf = QStringLiteral("\r\n");

bool settingIs(const QString &key, const char *word)
{
    return GetPref(kSection, key) == QLatin1String(word);
}

QString labelled(const TooltipOptions &options, const char *label, const QString &value)
{
    if (value.isEmpty()) return {};
    return options.names ? QLatin1String(label) + QStringLiteral(": ") + value : value;
}

QString temperature(const TooltipOptions &options, const QString &section, const QString &key)
{
    TemperatureDress dress;
    dress.showUnit = options.units;
    dress.round = options.hideTenths;
    dress.whole = options.hideTenths;
    return FormatTemperature(section, key, dress);
}

// The arrow for a change: none for zero or a value that is not a number.
QString rateMark(const TooltipOptions &options, const QString &rateKey)
{
    const QString rate = CacheValue(kCurrent, rateKey);
    if (!isNumeric(rate)) return {};
    const double value = readNumber(rate).value_or(0);
    if (value > 0) return u' ' + options.rising;
    if (value < 0) return u' ' + options.falling;
    return {};
}

QString withRate(const TooltipOptions &options, const QString &value, const QString &rateKey)
{
    return value == QLatin1String("N/A") ? value : value + rateMark(options, rateKey);
}

QString pressure(const TooltipOptions &options)
{
    QString value = FormatBarometer(false, QString());
    if (options.units && value != QLatin1String("N/A")) value += u' ' + process().UnitBar;
    return withRate(options, value, QStringLiteral("pressure-rate"));
}

QString rainToday(const TooltipOptions &options)
{
    QString value = FormatRain(QStringLiteral("rain-today"), options.units);
    const QString rate = CacheValue(kCurrent, QStringLiteral("rain-rate"));
    if (isNumeric(rate) && readNumber(rate).value_or(0) > 0)
        value += QStringLiteral(" (") + FormatRain(QStringLiteral("rain-rate"), options.units) +
                 QStringLiteral("/hr)");
    return value;
}

// The first chance that is a number: the coming hour's, else today's, else tonight's.
QString precipitation(const TooltipOptions &options)
{
    const std::pair<const char *, const char *> places[] = {
        {"Hourly", "prob-of-precip1"}, {"Daily", "pre11"}, {"Daily", "pre21"}};
    for (const auto &[section, key] : places) {
        if (isNumeric(CacheValue(QLatin1String(section), QLatin1String(key))))
            return FormatChance(QLatin1String(section), QLatin1String(key), options.units);
    }
    return QStringLiteral("N/A");
}

std::optional<QDate> observedDate()
{
    const std::optional<QDateTime> observed =
        readDate(CacheValue(kCurrent, QStringLiteral("observed")));
    if (!observed || !observed->date().isValid()) return std::nullopt;
    return observed->date();
}

QString moonPhase()
{
    const std::optional<QDate> date = observedDate();
    return date ? GetMoonPhaseName(*date) : QStringLiteral("N/A");
}

QString moonIllumination()
{
    const std::optional<QDate> date = observedDate();
    const std::optional<float> lit = date ? GetMoonIllumination(*date) : std::nullopt;
    return lit ? QString::number(std::lround(*lit)) + u'%' : QStringLiteral("N/A");
}

QString sunTime(const char *key)
{
    const QString value = CacheValue(QStringLiteral("Sun"), QLatin1String(key));
    return value.isEmpty() ? QStringLiteral("N/A") : TimeText(value, false, false, true);
}

// Hours of light left, or, once the light is over, the hours until it returns.
QString hoursOfLight(const TooltipOptions &options, int kind, const char *untilEnd,
                     const char *untilStart)
{
    const QString left = StationLocalNow(kind);
    if (left != QLatin1String("0:00")) return labelled(options, untilEnd, left);
    return labelled(options, untilStart, StationLocalNow(kind, true));
}

QString plain(const QString &section, const char *key)
{
    return ReadCacheValue(section, QLatin1String(key), false, true);
}

QString iconName()
{
    const QString icon = CacheValue(kCurrent, QStringLiteral("image-icon"));
    if (!icon.isEmpty() && icon != QLatin1String("N/A")) return icon;
    return CacheValue(QStringLiteral("Hourly"), QStringLiteral("weather-icon1"));
}

QString linesOf(const TooltipOptions &options)
{
    QStringList lines;
    for (const QChar letter : TooltipLetters()) {
        const QString line = TooltipLine(letter, options);
        if (!line.isEmpty()) lines.append(line);
    }
    return lines.join(kCrLf);
}

QString row(const QString &line)
{
    const qsizetype colon = line.indexOf(QStringLiteral(": "));
    if (colon < 0)
        return QStringLiteral("<TR><TD CLASS=\"LabelTitle\">") + line +
               QStringLiteral("</TD></TR>");
    return QStringLiteral("<TR><TD><SPAN CLASS=\"LabelTitle\">") + line.left(colon) +
           QStringLiteral(":</SPAN> <SPAN CLASS=\"LabelText\">") + line.mid(colon + 2) +
           QStringLiteral("</SPAN></TD></TR>");
}

QString headingRow(const QString &heading)
{
    const qsizetype open = heading.indexOf(QStringLiteral(" ("));
    const QString name = open < 0 ? heading : heading.left(open);
    QString location = open < 0 ? QString() : heading.mid(open + 2);
    location.remove(u')');
    return QStringLiteral("<TR><TD STYLE=\"padding-bottom:10px;\"><SPAN CLASS=\"WxStation\">") +
           name + QStringLiteral("</SPAN><BR><SPAN CLASS=\"Location\">") + location +
           QStringLiteral("</SPAN></TD></TR>");
}

} // namespace

QString TooltipStyle()
{
    return GetPref(kSection, QStringLiteral("TooltipStyle"));
}

TooltipOptions TooltipOptions::fromSettings(const QString &values)
{
    TooltipOptions options;
    options.names = !settingIs(QStringLiteral("TooltipNames"), "False");
    options.units = settingIs(QStringLiteral("ShowUnits"), "True");
    options.hideTenths = settingIs(QStringLiteral("HideTempTenths"), "True") &&
                         GetPref(QStringLiteral("Conversion"), QStringLiteral("Temp"),
                                 QStringLiteral("F")) == QLatin1String("F");
    options.hideDesc = settingIs(QStringLiteral("HideDesc"), "True");
    options.gusts = values.contains(u'6');
    return options;
}

QString TooltipLine(QChar letter, const TooltipOptions &o)
{
    const QString daily = QStringLiteral("Daily");
    switch (letter.unicode()) {
    case 'A':
        return GetStationDisplayName();
    case 'B':
        return o.hideDesc ? QString() : labelled(o, "Condition", CurrentCondition());
    case 'C':
        return labelled(o, "Temperature",
                        withRate(o, temperature(o, kCurrent, QStringLiteral("temp")),
                                 QStringLiteral("temp-rate")));
    case 'D':
        return labelled(o, "Feels Like", temperature(o, kCurrent, QStringLiteral("feels-like")));
    case 'E':
        return labelled(o, "Dew Point", temperature(o, kCurrent, QStringLiteral("dew-point")));
    case '9':
        return labelled(o, "Humidex", temperature(o, kCurrent, QStringLiteral("humidex")));
    case 'F':
        return labelled(o, "Humidity",
                        withRate(o, FormatPercent(kCurrent, QStringLiteral("humidity"), o.units),
                                 QStringLiteral("humidity-rate")));
    case 'S':
        return labelled(o, "Precipitation", precipitation(o));
    case 'G': {
        WindDress dress;
        dress.showUnit = o.units;
        dress.withDirection = true;
        dress.withGust = o.gusts;
        return labelled(o, "Wind", FormatWind(kCurrent, QString(), dress));
    }
    case 'I':
        return labelled(o, "Pressure", pressure(o));
    case 'U':
        return labelled(o, "Rain Today", rainToday(o));
    case 'T':
        return labelled(o, "Monthly Rain", FormatRain(QStringLiteral("rain-month"), o.units));
    case 'V':
        return labelled(o, "Yearly Rain", FormatRain(QStringLiteral("rain-year"), o.units));
    case 'O':
        return labelled(o, "Forecast High", temperature(o, daily, QStringLiteral("high1")));
    case 'P':
        return labelled(o, "Forecast Low", temperature(o, daily, QStringLiteral("low1")));
    case 'Y':
        return labelled(o, "Actual High", temperature(o, kCurrent, QStringLiteral("temp-high")));
    case 'Z':
        return labelled(o, "Actual Low", temperature(o, kCurrent, QStringLiteral("temp-low")));
    case '7':
        return labelled(o, "Visibility", FormatVisibility(QStringLiteral("visibility"), o.units));
    case '8':
        return labelled(o, "UV Index", FormatUv(true));
    case 'Q':
        return labelled(o, "Moon Phase", moonPhase());
    case 'X':
        return labelled(o, "Moon Illumination", moonIllumination());
    case 'K':
        return labelled(o, "Sunrise", sunTime("sunrise-time1"));
    case '3':
        return labelled(o, "Dawn", sunTime("dawn-time1"));
    case 'L':
        return labelled(o, "Sunset", sunTime("sunset-time1"));
    case '4':
        return labelled(o, "Dusk", sunTime("dusk-time1"));
    case 'R':
        return hoursOfLight(o, 0, "Hours to Sunset", "Hours to Sunrise");
    case '5':
        return hoursOfLight(o, 1, "Hours to Dusk", "Hours to Dawn");
    case 'M':
        return labelled(o, "Last Observed", plain(kCurrent, "observed"));
    case 'N':
        return labelled(o, "Last Downloaded", plain(kCurrent, "downloaded"));
    default:
        return {};
    }
}

bool TooltipIsNight()
{
    return DayOrNight(iconName()) == QLatin1String("N");
}

QString TooltipLetters()
{
    QString letters = GetPref(kSection, QStringLiteral("Values"));
    letters.remove(u'|');
    if (letters.isEmpty()) letters = kDefaultTooltipValues;
    if (TooltipIsNight() && letters.contains(u'R') && letters.contains(u'5')) {
        letters.replace(u'R', QStringLiteral("[R]"));
        letters.replace(u'5', u'R');
        letters.replace(QStringLiteral("[R]"), QStringLiteral("5"));
    }
    return letters;
}

QString BuildTooltipText()
{
    if (TooltipStyle() == kTooltipDisabled) return {};
    ExpansionCache reads;
    return linesOf(TooltipOptions::fromSettings(TooltipLetters()));
}

QString StandardTrayTip()
{
    const QString text = TooltipStyle() == kTooltipStandard ? BuildTooltipText() : QString();
    return text.isEmpty() ? QStringLiteral("Tarnby") : text.left(kTrayTipLength);
}

QString BuildTooltipRows()
{
    ExpansionCache reads;
    TooltipOptions options = TooltipOptions::fromSettings(TooltipLetters());
    options.rising = QStringLiteral("&uarr;");
    options.falling = QStringLiteral("&darr;");
    QString rows = QStringLiteral("<TABLE>");
    for (const QChar letter : TooltipLetters()) {
        const QString line = TooltipLine(letter, options);
        if (line.isEmpty()) continue;
        rows += letter == u'A' ? headingRow(line) : row(line);
    }
    return rows + QStringLiteral("</TABLE>");
}

} // namespace Tarnby
