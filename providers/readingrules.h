#pragma once
// How a live reading becomes keys of the Current branch: the unit rules that give each
// value its twin in the user's units, the argument list that the skin's script function
// refreshRealtimeData receives, and the small derivations the readers share (compass
// words, the program's own feels-like).
//
// Readings are in the base units of the services' "english" requests: °F, mph, inches
// and inches of mercury. A missing value (empty or "N/A") gives "N/A" for the key and
// for its twin under every rule.

#include <QString>
#include <QStringList>

namespace Tarnby
{

// The branch live readings go to, and the word of a missing value.
inline const QString kCurrentSection = QStringLiteral("Current");
inline const QString kNotAvailable = QStringLiteral("N/A");

enum class ReadingRule {
    Temperature, // twin in °C when the user sees Celsius (unit "C" or both units), else "N/A"
    Rate,        // a temperature change: twin × 1.8 ("###.0") for unit "C", else the value;
                 // tidied, so a change that rounds to zero reads "0.0"
    Rain,        // twin in the user's rain unit unless that is "inches"
    Wind,        // twin in the user's wind unit unless that is "mph"
    Pressure,    // twin in the user's pressure unit unless that is "inches"
};

struct Reading {
    QString value; // the base-unit value as given, "N/A" when missing
    QString twin;  // the value in the user's units, or "N/A"
};

// The key's value and its twin for a number in base units.
Reading ApplyReadingRule(ReadingRule rule, const QString &number);

// A day's humidity high (or low) held against the present humidity, so that a high
// never stands below it (nor a low above it). When only one is a number it is taken.
QString ClampedHumidityBound(const QString &bound, const QString &humidity, bool isHigh);

// The sixteen-point compass word of a direction in degrees ("45" gives "NE"); a text
// that is not a number comes back unchanged, so a word stays a word.
QString CompassWord(const QString &degrees);

// The condition code of a Pulse iconCode: "cond" + the code in three digits, folded by
// RemapCondNumber ("2" gives "cond002", "181" gives "cond036"). A text that is not a
// number comes back unchanged.
QString PulseConditionCode(const QString &iconCode);

// The program's own feels-like temperature in whole °F, for stations that report none:
// the wind chill at 50 °F and below with a wind of 3 mph or more, the heat index at
// 80 °F and above, and the temperature itself in between. Empty when a reading is not
// a number.
QString FeelsLikeText(const QString &humidity, const QString &temperatureF,
                      const QString &windSpeedMph);

// The argument text for the skin's refreshRealtimeData: items in single quotes,
// separated by commas. A skin reads each value by its place, so the order is a contract.
class RealtimeArguments
{
public:
    void add(const QString &item) { m_items.append(item); }
    // The key value and its twin as the list shows them: temperatures as whole numbers,
    // pressures with "." as the decimal mark, everything else as written.
    void add(ReadingRule rule, const Reading &reading);
    bool isEmpty() const { return m_items.isEmpty(); }
    QString toString() const;

private:
    QStringList m_items;
};

// Writes key and key + "C" into Current; gives what was written.
Reading WriteReading(const QString &key, ReadingRule rule, const QString &number);
// The same, and adds both to the list.
void WriteReading(RealtimeArguments &arguments, const QString &key, ReadingRule rule,
                  const QString &number);

} // namespace Tarnby
