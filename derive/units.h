#pragma once
// Display units and the conversions between them.
//
// The Weather cache holds what the providers deliver in US units (°F, inches of mercury,
// inches of rain, mph, miles). The user picks display units in the settings section
// "Conversion"; LoadConversionSettings copies them into the process values (UnitTemp,
// UnitWind, UnitBar, UnitPre, UnitVis, RoundWind) and the flags below.
//
// Every conversion takes text and gives text and never fails:
// - a missing value - empty, blank or "N/A" in any case - comes back as it was given;
// - a value is read as its leading number after "," became "." (numberformat.h), so a
//   value stored under a comma locale still converts and a text without a number reads
//   as 0 ("abc" in °F is "-18" in °C), as the program has always done;
// - a value too large for a double ("1e400"), or a product that overflows, gives "N/A"
//   and a log line;
// - a unit the routine does not know leaves the text unchanged.
// Results are in the user's locale form (decimal and group symbols of process()).

#include <QString>

#include <functional>

namespace Tarnby
{

// The flags of "Conversion" that have no process value. UseTenths and WindInDegrees are
// kept here for the conversions; callers that must see a change at once read them afresh.
struct ConversionOptions {
    bool bothUnits = false;     // "Both": show both temperature units
    bool useTenths = false;     // "UseTenths": temperatures with one decimal
    bool windInDegrees = false; // "WindInDegrees": wind direction in degrees
};
ConversionOptions &conversionOptions();

// Reads "Conversion" into the process values and conversionOptions(); an empty setting
// gives its default ("F", "mph", "inches", "inches", "miles", off), and the visibility
// unit "inches" that earlier versions stored by mistake reads as "miles". Call at start
// and whenever the options change.
void LoadConversionSettings();

// °F to °C: only when the unit is not "F" or `force` is set. Whole degrees, or tenths
// with UseTenths, tidied. A result that shows no digit other than zero is "0" (so 32.2°F
// is "0", never an empty text or "-0").
QString ToCelsius(const QString &value, bool force = false);
// °C to °F: value × 1.8 + 32 in "###.0".
QString FahrenheitFromCelsius(const QString &value);
// A change in °C to a change in °F when the unit is "C" (value × 1.8, "###.0");
// otherwise the value unchanged.
QString RateToFahrenheit(const QString &value);

// Inches of mercury to "mm", "hPa", "kPa" or "mb", one decimal, tidied.
QString PressureFromInches(const QString &value, const QString &unit);
// Inches of rain to "mm" or "cm", one decimal, grouped, tidied.
QString RainFromInches(const QString &value, const QString &unit);
// Miles to "km", one decimal, grouped, tidied.
QString VisibilityFromMiles(const QString &value, const QString &unit);
// mph to "km/h", "m/s", "kts" (one decimal, grouped, tidied) or "bft" (Beaufort number).
QString WindFromMph(const QString &value, const QString &unit);

// The helpers providers use to bring metric readings to the cache's US units. They give
// the picture's form as it stands, without tidying (0.5 inches in "###.00" is ".50").
QString InchesFromMillimetres(const QString &value);           // "###,###.##"
QString InchesFromCentimetres(const QString &value);           // "###,###.##"
QString MilesFromMetres(const QString &value);                 // "###0.##"
QString MilesPerHourFromMetresPerSecond(const QString &value); // "###0.##"
QString MilesPerHourFromKnots(const QString &value);           // "##0"
QString KnotsFromMilesPerHour(const QString &value);           // "##0.#0"
QString InchesFromPascals(const QString &value);               // "###.00"

// The Beaufort number (0 to 12) of a wind speed in metres per second.
int BeaufortNumber(double metresPerSecond);

// Repairs what number pictures leave: a leading ".", "," or blank gets a "0" in front
// (".5" is "0.5"), a sign followed by one of them gets the "0" behind the sign ("-.5" is
// "-0.5"), and a trailing ".", "," or blank is cut ("5." is "5"). Anything else, the
// empty text included, is left as it is.
QString TidyNumberText(const QString &text);

// Between the locale's form and the "." form, only when process().NonUsNumberFormat is
// set and the text is a number (in the locale's form for ToInvariantNumber, in the "."
// form for ToLocaleNumber): decimal and group symbols swap places ("1.234,5" and
// "1,234.5" for a German locale). Other texts come back unchanged.
QString ToInvariantNumber(const QString &text);
QString ToLocaleNumber(const QString &text);

// The kinds of value that have a display unit of their own.
enum class Quantity { Temperature, TemperatureRate, Pressure, Rain, Visibility, Wind };
// A value in the cache's US units in the user's display unit, as the "C" twins hold it:
// temperatures in °C (forced), a temperature rate by RateToFahrenheit and tidied (a zero
// change reads "0.0"), the others by the conversion of their unit in process().
QString ToUserUnits(Quantity quantity, const QString &value);

// After a retrieval and after a change of units: the "C" twins of "\Current" and
// "\Hourly" in the user's units, for each group whose unit is not the US one.
void WriteCurrentTwins();
void WriteHourlyTwins();

// Whether Celsius twins are written: the temperature unit is "C" or both units are shown.
bool CelsiusTwinsWanted();

// The frame of every conversion: a missing `value` comes back as it is; otherwise it is
// read (readNumber), converted, and the result formatted. A value or result beyond the
// range of a double gives "N/A" and a log line naming `routine`.
QString ConvertNumberText(const QString &value, const char *routine,
                          const std::function<double(double)> &convert,
                          const std::function<QString(double)> &format);

// True for the texts that stand for a missing value: empty, blanks, "N/A" in any case.
bool IsMissingValue(const QString &value);

} // namespace Tarnby
