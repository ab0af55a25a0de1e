#pragma once
// The value formatters that every pass of the template engine shares: they read a value
// of the Weather cache (or take one given), convert it to the user's units and dress it
// with its unit, degree sign or words.
//
// Nothing here fails: a missing value gives "N/A", a value that is no number passes
// through unconverted. Units are those in force (process values and Conversion options,
// derive/units.h); "UseTenths" and "WindInDegrees" are read at each use.

#include <QString>
#include <QStringView>

#include <optional>

namespace Tarnby
{

// How two temperature units stand together: "72°F/22°C", "72°F<BR />22°C", "72°F (22°C)".
enum class TemperatureLayout { Inline, Return, Parens };

// The dress of a temperature, told by the suffix words of its token.
struct TemperatureDress {
    bool showUnit = true; // degree sign and unit letter
    TemperatureLayout layout = TemperatureLayout::Inline;
    bool single = false; // only the user's unit, also when both are shown elsewhere
    bool degree = false; // degree sign without letter
    bool round = false;
    bool whole = false;  // rounding that UseTenths cannot turn off
    bool tenths = false; // one decimal, "##0.0"

    // "" is the bare form; the words PLAIN, DEGREE, SINGLE, ROUND, WHOLE, TENTHS, RETURN,
    // PARENS each set their part, in any order.
    static TemperatureDress fromSuffix(QStringView suffix);
};

// A temperature from (section, key) in °F, or `key` itself as the value with valueGiven.
// A Celsius user sees the twin key + "C" (a given value is converted). In both-units mode
// the other unit comes from the plain key or the twin; a given value has no twin, so its
// second value stays empty. The key "temp-rate" is never shown in both units.
QString FormatTemperature(const QString &section, const QString &key, const TemperatureDress &dress,
                          bool valueGiven = false);

// A numeric text as a single-precision value rounded half to even to a 16-bit whole
// number; no value for a text that is no number or out of range.
std::optional<QString> RoundedWhole(const QString &text);
// RoundedWhole, or the text unchanged.
QString RoundedOrSame(const QString &text);

QString FormatPercent(const QString &section, const QString &key, bool showPercent,
                      bool valueGiven = false, bool round = false);
// Rain of "Current" in the rain unit ("0.00" shows as "0"); visibility likewise.
QString FormatRain(const QString &key, bool showUnit);
QString FormatVisibility(const QString &key, bool showUnit);
// "pressure" + keySuffix ("", "-high", "-low", "-rate") of "Current", with the unit and,
// but for the rate, " and rising", " and falling" or " and steady".
QString FormatBarometer(bool showUnit, const QString &keySuffix);

// The dress of a wind speed, told by the suffix words of its token: PLAIN (no unit),
// FULL (direction and gust), NO DIRECTION (gust), NO GUST (direction), ROUND.
struct WindDress {
    bool showUnit = true;
    bool withDirection = false;
    bool withGust = false;
    bool round = false;
    static WindDress fromSuffix(QStringView suffix);
};
// "wind-speed" + keySuffix of the section (for the suffix "gust-speed", "gust-speed"), or
// keySuffix as the value with valueGiven. Only a number of at most three digits is
// converted and dressed; "Calm" and the like pass unchanged.
QString FormatWind(const QString &section, const QString &keySuffix, const WindDress &dress,
                   bool valueGiven = false);

// The UV index of "Current", else today's forecast index; with a description such as
// "5 (Moderate)".
QString FormatUv(bool withDescription);
// Whole degrees of a compass word (deliberately truncated: NNE is 22); 0 when unknown.
QString CompassToDegrees(const QString &compass, bool reversed, bool degreeSign);
// A direction through ReadCacheValue, in degrees ("22.5°") when WindInDegrees is on and
// keepCompass is off.
QString FormatCompass(const QString &section, const QString &key, bool afterBlank, bool naIfEmpty,
                      bool keepCompass);

// The condition text: "description", else for a station abroad the first daily short
// title, else the first hour's icon description, else "N/A".
QString CurrentCondition();
// The CSS that an icon set's images need.
QString IconStyle(const QString &iconSet, const QString &extraCss);

// A chance of precipitation: "40%", "Chance", "N/A".
QString FormatChance(const QString &section, const QString &key, bool showPercent,
                     bool valueGiven = false);
// "0" to "3" for a chance of precipitation, "0" to "2" for a cloud cover; the value is
// read from (section, key) when `value` is empty.
QString ChanceLevel(const QString &section, const QString &key, const QString &value = QString());
QString CloudLevel(const QString &section, const QString &key, const QString &value = QString());

// The primary temperature unit letter: "F" or "C".
QString TemperatureUnit();

} // namespace Tarnby
