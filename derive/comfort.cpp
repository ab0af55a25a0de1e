#include "derive/comfort.h"

#include "core/weathercache.h"
#include "derive/numberformat.h"
#include "derive/units.h"

#include <array>
#include <cmath>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr double kSentinel = 999;
const QString kNotAvailable = u"N/A"_s;

struct Band {
    double from; // at or above
    const char16_t *text;
};

constexpr std::array<Band, 20> kTemperatureColours = {{
    {901, u"#333"},    {115, u"#A30902"}, {110, u"#CF2202"}, {105, u"#E93601"},
    {100, u"#FA6E00"}, {95, u"#FFC800"},  {90, u"#FFFA00"},  {85, u"#DCE105"},
    {80, u"#6CCF03"},  {75, u"#0FC00D"},  {70, u"#01D577"},  {65, u"#00D5DC"},
    {60, u"#06B9E1"},  {55, u"#195ABE"},  {50, u"#322897"},  {45, u"#631EAA"},
    {40, u"#8C36BA"},  {35, u"#BF5AC6"},  {30, u"#D671D9"},  {-INFINITY, u"#ED8AED"},
}};

constexpr std::array<Band, 6> kHumidexColours = {{
    {901, u"#000000"},
    {55, u"#CF2202"},
    {46, u"#FA6E00"},
    {40, u"#FFC800"},
    {29, u"#6CCF03"},
    {-INFINITY, u"#00D5DC"},
}};

// "Very Dangerous" is anything above 54, tenths included.
const std::array<Band, 5> kHumidexWords = {{
    {std::nextafter(54.0, 55.0), u"Very Dangerous"},
    {46, u"Dangerous"},
    {40, u"High Discomfort"},
    {29, u"Low Discomfort"},
    {-INFINITY, u"Comfortable"},
}};

template <std::size_t N> QString bandOf(const std::array<Band, N> &bands, double value)
{
    for (const Band &band : bands)
        if (value >= band.from) return QString::fromUtf16(band.text);
    return QString::fromUtf16(bands.back().text); // only NaN gets here
}

double kelvinFromFahrenheit(double fahrenheit)
{
    return (fahrenheit - 32) / 1.8 + 273.15;
}

// A humidex in °F as the display reads it: a numeric text in °C as the forced Celsius
// conversion gives it; anything else the sentinel.
double celsiusOrSentinel(const QString &text)
{
    if (!isNumeric(text)) return kSentinel;
    return readNumber(ToCelsius(text, true)).value_or(kSentinel);
}

QString wholeNumberText(const QString &text)
{
    const std::optional<double> value = readNumber(text);
    const std::optional<qint16> whole = value ? roundToInt16(*value) : std::nullopt;
    return whole ? QString::number(*whole) : kNotAvailable;
}

void writeHumidex(const QString &section, const QString &temperatureKey, const QString &dewPointKey,
                  const QString &humidexKey)
{
    const QString temperature = GetCache(section, temperatureKey);
    const QString dewPoint = GetCache(section, dewPointKey);
    QString fahrenheit = kNotAvailable;
    QString celsius = kNotAvailable;
    if (isNumeric(temperature) && isNumeric(dewPoint)) {
        celsius = QString::number(ComputeHumidex(temperature, dewPoint));
        fahrenheit = wholeNumberText(FahrenheitFromCelsius(celsius));
    }
    SaveCache(section, humidexKey, fahrenheit);
    SaveCache(section, humidexKey + u'C', celsius);
}

} // namespace

QString FahrenheitToKelvin(const QString &value)
{
    return ConvertNumberText(value, "FahrenheitToKelvin", kelvinFromFahrenheit,
                             [](double kelvin) { return formatNumber(kelvin, {}); });
}

int ComputeHumidex(const QString &temperatureF, const QString &dewPointF)
{
    const QString celsiusText = ToCelsius(temperatureF, true);
    if (IsMissingValue(celsiusText) || IsMissingValue(dewPointF)) return 0;
    const std::optional<double> dewPoint = readNumber(dewPointF);
    const std::optional<double> celsius = readNumber(celsiusText);
    if (!dewPoint || !celsius) return 0;
    const double dewKelvin = kelvinFromFahrenheit(*dewPoint);
    const double vapour = 6.11 * std::exp(5417.7530 * (1 / 273.16 - 1 / dewKelvin));
    return roundToInt16(*celsius + 0.5555 * (vapour - 10)).value_or(0);
}

void WriteCurrentHumidex()
{
    writeHumidex(u"Current"_s, u"temp"_s, u"dew-point"_s, u"humidex"_s);
}

void WriteHourlyHumidex()
{
    const QString hourly = u"Hourly"_s;
    const int count = CacheCount(hourly);
    for (int row = 1; row <= count; ++row) {
        const QString index = QString::number(row);
        writeHumidex(hourly, u"temperature"_s + index, u"dew-point"_s + index,
                     u"humidex"_s + index);
    }
}

QString TemperatureColour(const QString &text)
{
    const QStringView value = QStringView(text).left(text.indexOf(u'&'));
    return bandOf(kTemperatureColours,
                  isNumeric(value) ? readNumber(value).value_or(kSentinel) : kSentinel);
}

QString HumidexColour(const QString &text)
{
    return bandOf(kHumidexColours, celsiusOrSentinel(text));
}

QString HumidexDescription(const QString &text)
{
    if (!isNumeric(text)) return kNotAvailable;
    return bandOf(kHumidexWords, celsiusOrSentinel(text));
}

} // namespace Tarnby
