#include "derive/units.h"

#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/numberformat.h"

#include <array>
#include <cmath>
#include <limits>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

// mph to km/h for wind, and statute miles to km for visibility: two constants on purpose,
// the wind one carries the rounding the wind figures have always been shown with.
constexpr double kWindKilometresPerMile = 1.60934708788644;
constexpr double kVisibilityKilometresPerMile = 1.609344;
// Inches of mercury to hectopascals and to millibars: the same quantity, two constants on
// purpose, so that both units keep showing the figures users know from them.
constexpr double kHectopascalsPerInch = 33.8639;
constexpr double kMillibarsPerInch = 33.864;
constexpr double kKilopascalsPerInch = 3.386389;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kCentimetresPerInch = 2.54;
constexpr double kKnotsDivisor = 1.15;  // mph to knots for the wind display
constexpr double kMphPerKnot = 1.15078; // the providers' knots
constexpr double kPascalsPerInch = 3386.389;
// Lifts a product off a rounding edge before it is formatted.
constexpr double kNudge = 0.0001;

const QString kNotAvailable = QStringLiteral("N/A");

// Upper limits of Beaufort 0 to 11 in m/s; from the last one on it is 12.
constexpr std::array<double, 12> kBeaufortLimits = {0.3,  1.6,  3.4,  5.5,  8.0,  10.8,
                                                    13.9, 17.2, 20.8, 24.5, 28.5, 32.7};

void logOverflow(const char *routine, const QString &value)
{
    Log(QStringLiteral("Value \"%1\" is out of range (%2)")
            .arg(value.left(40), QLatin1String(routine)));
}

// A provider's reading in US units, in the picture as it stands.
QString toUsUnits(const QString &value, const char *routine,
                  const std::function<double(double)> &convert, QStringView picture)
{
    return ConvertNumberText(value, routine, convert,
                             [picture](double v) { return formatNumber(v, picture); });
}

// A metric display value: factor, nudge, picture, tidy.
QString toMetric(const QString &value, const char *routine, double factor, QStringView picture)
{
    return ConvertNumberText(
        value, routine, [factor](double v) { return v * factor + kNudge; },
        [picture](double v) { return TidyNumberText(formatNumber(v, picture)); });
}

bool hasNonZeroDigit(const QString &text)
{
    for (const QChar c : text)
        if (c >= u'1' && c <= u'9') return true;
    return false;
}

QString swapSymbols(QString text, QChar from, QChar fromGroup, QChar to, QChar toGroup)
{
    text.replace(from, u'@');
    if (!fromGroup.isNull())
        text.replace(fromGroup, toGroup.isNull() ? QString() : QString(toGroup));
    text.replace(u'@', to);
    return text;
}

void writeTwins(const QString &section, const QStringList &keys, const QString &suffix,
                Quantity quantity)
{
    for (const QString &key : keys)
        SaveCache(section, key + suffix + u'C',
                  ToUserUnits(quantity, GetCache(section, key + suffix)));
}

} // namespace

bool CelsiusTwinsWanted()
{
    return process().UnitTemp == u"C" || conversionOptions().bothUnits;
}

QString ConvertNumberText(const QString &value, const char *routine,
                          const std::function<double(double)> &convert,
                          const std::function<QString(double)> &format)
{
    if (IsMissingValue(value)) return value;
    const std::optional<double> number = readNumber(value);
    const double result = number ? convert(*number) : std::numeric_limits<double>::infinity();
    if (!std::isfinite(result)) {
        logOverflow(routine, value);
        return kNotAvailable;
    }
    return format(result);
}

ConversionOptions &conversionOptions()
{
    static ConversionOptions options;
    return options;
}

bool IsMissingValue(const QString &value)
{
    const QStringView trimmed = QStringView(value).trimmed();
    return trimmed.isEmpty() || trimmed.compare(u"N/A", Qt::CaseInsensitive) == 0;
}

void LoadConversionSettings()
{
    const QString section = QStringLiteral("Conversion");
    const auto text = [&](const char *key, const char *fallback) {
        return GetPref(section, QLatin1String(key), QLatin1String(fallback));
    };
    const auto flag = [&](const char *key) { return text(key, "") == u"True"; };
    ProcessValues &pv = process();
    pv.UnitTemp = text("Temp", "F");
    pv.UnitWind = text("Wind", "mph");
    pv.UnitBar = text("Bar", "inches");
    pv.UnitPre = text("Pre", "inches");
    pv.UnitVis = text("Vis", "miles");
    if (pv.UnitVis == u"inches") pv.UnitVis = u"miles"_s; // a mistake of earlier versions
    pv.RoundWind = flag("RoundWindSpeed");
    ConversionOptions &options = conversionOptions();
    options.bothUnits = flag("Both");
    options.useTenths = flag("UseTenths");
    options.windInDegrees = flag("WindInDegrees");
}

QString ToCelsius(const QString &value, bool force)
{
    if (process().UnitTemp == u"F" && !force) return value;
    return ConvertNumberText(
        value, "ToCelsius", [](double f) { return (f - 32) * 5 / 9; },
        [](double c) {
            const QString text =
                TidyNumberText(formatNumber(c, conversionOptions().useTenths ? u"###.#" : u"###"));
            return hasNonZeroDigit(text) ? text : QStringLiteral("0");
        });
}

QString FahrenheitFromCelsius(const QString &value)
{
    return toUsUnits(
        value, "FahrenheitFromCelsius", [](double c) { return c * 1.8 + 32; }, u"###.0");
}

QString RateToFahrenheit(const QString &value)
{
    if (process().UnitTemp != u"C") return value;
    return toUsUnits(
        value, "RateToFahrenheit", [](double c) { return c * 1.8; }, u"###.0");
}

QString PressureFromInches(const QString &value, const QString &unit)
{
    double factor = 0;
    if (unit == u"mm")
        factor = kMillimetresPerInch;
    else if (unit == u"hPa")
        factor = kHectopascalsPerInch;
    else if (unit == u"kPa")
        factor = kKilopascalsPerInch;
    else if (unit == u"mb")
        factor = kMillibarsPerInch;
    else
        return value;
    return toMetric(value, "PressureFromInches", factor, u"######.#");
}

QString RainFromInches(const QString &value, const QString &unit)
{
    if (unit == u"mm") return toMetric(value, "RainFromInches", kMillimetresPerInch, u"###,###.#");
    if (unit == u"cm") return toMetric(value, "RainFromInches", kCentimetresPerInch, u"###,###.#");
    return value;
}

QString VisibilityFromMiles(const QString &value, const QString &unit)
{
    if (unit != u"km") return value;
    return toMetric(value, "VisibilityFromMiles", kVisibilityKilometresPerMile, u"###,###.#");
}

QString WindFromMph(const QString &value, const QString &unit)
{
    const auto wind = [&](auto convert) {
        return ConvertNumberText(value, "WindFromMph", convert, [](double v) {
            return TidyNumberText(formatNumber(v, u"###,##0.0"));
        });
    };
    const auto metresPerSecond = [](double mph) {
        return mph * kWindKilometresPerMile * 1000 / 3600;
    };
    if (unit == u"km/h") return wind([](double mph) { return mph * kWindKilometresPerMile; });
    if (unit == u"m/s") return wind(metresPerSecond);
    if (unit == u"kts") return wind([](double mph) { return mph / kKnotsDivisor; });
    if (unit != u"bft") return value;
    return ConvertNumberText(value, "WindFromMph", metresPerSecond,
                             [](double speed) { return QString::number(BeaufortNumber(speed)); });
}

QString InchesFromMillimetres(const QString &value)
{
    return toUsUnits(
        value, "InchesFromMillimetres", [](double mm) { return mm * 0.0393701; }, u"###,###.##");
}

QString InchesFromCentimetres(const QString &value)
{
    return toUsUnits(
        value, "InchesFromCentimetres", [](double cm) { return cm * 0.393701; }, u"###,###.##");
}

QString MilesFromMetres(const QString &value)
{
    return toUsUnits(
        value, "MilesFromMetres", [](double m) { return m / 1609.344; }, u"###0.##");
}

QString MilesPerHourFromMetresPerSecond(const QString &value)
{
    return toUsUnits(
        value, "MilesPerHourFromMetresPerSecond", [](double ms) { return ms * 2.237; }, u"###0.##");
}

QString MilesPerHourFromKnots(const QString &value)
{
    return toUsUnits(
        value, "MilesPerHourFromKnots", [](double kts) { return kts * kMphPerKnot; }, u"##0");
}

QString KnotsFromMilesPerHour(const QString &value)
{
    return toUsUnits(
        value, "KnotsFromMilesPerHour", [](double mph) { return mph / kMphPerKnot; }, u"##0.#0");
}

QString InchesFromPascals(const QString &value)
{
    return toUsUnits(
        value, "InchesFromPascals", [](double pa) { return pa / kPascalsPerInch; }, u"###.00");
}

int BeaufortNumber(double metresPerSecond)
{
    int number = 0;
    while (number < static_cast<int>(kBeaufortLimits.size()) &&
           !(metresPerSecond < kBeaufortLimits[number]))
        ++number;
    return number;
}

QString TidyNumberText(const QString &text)
{
    static const QString leading = QStringLiteral("., ");
    QString out = text;
    if (!out.isEmpty() && leading.contains(out.front())) out.prepend(u'0');
    if (out.size() >= 2 && out.front() == u'-' && leading.contains(out[1])) out.insert(1, u'0');
    if (!out.isEmpty() && leading.contains(out.back())) out.chop(1);
    return out;
}

QString ToInvariantNumber(const QString &text)
{
    const NumberSymbols locale = localeSymbols();
    if (!process().NonUsNumberFormat || !isNumeric(text, locale)) return text;
    return swapSymbols(text, locale.decimal, locale.group, kInvariantSymbols.decimal,
                       kInvariantSymbols.group);
}

QString ToLocaleNumber(const QString &text)
{
    const NumberSymbols locale = localeSymbols();
    if (!process().NonUsNumberFormat || !isNumeric(text, kInvariantSymbols)) return text;
    return swapSymbols(text, kInvariantSymbols.decimal, kInvariantSymbols.group, locale.decimal,
                       locale.group);
}

QString ToUserUnits(Quantity quantity, const QString &value)
{
    const ProcessValues &pv = process();
    switch (quantity) {
    case Quantity::Temperature:
        return ToCelsius(value, true);
    case Quantity::TemperatureRate: // a difference, not a temperature: the rate rule
        return TidyNumberText(RateToFahrenheit(value));
    case Quantity::Pressure:
        return PressureFromInches(value, pv.UnitBar);
    case Quantity::Rain:
        return RainFromInches(value, pv.UnitPre);
    case Quantity::Visibility:
        return VisibilityFromMiles(value, pv.UnitVis);
    case Quantity::Wind:
        return WindFromMph(value, pv.UnitWind);
    }
    return value;
}

void WriteCurrentTwins()
{
    const ProcessValues &pv = process();
    const QString current = u"Current"_s;
    const QString none;
    if (pv.UnitBar != u"inches")
        writeTwins(current,
                   {u"pressure"_s, u"pressure-high"_s, u"pressure-low"_s, u"pressure-rate"_s}, none,
                   Quantity::Pressure);
    if (pv.UnitVis != u"miles") writeTwins(current, {u"visibility"_s}, none, Quantity::Visibility);
    if (pv.UnitPre != u"inches")
        writeTwins(
            current,
            {u"rain-month"_s, u"rain-today"_s, u"rain-year"_s, u"rain-rate"_s, u"rain-rate-max"_s},
            none, Quantity::Rain);
    if (CelsiusTwinsWanted()) {
        writeTwins(current,
                   {u"dew-point"_s, u"feels-like"_s, u"temp"_s, u"temp-high"_s, u"temp-low"_s,
                    u"wet-bulb"_s},
                   none, Quantity::Temperature);
        writeTwins(current, {u"temp-rate"_s}, none, Quantity::TemperatureRate);
    }
    if (pv.UnitWind != u"mph")
        writeTwins(current, {u"gust-speed"_s, u"wind-speed"_s, u"wind-speed-avg"_s}, none,
                   Quantity::Wind);
}

void WriteHourlyTwins()
{
    const QString hourly = u"Hourly"_s;
    const bool celsius = CelsiusTwinsWanted();
    const bool wind = process().UnitWind != u"mph";
    const int count = CacheCount(hourly);
    for (int row = 1; row <= count; ++row) {
        const QString index = QString::number(row);
        if (celsius)
            writeTwins(hourly, {u"dew-point"_s, u"feels-like"_s, u"temperature"_s}, index,
                       Quantity::Temperature);
        if (wind) writeTwins(hourly, {u"wind-speed"_s}, index, Quantity::Wind);
    }
}

} // namespace Tarnby
