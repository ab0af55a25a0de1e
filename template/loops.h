#pragma once
// The forecast loops, steps 3 to 7 of ExpandTemplate. Each takes the whole text and
// returns it with every construct of its kind replaced by its rows; with forceLoops the
// constructs are looked for even when the gate prefix is absent.
//
//   [PERIOD SEQUENCE LOOP COUNT= START=] ... [/PERIOD SEQUENCE LOOP]   forecast periods
//   [DAILY SEQUENCE LOOP COUNT=] ... [/DAILY SEQUENCE LOOP]            day and night rows
//   [DAILY LOOP COUNT= START=] ... [/DAILY LOOP]                       one row group a day
//   [MOON LOOP COUNT= START=] ... [/MOON LOOP]                         moon by day
//   [HOURLY LOOP COUNT= START=] ... [/HOURLY LOOP]                     hours

#include <QString>

namespace Tarnby
{

QString ExpandPeriodLoops(QString text, bool forceLoops);
QString ExpandDailySequenceLoops(QString text, bool forceLoops);
QString ExpandDailyLoops(QString text, bool forceLoops);
QString ExpandMoonLoops(QString text, bool forceLoops);
QString ExpandHourlyLoops(QString text, bool forceLoops);

// A day name for a narrow column: "Overnight" stays; with shortName only the first letter,
// upper case; otherwise the first word becomes the "ddd" form of the weekday it names
// among today and the six days after ("Mon"), or its first three letters, and with
// keepSecondWord what stood behind the first blank follows again ("Mon Night").
QString AbbreviateDayName(const QString &text, bool shortName, bool keepSecondWord);

} // namespace Tarnby
