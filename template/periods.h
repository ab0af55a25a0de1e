#pragma once
// Forecast periods: named spans of the hourly forecast ("This Afternoon", "Tonight") and
// what the hours of a span have in common. Hours are the rows of "Hourly", from 1.
//
// The day has four parts: Morning "6 AM" to "11 AM", Afternoon "12 PM" to "4 PM",
// Evening "5 PM" to "9 PM", Night "10 PM" to "5 AM". Hours are compared as the texts
// the cache holds them in ("7 AM").

#include <QString>

namespace Tarnby
{

// A span of rows of "Hourly".
struct HourSpan {
    int firstHour = 1;
    int lastHour = 0;
    // Rows 1 to the cached count.
    static HourSpan whole();
    int size() const { return lastHour - firstHour + 1; }
};

// The hours of forecast period periodIndex (from 1). Period 1 runs from the first hour
// (a start in the last two hours of a part moves on to the next part) to the end of its
// part; each further period is the next whole part; period 5 is period 1's part a day
// later. Without the end hour in the forecast, lastHour is 1.
HourSpan PeriodBounds(int periodIndex);

// Largest and smallest whole value of <key><i> over the span; a value that is no number
// counts as 0. PeriodMax of an empty span is -999, PeriodMin 999.
int PeriodMax(const HourSpan &span, const QString &key);
int PeriodMin(const HourSpan &span, const QString &key);
// "HighToLow" when the first value is above the last, both numbers; else "LowToHigh".
QString PeriodOrder(const HourSpan &span, const QString &key);
// The value met most often (the first of equals), among the first eight distinct ones.
QString PeriodMostFrequent(const HourSpan &span, const QString &key);
// "Morning", "Afternoon", "Evening" (with "Tomorrow " in front for tomorrow unless
// shortName), "Tonight", "Early Morning" or "Tomorrow Night" ("Night" with shortName),
// from the hour and date of the span's first row.
QString PeriodName(int firstHour, bool shortName);

// The hour of the day (0 to 23) of an hour text such as "7 PM", when it reads as one.
int HourOfDay(const QString &hourText);

} // namespace Tarnby
