#pragma once
// Dates and times as text. Providers deliver them in their own forms, the user's system
// writes them in its own order and separator, and the Weather cache keeps them as text.
// These routines bring such text into the system's form and print times in the user's
// choice of clock (OnDownload/Use24 "True" for 24 hours). They are called from every
// provider, so they take any text: what they cannot read passes through unchanged, and
// nothing is ever thrown.
//
// Date-times are wall-clock readings without a zone. They travel in QDateTime with the
// Qt::UTC spec only so that no daylight-saving rule can move them; which clock a reading
// belongs to (UTC, the machine's, the station's) is said by the routine that makes it.

#include <QDateTime>
#include <QLocale>
#include <QString>
#include <QTimeZone>

#include <optional>

namespace Tarnby
{

// The locale whose date patterns, month names and order every routine here uses. It is
// read from the system on first use; tests and a change of the system locale call
// LoadDatePatterns again.
void LoadDatePatterns(const QLocale &locale = QLocale::system());
QLocale dateLocale();

// The machine's time zone for UTC and local conversions; an invalid zone means the
// system's. Tests fix it so that they do not depend on the machine.
void setLocalTimeZone(const QTimeZone &zone);

// A wall-clock reading of a date and a time.
QDateTime wallClock(const QDate &date, const QTime &time = QTime(0, 0));

// Reads a date, a time, or both, the way the system reads dates: numbers in the system's
// order (a four-digit or above-31 first number makes it year-first, and a day and month
// that do not fit are tried the other way round), month names of the locale in full, by
// their abbreviation or their first three letters, weekday names ignored, two-digit
// years 00-29 in 2000-2029 and 30-99 in 1930-1999, a time as h:mm[:ss] or h with an
// optional AM/PM. A time alone lies on 30 December 1899; a date alone at midnight;
// a day and month alone in the present year. Anything else gives no value.
std::optional<QDateTime> readDate(const QString &text);

// Makes a short-date pattern usable for reading and printing: weekday fields become
// "dd", else month names become "MM", and the pattern must still tell June from another
// month. A pattern that fails, "MMMM dd yyyy", or one with other than three parts gives
// way to the first of the locale's own date patterns that passes, then to "M/d/yyyy".
QString CleanShortDatePattern(const QString &pattern);
// The cleaned short-date pattern and the time pattern (with "AM/PM" for the locale's
// half-day marker) of the date locale, as pictures for formatDateTime.
QString GetShortDatePattern();
QString GetTimePattern();
// The order of the short-date pattern ("DMY", "MDY" or "YMD") and its separator.
QString systemDateOrder();
QString systemDateSeparator();

// A date whose part order is known ("DMY", "MDY", "YMD"; "" to infer it: a part above 31
// is the year, a part above 12 is not the month) to the system's short date, padded as
// the pattern says; a time behind the date is kept behind it, after one blank. Month
// names are matched by their first three letters. A text that does not make a real date
// comes back unchanged.
QString NormaliseDate(const QString &text, const QString &sourceOrder);

// A date of unknown order to one in the system's order: numeric parts are kept, month
// names become their numbers, words are dropped, and the parts are joined by the
// system's separator. When the month or a leading four-digit year tells the roles, the
// parts go into the system's order; otherwise they keep theirs. With keepTime a time in
// the text is kept, behind the date when keepTimeAfter (the usual form), else in front of
// it. A text with nothing usable comes back unchanged.
QString FixDateFormat(const QString &text, bool keepTime = false, bool keepTimeAfter = true);

// A time (or a date with a time) for display: "hh:mm[:ss]" with Use24 on, otherwise
// "h:mm[:ss] AM/PM", without " AM"/" PM" when noAmPm. trimMinutes removes ":00:00"
// (with keepMinutes on the 24-hour clock it becomes ":00"). A text that is no time even
// after FixDateFormat comes back unchanged.
QString FormatTime(const QString &text, bool noAmPm = false, bool trimMinutes = false,
                   bool noSeconds = false, bool keepMinutes = false);

// The text the system gives a date-time: the short date and the time pattern, the date
// alone at midnight, the time alone on 30 December 1899.
QString generalDateText(const QDateTime &dt);

// The light left at the station, as "H:MM" until the end of light. kind 1 counts to dusk
// between dawn and dusk, any other kind to sunset between sunrise and sunset (the Sun
// branch, row 1). Outside those hours, or without the data, it is "0:00". The station's
// time is its clock at the download (now-date-hour-number, -minute-number, -am-pm-abbrv),
// else "observed", else LastUpdated/CurrentTimeStamp.
// withDate also takes the station's date (now-date-month/day/year-number) and, outside
// the hours of light, counts to the next start of light: today's, or tomorrow's (row 2).
QString StationLocalNow(int kind, bool withDate = false);

// The present time in UTC, from clock(); the machine's offset as a bias in minutes
// (UTC = local + bias, so 300 in New York in winter), now or at noon of a local date.
QDateTime UtcNow();
int UtcOffsetMinutes();
int biasMinutesOn(const QDate &localDate);
QDateTime localNow();

// Between UTC and the machine's local time, by the offset in force at that moment.
QDateTime utcToLocal(const QDateTime &utc);
QDateTime localToUtc(const QDateTime &local);
// A UTC date text to local date text (generalDateText); unreadable text is returned as is.
QString utcTextToLocal(const QString &text);

} // namespace Tarnby
