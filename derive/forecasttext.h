#pragma once
// Forecast prose: turning the services' wording into numbers in the user's units, the
// proper case of names in upper-case bulletins, and the chance of precipitation that a
// text names.
//
// The cache keeps each forecast half twice in "\Daily": the raw text in
// prediction1<day>/prediction2<day> and the rewritten one in predictionC1<day>/
// predictionC2<day>. The rewritten one depends on the units, so ReprocessForecasts
// rebuilds it after a retrieval and whenever the units change.
//
// Every routine takes any text and never fails: an empty text gives an empty text, and a
// phrase whose number cannot be read stays in the text as it stands. Phrases are found
// without regard to case.

#include <QString>

namespace Tarnby
{

// The main rewrite, under the units in force (process() and conversionOptions()):
// "in the low 50s" becomes "near 53°F", "5 to 10 mph" becomes "8.0 to 16.1 km/h",
// "an inch" becomes "25.4 mm", a temperature "40F." becomes "40°F.", each as the units ask.
// The text keeps its case.
QString RewriteForecast(const QString &text);

// Every `phrase` becomes "near " + the temperature `fahrenheit`, dressed for the units.
QString ReplaceNearWord(const QString &text, const QString &phrase, double fahrenheit,
                        bool bothUnits, const QString &unit);
// Every `phrase` with the decade behind it up to its "S" ("IN THE LOW 50S") becomes
// "near " + (decade + offset), dressed for the units.
QString ReplaceDecadeWord(const QString &text, const QString &phrase, double offset, bool bothUnits,
                          const QString &unit);
// A phrase of an amount of rain ("A QUARTER OF AN INCH", "AN INCH", "INCHES OF") in the
// rain unit `unit`: "6.4 mm". For "INCHES OF" the amount is the start of the sentence, one
// number or "2 to 4"; " of" stays. An unknown phrase leaves the text unchanged.
QString ReplaceInchWord(const QString &text, const QString &phrase, const QString &unit);

// The proper case of the names that upper-case bulletins bring in lower case once
// lowered: weekdays, months, "am"/"pm"/"midnight" with the US time zones, the US states
// and territories, the compass directions. A fixed table of plain, case-sensitive
// replacements applied in order.
QString FixForecastCase(const QString &text);

// The chance of precipitation that a text names, as text ("40"), "10" for a text that
// only says "chance", or empty.
QString ChanceFromForecast(const QString &text);
// For each day of "\Daily": the chance named in prediction1<day>/prediction2<day> into
// pre1<day>/pre2<day>, when it is numeric and differs from the stored number, or when the
// stored value is not numeric.
void FillChanceFromForecast();
// Rebuilds the Celsius twins of low<day>/high<day> (when they are wanted) and every
// predictionC text from its raw text.
void ReprocessForecasts();

// "D" for a time from 6 AM to 4 PM (the whole hour of 4 PM included), "N" for any other
// time, an empty text for a text that is not a date or time. Texts are read as the dates
// module reads them ("7 PM", "19:00", "4/3/2024 7:00 PM"), ISO date-times too
// ("2024-04-03T19:00:00"); a date without a time is midnight.
QString DayPartOfHour(const QString &text);
// The hourly chances of precipitation by day part, "14D30|14N60|15D10": day of the month
// in two digits (of the day part's first hour), "D" or "N", the largest chance.
QString HourlyChanceSummary();
// Brings HourlyChanceSummary into "\Daily": from the first forecast day ("\Daily" date) on,
// each day part's chance goes to pre1<n>/pre2<n>, and the percentages of
// short-title1<n>/short-title2<n> and prediction1<n>/prediction2<n> follow it. For the
// caller to use when the hourly forecast is newer than the daily one. Returns the number
// of day parts skipped as earlier than the first forecast day.
int ApplyHourlyChance();

} // namespace Tarnby
