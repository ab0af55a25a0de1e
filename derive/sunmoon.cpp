#include "derive/sunmoon.h"

#include "derive/numberformat.h"

#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dateformat.h"
#include "derive/dates.h"

#include <cmath>

namespace Tarnby
{

namespace
{

constexpr double kDegToRad = 0.0174532925199433;
constexpr double kRadToDeg = 1.0 / kDegToRad;
const QDate kDayZero(1899, 12, 30);
constexpr double kMsPerDay = 86400000.0;

double revolution(double degrees)
{
    return degrees - 360.0 * std::floor(degrees / 360.0);
}

// ---- sun --------------------------------------------------------------------------------

// Where the sun stands at local noon of the date, with what the event times need.
struct SunAtNoon {
    double noonUt;        // hours after 0h UT of the date
    double sinDecl;       // sine of the declination
    double sinDeclPerDay; // its change per day, to carry it to the time of each event
    double radius;        // apparent radius of the disc, degrees
};

// Days since 2000 January 0.0 UT, at 0h UT of the date.
double dayNumber(const QDate &date)
{
    const int y = date.year(), m = date.month(), d = date.day();
    return 367.0 * y - (7 * (y + (m + 9) / 12)) / 4 + (275 * m) / 9 + d - 730530;
}

// The low-precision orbital elements of the sun, at day number d.
SunAtNoon sunAt(double d, double longitude)
{
    const double w = 282.9404 + 4.70935e-5 * d; // argument of perihelion
    const double e = 0.016709 - 1.151e-9 * d;   // eccentricity
    const double meanAnomaly = revolution(356.0470 + 0.9856002585 * d);
    const double obliquity = (23.4393 - 3.563e-7 * d) * kDegToRad;
    const double meanLongitude = revolution(w + meanAnomaly);

    const double m = meanAnomaly * kDegToRad;
    const double sinM = std::sin(m), cosM = std::cos(m);
    const double eccentricAnomaly = m + e * sinM * (1.0 + e * cosM);
    const double x = std::cos(eccentricAnomaly) - e;
    const double y = std::sin(eccentricAnomaly) * std::sqrt(1.0 - e * e);
    const double lon = std::atan2(y, x) + w * kDegToRad; // true longitude, radians
    const double sinLon = std::sin(lon), cosLon = std::cos(lon);
    const double sinObliquity = std::sin(obliquity);

    const double ra = std::atan2(sinLon * std::cos(obliquity), cosLon) * kRadToDeg;
    const double raMinusL =
        revolution(ra - meanLongitude + 180.0) - 180.0; // minus the equation of time
    // The true longitude advances at the mean rate, faster near perihelion.
    const double lonPerDay = 0.9856002585 * kDegToRad * (1.0 + 2.0 * e * cosM);
    const double distance = std::sqrt(x * x + y * y); // astronomical units
    return {12.0 - longitude / 15.0 + raMinusL / 15.0, sinLon * sinObliquity,
            sinObliquity * cosLon * lonPerDay, 0.2666 / distance};
}

// One crossing of the altitude whose sine is sinAltitude; direction -1 rising, +1 setting.
// The hour angle is found at noon's declination first, then again at the declination of
// the moment it gives, which matters most at high latitudes around the equinoxes.
std::optional<double> crossing(const SunAtNoon &sun, double sinAltitude, double sinLat,
                               double cosLat, double direction)
{
    double fromNoon = 0.0; // hours
    for (int pass = 0; pass < 2; ++pass) {
        const double sinDecl = sun.sinDecl + sun.sinDeclPerDay * fromNoon / 24.0;
        const double cosDecl = std::sqrt(1.0 - sinDecl * sinDecl);
        const double cosHourAngle = (sinAltitude - sinLat * sinDecl) / (cosLat * cosDecl);
        // Above 1 the sun stays below the altitude all day, under -1 above it. Decided at noon.
        if (!(cosHourAngle >= -1.0 && cosHourAngle <= 1.0)) {
            if (pass == 0) return std::nullopt;
            break;
        }
        fromNoon = direction * std::acos(cosHourAngle) * kRadToDeg / 15.0;
    }
    return sun.noonUt + fromNoon;
}

SunCrossing crossings(const SunAtNoon &sun, double altitude, double sinLat, double cosLat,
                      double biasHours)
{
    const double sinAltitude = std::sin(altitude * kDegToRad);
    SunCrossing c{crossing(sun, sinAltitude, sinLat, cosLat, -1.0),
                  crossing(sun, sinAltitude, sinLat, cosLat, 1.0)};
    if (c.rise) *c.rise -= biasHours;
    if (c.set) *c.set -= biasHours;
    return c;
}

// A latitude or longitude: a number in the locale, or nothing ("N/A", "", "abc").
std::optional<double> numberFromText(const QString &text)
{
    return isNumeric(text) ? readNumber(text) : std::nullopt;
}

// ---- sun step ---------------------------------------------------------------------------

struct SunRow {
    const char *prefix;
    std::optional<double> hours;
};

void saveSunRow(int row, const QDate &date, const SunRow &event)
{
    const QString n = QString::number(row);
    QDateTime at = wallClock(date);
    if (event.hours) at = at.addSecs(qint64(std::lround(*event.hours * 60.0)) * 60);
    SaveCache(QStringLiteral("Sun"), QLatin1String(event.prefix) + QStringLiteral("-date") + n,
              formatDateTime(at, GetShortDatePattern(), dateLocale()));
    SaveCache(QStringLiteral("Sun"), QLatin1String(event.prefix) + QStringLiteral("-time") + n,
              event.hours ? formatDateTime(at, QStringLiteral("h:mm AM/PM"))
                          : QStringLiteral("N/A"));
}

// ---- moon -------------------------------------------------------------------------------

constexpr double kSynodicMonth = 29.530589;
constexpr double kHalfSecond = 1.158e-5 / 2.0; // days
// Lunations are counted from the new moon of 6 January 2000; the estimate below counts
// them from that of December 1922, 953 lunations earlier.
constexpr double kLunationZeroDateNumber = 8388.51399305556;
constexpr int kLunationsBefore2000 = 953;
constexpr double kEndOfDay = 86399.0 / 86400.0; // 11:59:59 PM

// The argument of one periodic term: E^ePower * sin(m M + mp M' + f F + omega Omega).
struct Argument {
    int ePower, m, mp, f, omega;
};

// Corrections to the mean phase, in days (Meeus, Astronomical Algorithms, ch. 49). New
// and full moon share their arguments.
struct SyzygyTerm {
    double newMoon, fullMoon;
    Argument argument;
};
constexpr SyzygyTerm kSyzygyTerms[] = {
    {-0.40720, -0.40614, {0, 0, 1, 0, 0}},   {0.17241, 0.17302, {1, 1, 0, 0, 0}},
    {0.01608, 0.01614, {0, 0, 2, 0, 0}},     {0.01039, 0.01043, {0, 0, 0, 2, 0}},
    {0.00739, 0.00734, {1, -1, 1, 0, 0}},    {-0.00514, -0.00515, {1, 1, 1, 0, 0}},
    {0.00208, 0.00209, {2, 2, 0, 0, 0}},     {-0.00111, -0.00111, {0, 0, 1, -2, 0}},
    {-0.00057, -0.00057, {0, 0, 1, 2, 0}},   {0.00056, 0.00056, {1, 1, 2, 0, 0}},
    {-0.00042, -0.00042, {0, 0, 3, 0, 0}},   {0.00042, 0.00042, {1, 1, 0, 2, 0}},
    {0.00038, 0.00038, {1, 1, 0, -2, 0}},    {-0.00024, -0.00024, {1, -1, 2, 0, 0}},
    {-0.00017, -0.00017, {0, 0, 0, 0, 1}},   {-0.00007, -0.00007, {0, 2, 1, 0, 0}},
    {0.00004, 0.00004, {0, 0, 2, -2, 0}},    {0.00004, 0.00004, {0, 3, 0, 0, 0}},
    {0.00003, 0.00003, {0, 1, 1, -2, 0}},    {0.00003, 0.00003, {0, 0, 2, 2, 0}},
    {-0.00003, -0.00003, {0, 1, 1, 2, 0}},   {0.00003, 0.00003, {0, -1, 1, 2, 0}},
    {-0.00002, -0.00002, {0, -1, 1, -2, 0}}, {-0.00002, -0.00002, {0, 1, 3, 0, 0}},
    {0.00002, 0.00002, {0, 0, 4, 0, 0}},
};

struct QuarterTerm {
    double coefficient;
    Argument argument;
};
constexpr QuarterTerm kQuarterTerms[] = {
    {-0.62801, {0, 0, 1, 0, 0}}, {0.17172, {1, 1, 0, 0, 0}},    {-0.01183, {1, 1, 1, 0, 0}},
    {0.00862, {0, 0, 2, 0, 0}},  {0.00804, {0, 0, 0, 2, 0}},    {0.00454, {1, -1, 1, 0, 0}},
    {0.00204, {2, 2, 0, 0, 0}},  {-0.00180, {0, 0, 1, -2, 0}},  {-0.00070, {0, 0, 1, 2, 0}},
    {-0.00040, {0, 0, 3, 0, 0}}, {-0.00034, {1, -1, 2, 0, 0}},  {0.00032, {1, 1, 0, 2, 0}},
    {0.00032, {1, 1, 0, -2, 0}}, {-0.00028, {2, 2, 1, 0, 0}},   {0.00027, {1, 1, 2, 0, 0}},
    {-0.00017, {0, 0, 0, 0, 1}}, {-0.00005, {0, -1, 1, -2, 0}}, {0.00004, {0, 0, 2, 2, 0}},
    {-0.00004, {0, 1, 1, 2, 0}}, {0.00004, {0, -2, 1, 0, 0}},   {0.00003, {0, 1, 1, -2, 0}},
    {0.00003, {0, 3, 0, 0, 0}},  {0.00002, {0, 0, 2, -2, 0}},   {0.00002, {0, -1, 1, 2, 0}},
    {-0.00002, {0, 1, 3, 0, 0}},
};

// The planetary arguments A1 to A14: constant, rate per lunation, and their corrections.
struct PlanetaryTerm {
    double base, perLunation, perT2, coefficient;
};
constexpr PlanetaryTerm kPlanetaryTerms[] = {
    {299.77, 0.107408, -0.009173, 0.000325}, {251.88, 0.016321, 0, 0.000165},
    {251.83, 26.651886, 0, 0.000164},        {349.42, 36.412478, 0, 0.000126},
    {84.66, 18.206239, 0, 0.000110},         {141.74, 53.303771, 0, 0.000062},
    {207.14, 2.453732, 0, 0.000060},         {154.84, 7.306860, 0, 0.000056},
    {34.52, 27.261239, 0, 0.000047},         {207.19, 0.121824, 0, 0.000042},
    {291.34, 1.844379, 0, 0.000040},         {161.72, 24.198154, 0, 0.000037},
    {239.56, 25.513099, 0, 0.000035},        {331.55, 3.592518, 0, 0.000023},
};

// A point on the unit circle; the periodic terms multiply these instead of taking a sine
// of every combined argument.
struct Turn {
    double c = 1.0, s = 0.0;
    Turn operator*(const Turn &o) const { return {c * o.c - s * o.s, s * o.c + c * o.s}; }
    Turn conjugate() const { return {c, -s}; }
};

Turn turn(double degrees)
{
    const double r = revolution(degrees) * kDegToRad;
    return {std::cos(r), std::sin(r)};
}

// Powers -2..4 of a turn, indexed by power + 2.
std::array<Turn, 7> powersOf(const Turn &t)
{
    std::array<Turn, 7> p;
    p[2] = Turn{};
    for (int n = 1; n <= 4; ++n)
        p[2 + n] = p[1 + n] * t;
    p[1] = t.conjugate();
    p[0] = p[4].conjugate();
    return p;
}

// The fundamental arguments of one phase, as powers of their turns.
struct PhaseArguments {
    std::array<Turn, 7> m, mp, f;
    Turn omega;
    double ePowers[3];

    double term(double coefficient, const Argument &a) const
    {
        Turn arg = m[a.m + 2] * mp[a.mp + 2] * f[a.f + 2];
        if (a.omega) arg = arg * omega;
        return coefficient * ePowers[a.ePower] * arg.s;
    }
};

double periodicSum(const PhaseArguments &args, int phase)
{
    double sum = 0.0;
    if (phase == 1 || phase == 3) {
        for (const QuarterTerm &t : kQuarterTerms)
            sum += args.term(t.coefficient, t.argument);
    } else {
        for (const SyzygyTerm &t : kSyzygyTerms)
            sum += args.term(phase == 0 ? t.newMoon : t.fullMoon, t.argument);
    }
    return sum;
}

// Earth's rotation lags the uniform time of the phase instants by delta T.
double deltaTSeconds(double year)
{
    const double t = year - 2000.0;
    if (year >= 2005.0 && year < 2050.0) return 62.92 + 0.32217 * t + 0.005589 * t * t;
    if (year >= 1986.0 && year < 2005.0)
        return 63.86 + 0.3345 * t - 0.060374 * t * t + 0.0017275 * t * t * t +
               0.000651814 * std::pow(t, 4) + 0.00002373599 * std::pow(t, 5);
    const double u = (year - 1820.0) / 100.0;
    return -20.0 + 32.0 * u * u;
}

double deltaTDays(double jd)
{
    return deltaTSeconds(2000.0 + (jd - 2451545.0) / 365.25) / 86400.0;
}

// The lunation whose new moon lies at or before jd and whose next new moon after it.
struct Lunation {
    double k;
    double newMoon;
};

// The mean phase of lunation k (a quarter more for each phase). A true new moon lies less
// than 0.75 days from the mean one (the periodic terms add up to at most 0.62 days), so a
// date farther than that from the next mean new moon needs no true one to be placed.
double meanPhase(double k)
{
    const double t = k / 1236.85;
    const double t2 = t * t;
    return 2451550.09765 + 29.530588853 * k + 0.0001337 * t2 - 1.5e-7 * t2 * t + 7.3e-10 * t2 * t2;
}
constexpr double kTrueToMeanNewMoon = 0.75;

std::optional<Lunation> lunationAt(double dateNumber, double jd)
{
    double k =
        std::floor((dateNumber - kLunationZeroDateNumber) / kSynodicMonth) - kLunationsBefore2000;
    double newMoon = GetMoonPhaseDate(k, 0);
    if (newMoon > jd) { // the true new moon may come up to half a day after the mean one
        k -= 1.0;
        newMoon = GetMoonPhaseDate(k, 0);
    }
    for (int step = 0; step < 3; ++step) {
        if (newMoon <= jd && jd < meanPhase(k + 1.0) - kTrueToMeanNewMoon)
            return Lunation{k, newMoon};
        const double next = GetMoonPhaseDate(k + 1.0, 0);
        if (newMoon <= jd && jd < next) return Lunation{k, newMoon};
        k += 1.0;
        newMoon = next;
    }
    return std::nullopt;
}

// The date at 11:59:59 PM as a date number, when that lies in the valid range.
std::optional<double> endOfDay(const QDate &date)
{
    if (!date.isValid()) return std::nullopt;
    const double number =
        double(kDayZero.daysTo(date)) + (date < kDayZero ? -kEndOfDay : kEndOfDay);
    if (!IsValidDateNumber(number)) return std::nullopt;
    return number;
}

// The lunation that holds the local date, the end of that date in UT, and where the
// date lies on the local clock.
struct LocalLunation {
    double k;
    double newMoonUt;
    double endUt;
    double dayStartLocal; // the date's 0h on the local clock, as a Julian day
    double biasDays;      // local = UT - bias
};

double phaseUt(double k, int phase)
{
    const double jde = GetMoonPhaseDate(k, phase);
    return jde - deltaTDays(jde);
}

std::optional<LocalLunation> localLunation(const QDate &date)
{
    const std::optional<double> end = endOfDay(date);
    if (!end) return std::nullopt;
    const double biasDays = biasMinutesOn(date) / 1440.0;
    const double endUt = JulianDayFromDateNumber(*end) + kHalfSecond + biasDays;
    const std::optional<Lunation> lunation = lunationAt(*end + biasDays, endUt + deltaTDays(endUt));
    if (!lunation) return std::nullopt;
    return LocalLunation{lunation->k, lunation->newMoon - deltaTDays(lunation->newMoon), endUt,
                         JulianDayFromDateNumber(std::trunc(*end)), biasDays};
}

const char *const kPhaseNames[] = {"New Moon",       "Waxing Crescent", "First Quarter",
                                   "Waxing Gibbous", "Full Moon",       "Waning Gibbous",
                                   "Last Quarter",   "Waning Crescent"};

const char *const kPhaseImages[] = {"mphase01", "mphase08", "mphase14", "mphase20"};

// The image of a crescent or gibbous moon by how much of it is lit; the steps run from
// the new moon outwards on both sides.
QString steppedImage(double percent, bool crescent, bool waxing)
{
    int step = 0; // 0 nearest the new moon, 5 nearest the quarter
    if (crescent) {
        for (const double bound : {8.4, 16.7, 25.0, 33.3, 41.6})
            if (percent >= bound) ++step;
    } else {
        for (const double bound : {90.0, 80.0, 70.0, 60.0}) // strict: 90 belongs to the lower step
            if (percent <= bound) ++step;
    }
    const int image = crescent ? (waxing ? 2 + step : 26 - step) : (waxing ? 13 - step : 15 + step);
    return QStringLiteral("mphase") + QString::number(image).rightJustified(2, u'0');
}

} // namespace

// ---- day numbers --------------------------------------------------------------------------

double dateNumberFromDateTime(const QDateTime &wallClock)
{
    const double days = double(kDayZero.daysTo(wallClock.date()));
    const double fraction = wallClock.time().msecsSinceStartOfDay() / kMsPerDay;
    return days >= 0 ? days + fraction : days - fraction;
}

QDateTime dateTimeFromDateNumber(double dateNumber)
{
    if (!std::isfinite(dateNumber) || std::fabs(dateNumber) > 3.0e6) return {};
    const double whole = std::trunc(dateNumber);
    const qint64 ms = std::llround(std::fabs(dateNumber - whole) * kMsPerDay);
    return wallClock(kDayZero.addDays(qint64(whole))).addMSecs(ms);
}

bool IsValidDateNumber(double dateNumber)
{
    return dateNumber > -657418.176956019 && dateNumber <= 2958465.99999 &&
           !(dateNumber >= -657418.0 && dateNumber <= -115859.99999);
}

bool IsValidJulianDay(double julianDay)
{
    return julianDay >= 1757593.50001 && julianDay <= 5373484.49998843;
}

double JulianDayFromDateNumber(double dateNumber)
{
    if (!IsValidDateNumber(dateNumber)) return 0.0;
    if (dateNumber >= 0.0) return dateNumber + 2415018.5;
    const double whole = std::trunc(dateNumber);
    const bool gregorian = kDayZero.addDays(qint64(whole)) >= QDate(1582, 10, 15);
    return whole + (gregorian ? 2415018.0 : 2415028.0) + 0.5 - (dateNumber - whole);
}

double DateNumberFromJulianDay(double julianDay)
{
    if (!IsValidJulianDay(julianDay)) return 0.0;
    const double value = julianDay - (julianDay < 2299160.5 ? 2415028.5 : 2415018.5);
    if (value >= 0.0) return value;
    const double whole = std::floor(value); // the day; the time still counts forward from it
    const double fraction = value - whole;
    return fraction == 0.0 ? whole : whole - fraction;
}

// ---- sun ----------------------------------------------------------------------------------

SunTimes GetSunTimes(double latitude, double longitude, const QDate &date, int biasMinutes)
{
    if (!date.isValid() || !std::isfinite(latitude) || !std::isfinite(longitude) ||
        std::fabs(latitude) > 90.0 || std::fabs(longitude) > 180.0)
        return {};
    const SunAtNoon sun = sunAt(dayNumber(date) + 0.5 - longitude / 360.0, longitude);
    const double sinLat = std::sin(latitude * kDegToRad);
    const double cosLat = std::cos(latitude * kDegToRad);
    const double biasHours = biasMinutes / 60.0;
    // Sunrise and sunset are when the upper edge of the disc meets the horizon, lifted by
    // 35' of refraction; the twilights go by the centre.
    return {crossings(sun, -35.0 / 60.0 - sun.radius, sinLat, cosLat, biasHours),
            crossings(sun, -6.0, sinLat, cosLat, biasHours),
            crossings(sun, -12.0, sinLat, cosLat, biasHours),
            crossings(sun, -18.0, sinLat, cosLat, biasHours)};
}

SunTimes GetSunTimes(const QString &latitude, const QString &longitude, const QDate &date,
                     int biasMinutes)
{
    const std::optional<double> lat = numberFromText(latitude);
    const std::optional<double> lon = numberFromText(longitude);
    if (!lat || !lon) return {};
    return GetSunTimes(*lat, *lon, date, biasMinutes);
}

void WriteSunCache(int days)
{
    // The branch is replaced as one step: a reader never sees it half written.
    const SettingsBatch batch;
    DelCache(QStringLiteral("Sun"));
    const std::optional<double> lat = numberFromText(process().Latitude);
    const std::optional<double> lon = numberFromText(process().Longitude);
    if (!lat || !lon) {
        Log(QStringLiteral("No sun times: the station's position \"%1, %2\" is not numeric "
                           "(sunmoon.WriteSunCache)")
                .arg(process().Latitude, process().Longitude));
        return;
    }
    const QDate today = localNow().date();
    for (int row = 1; row <= days; ++row) {
        const QDate date = today.addDays(row - 1);
        const SunTimes t = GetSunTimes(*lat, *lon, date, biasMinutesOn(date));
        for (const SunRow &event : {SunRow{"sunrise", t.sun.rise}, SunRow{"sunset", t.sun.set},
                                    SunRow{"dawn", t.civil.rise}, SunRow{"dusk", t.civil.set}})
            saveSunRow(row, date, event);
    }
    SaveCache(QStringLiteral("Sun"), QStringLiteral("count"), QString::number(std::max(days, 0)));
}

bool IsDaytime()
{
    return StationLocalNow(0) != QStringLiteral("0:00");
}

// ---- moon ---------------------------------------------------------------------------------

double GetMoonPhaseDate(double k, int phase)
{
    if (phase < 0 || phase > 3) return 0.0;
    k += 0.25 * phase;
    const double t = k / 1236.85;
    const double t2 = t * t, t3 = t2 * t, t4 = t3 * t;
    double jde = meanPhase(k);

    const double e = 1.0 - 0.002516 * t - 7.4e-6 * t2;
    const Turn m = turn(2.5534 + 29.10535669 * k - 2.18e-5 * t2 - 1.1e-7 * t3);
    const Turn mp =
        turn(201.5643 + 385.81693528 * k + 0.0107438 * t2 + 1.239e-5 * t3 - 5.8e-8 * t4);
    const Turn f = turn(160.7108 + 390.67050274 * k - 0.0016341 * t2 - 2.27e-6 * t3 + 1.1e-8 * t4);
    const Turn omega = turn(124.7746 - 1.5637558 * k + 0.0020691 * t2 + 2.15e-6 * t3);
    const PhaseArguments args{powersOf(m), powersOf(mp), powersOf(f), omega, {1.0, e, e * e}};
    jde += periodicSum(args, phase);
    if (phase == 1 || phase == 3) {
        const double w = 0.00306 - 0.00038 * e * m.c + 0.00026 * mp.c -
                         0.00002 * (mp * m.conjugate()).c + 0.00002 * (mp * m).c +
                         0.00002 * args.f[4].c;
        jde += phase == 1 ? w : -w;
    }
    for (const PlanetaryTerm &a : kPlanetaryTerms) {
        const double argument = a.base + a.perLunation * k + a.perT2 * t2;
        jde += a.coefficient * std::sin(revolution(argument) * kDegToRad);
    }
    return jde;
}

std::optional<double> GetMoonAge(const QDate &date)
{
    const std::optional<double> end = endOfDay(date);
    if (!end) return std::nullopt;
    const double jd = JulianDayFromDateNumber(*end) + kHalfSecond;
    const std::optional<Lunation> lunation = lunationAt(*end, jd);
    if (!lunation) return std::nullopt;
    return jd - lunation->newMoon;
}

std::optional<float> GetMoonIllumination(const QDate &date)
{
    const std::optional<double> age = GetMoonAge(date);
    if (!age) return std::nullopt;
    return float((1.0 - std::cos(2.0 * 3.14159265359 * *age / kSynodicMonth)) / 2.0 * 100.0);
}

QString GetMoonPhaseName(const QDate &date)
{
    const std::optional<LocalLunation> l = localLunation(date);
    if (!l) return QStringLiteral("N/A");
    // The phases in order: the first on the date names it; the first after the date's end
    // tells which part of the cycle the date lies in. Later phases need not be computed.
    for (int phase = 0; phase < 4; ++phase) {
        const double ut = phase == 0 ? l->newMoonUt : phaseUt(l->k, phase);
        const double local = ut - l->biasDays;
        if (local >= l->dayStartLocal && local < l->dayStartLocal + 1.0)
            return QLatin1String(kPhaseNames[2 * phase]);
        if (phase > 0 && l->endUt < ut) return QLatin1String(kPhaseNames[2 * phase - 1]);
    }
    return QLatin1String(kPhaseNames[7]);
}

QString moonImageFor(const QString &phaseName, double illumination)
{
    for (int phase = 0; phase < 4; ++phase)
        if (phaseName == QLatin1String(kPhaseNames[2 * phase]))
            return QLatin1String(kPhaseImages[phase]);
    const bool crescent = phaseName.endsWith(QStringLiteral("Crescent"));
    const bool waxing = phaseName.startsWith(QStringLiteral("Waxing"));
    if (!crescent && !phaseName.endsWith(QStringLiteral("Gibbous"))) return {};
    return steppedImage(illumination, crescent, waxing);
}

QString GetMoonPhaseImage(const QDate &date)
{
    const std::optional<float> lit = GetMoonIllumination(date);
    return lit ? moonImageFor(GetMoonPhaseName(date), *lit) : QString();
}

std::optional<std::array<QDateTime, 4>> MoonPhasesOfLunation(const QDate &date)
{
    const std::optional<LocalLunation> l = localLunation(date);
    if (!l) return std::nullopt;
    std::array<QDateTime, 4> utc;
    for (int phase = 0; phase < 4; ++phase) {
        const double ut = phase == 0 ? l->newMoonUt : phaseUt(l->k, phase);
        utc[phase] = dateTimeFromDateNumber(DateNumberFromJulianDay(ut));
    }
    return utc;
}

} // namespace Tarnby
