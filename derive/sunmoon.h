#pragma once
// Sun and moon, computed from the station's position and the date with no service:
// sunrise and sunset, dawn and dusk of the civil, nautical and astronomical twilights,
// the moon's phases, age, illumination and image name. The sun step keeps the times of
// the coming days in the Sun branch of the Weather cache.

#include <QDate>
#include <QDateTime>
#include <QString>

#include <array>
#include <optional>

namespace Tarnby
{

// ---- day numbers ----------------------------------------------------------------------
// A date number counts days from 30 December 1899; its fraction is the time of day.
// Before day 0 the whole part counts back while the fraction still counts forward, so
// -1.25 is 29 December 1899, 06:00. Julian days before 15 October 1582 are those of the
// Julian calendar. A conversion outside the valid range gives 0.

double dateNumberFromDateTime(const QDateTime &wallClock);
QDateTime dateTimeFromDateNumber(double dateNumber);
bool IsValidDateNumber(double dateNumber);
bool IsValidJulianDay(double julianDay);
double JulianDayFromDateNumber(double dateNumber);
double DateNumberFromJulianDay(double julianDay);

// ---- sun --------------------------------------------------------------------------------

// When the sun crosses one altitude going up and coming down, in local hours
// after midnight of the date asked for (below 0 or from 24 on when the crossing falls on
// the day before or after). No value when the sun stays above or below that altitude.
struct SunCrossing {
    std::optional<double> rise;
    std::optional<double> set;
};

// Sunrise and sunset (the upper edge of the sun at -35', the refraction at the horizon),
// and dawn and dusk with the centre at -6 (civil), -12 (nautical) and -18 (astronomical)
// degrees.
struct SunTimes {
    SunCrossing sun, civil, nautical, astronomical;
};

// latitude and longitude in degrees (north and east positive); biasMinutes turns UTC into
// local time (local = UTC - bias). A position that is not a number, or off the globe,
// gives no times.
SunTimes GetSunTimes(double latitude, double longitude, const QDate &date, int biasMinutes);
SunTimes GetSunTimes(const QString &latitude, const QString &longitude, const QDate &date,
                     int biasMinutes);

// The sun step: rewrites the Sun branch with sunrise, sunset, and civil dawn and dusk for
// `days` days from the machine's today (row 1) at the station's position, in the machine's
// local time, count last. A crossing that does not happen is stored as "N/A". Without a
// numeric position the branch is left empty.
inline constexpr int kSunCacheDays = 15;
void WriteSunCache(int days = kSunCacheDays);

// Whether the station is between sunrise and sunset now.
bool IsDaytime();

// ---- moon -------------------------------------------------------------------------------

// The Julian ephemeris day of a phase (0 new moon, 1 first quarter, 2 full moon, 3 last
// quarter) of lunation k (0 is the new moon of 6 January 2000). 0 for another phase.
double GetMoonPhaseDate(double k, int phase);

// At the end of the date: days since the last new moon, and the lit part of the disc in
// percent. No value for an invalid date or one outside the valid range.
std::optional<double> GetMoonAge(const QDate &date);
std::optional<float> GetMoonIllumination(const QDate &date);

// "New Moon", "First Quarter", "Full Moon" or "Last Quarter" on the local day of that
// phase, otherwise "Waxing Crescent", "Waxing Gibbous", "Waning Gibbous" or "Waning
// Crescent"; "N/A" for a date that cannot be used.
QString GetMoonPhaseName(const QDate &date);
// The moon image "mphase01" to "mphase26" for the date, empty for a date that cannot be used.
QString GetMoonPhaseImage(const QDate &date);
// The image for a phase name and the lit percentage: the four phases have one image each;
// crescents and gibbous moons step by the percentage. Empty for an unknown name.
QString moonImageFor(const QString &phaseName, double illumination);

// The new moon, first quarter, full moon and last quarter (UTC) of the lunation that
// holds the local date.
std::optional<std::array<QDateTime, 4>> MoonPhasesOfLunation(const QDate &date);

} // namespace Tarnby
