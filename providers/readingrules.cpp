#include "providers/readingrules.h"

#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/icons.h"
#include "derive/numberformat.h"
#include "derive/units.h"
#include "providers/textcutters.h"

#include <cmath>

namespace Tarnby
{

namespace
{

// A unit the user has set and that differs from the base unit.
bool convertsTo(const QString &unit, const char *baseUnit)
{
    return !unit.isEmpty() && unit != QLatin1String(baseUnit);
}

bool twinWanted(ReadingRule rule)
{
    const ProcessValues &units = process();
    switch (rule) {
    case ReadingRule::Temperature:
        return CelsiusTwinsWanted();
    case ReadingRule::Rate:
        return true;
    case ReadingRule::Rain:
        return convertsTo(units.UnitPre, "inches");
    case ReadingRule::Wind:
        return convertsTo(units.UnitWind, "mph");
    case ReadingRule::Pressure:
        return convertsTo(units.UnitBar, "inches");
    }
    return false;
}

Quantity quantityOf(ReadingRule rule)
{
    switch (rule) {
    case ReadingRule::Temperature:
        return Quantity::Temperature;
    case ReadingRule::Rate:
        return Quantity::TemperatureRate;
    case ReadingRule::Rain:
        return Quantity::Rain;
    case ReadingRule::Wind:
        return Quantity::Wind;
    case ReadingRule::Pressure:
        return Quantity::Pressure;
    }
    return Quantity::Temperature;
}

QString withDecimalPoint(QString text)
{
    const QString decimal = process().DecimalSymbol;
    return decimal.isEmpty() ? text : text.replace(decimal, QStringLiteral("."));
}

QString listForm(ReadingRule rule, const QString &text)
{
    switch (rule) {
    case ReadingRule::Temperature:
        return WholeNumberText(text);
    case ReadingRule::Pressure:
        return withDecimalPoint(text);
    default:
        return text;
    }
}

double windChill(double temperature, double wind)
{
    const double factor = std::pow(wind, 0.16);
    return 35.74 + 0.6215 * temperature - 35.75 * factor + 0.4275 * temperature * factor;
}

// The regression of the US weather service for the heat index.
double heatIndex(double t, double rh)
{
    return -42.379 + 2.04901523 * t + 10.14333127 * rh - 0.22475541 * t * rh - 0.00683783 * t * t -
           0.05481717 * rh * rh + 0.00122874 * t * t * rh + 0.00085282 * t * rh * rh -
           0.00000199 * t * t * rh * rh;
}

} // namespace

Reading ApplyReadingRule(ReadingRule rule, const QString &number)
{
    if (IsMissingValue(number)) return {kNotAvailable, kNotAvailable};
    return {number, twinWanted(rule) ? ToUserUnits(quantityOf(rule), number) : kNotAvailable};
}

QString ClampedHumidityBound(const QString &bound, const QString &humidity, bool isHigh)
{
    const std::optional<double> limit = NumberInText(bound);
    const std::optional<double> present = NumberInText(humidity);
    if (!limit) return present ? humidity : bound;
    if (!present) return bound;
    const bool presentBeyond = isHigh ? *present > *limit : *present < *limit;
    return presentBeyond ? humidity : bound;
}

QString CompassWord(const QString &degrees)
{
    static const char *const words[] = {"N", "NNE", "NE", "ENE", "E", "ESE", "SE", "SSE",
                                        "S", "SSW", "SW", "WSW", "W", "WNW", "NW", "NNW"};
    const std::optional<double> value = NumberInText(degrees);
    if (!value || !std::isfinite(*value)) return degrees;
    const double turned = std::fmod(std::fmod(*value, 360.0) + 360.0, 360.0);
    return QLatin1String(words[static_cast<int>(std::lround(turned / 22.5)) % 16]);
}

QString PulseConditionCode(const QString &iconCode)
{
    const std::optional<double> code = NumberInText(iconCode);
    if (!code) return iconCode;
    return QStringLiteral("cond") + RemapCondNumber(formatNumber(*code, u"000"));
}

QString FeelsLikeText(const QString &humidity, const QString &temperatureF,
                      const QString &windSpeedMph)
{
    const std::optional<double> rh = NumberInText(humidity);
    const std::optional<double> t = NumberInText(temperatureF);
    const std::optional<double> wind = NumberInText(windSpeedMph);
    if (!rh || !t || !wind) return {};
    double feels = *t;
    if (*t <= 50.0 && *wind >= 3.0)
        feels = windChill(*t, *wind);
    else if (*t >= 80.0)
        feels = heatIndex(*t, *rh);
    const std::optional<qint16> whole = roundToInt16(feels);
    return whole ? QString::number(*whole) : QString();
}

void RealtimeArguments::add(ReadingRule rule, const Reading &reading)
{
    add(listForm(rule, reading.value));
    add(listForm(rule, reading.twin));
}

QString RealtimeArguments::toString() const
{
    if (m_items.isEmpty()) return {};
    return QLatin1Char('\'') + m_items.join(QStringLiteral("','")) + QLatin1Char('\'');
}

Reading WriteReading(const QString &key, ReadingRule rule, const QString &number)
{
    const Reading reading = ApplyReadingRule(rule, number);
    SaveCache(kCurrentSection, key, reading.value);
    SaveCache(kCurrentSection, key + QLatin1Char('C'), reading.twin);
    return reading;
}

void WriteReading(RealtimeArguments &arguments, const QString &key, ReadingRule rule,
                  const QString &number)
{
    arguments.add(rule, WriteReading(key, rule, number));
}

} // namespace Tarnby
