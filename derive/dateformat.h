#pragma once
// Date and time pictures: the notation in which the program, its settings and its skins
// write how a date or time is printed ("dddd", "MMM D", "yyyy-mm-dd", "h:nn AM/PM",
// "ddMMyyHHnnss"). One implementation serves every caller.

#include <QDateTime>
#include <QLocale>
#include <QString>

namespace Tarnby
{

// Prints the wall-clock reading of dt (its date() and time(); the time spec is not looked
// at) by a picture. Letters may be written in either case:
//
//   d dd ddd dddd   day; two-digit day; weekday abbreviated; weekday in full
//   w ww            weekday number (Sunday is 1); week of the year (the week of 1 January
//                   is week 1, weeks start on Sunday)
//   m mm            month; two-digit month. Right after an hour field (with only literal
//                   characters between, as in "h:mm" or "hmmss") they are the minutes
//   mmm mmmm        month abbreviated; month in full
//   q               quarter of the year
//   y yy yyyy       day of the year; two-digit year; four-digit year
//   h hh            hour; two-digit hour. 0-23, or 1-12 when the picture holds a half-day
//                   field
//   n nn            minute; two-digit minute
//   s ss            second; two-digit second
//   AM/PM am/pm     "AM"/"PM" or "am"/"pm"; A/P and a/p give the letter alone; AMPM gives
//                   the locale's own words for the two halves of the day
//   "text", \c      literal text
//
// Every other character prints as itself; ":" and "/" are not replaced by the locale's
// separators, so a printed text reads back the same on every system. Names of months
// and weekdays come from the locale. An invalid dt prints as an empty text.
QString formatDateTime(const QDateTime &dt, const QString &picture,
                       const QLocale &locale = QLocale());

// Reads the text quoted at `at` (where the quote character stands) and moves `at` past the
// closing quote, or to the end of the text when the quote is not closed.
QString readQuoted(const QString &text, qsizetype &at);

} // namespace Tarnby
