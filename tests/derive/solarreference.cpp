#include "tests/derive/solarreference.h"

#include <algorithm>
#include <cmath>

namespace Tarnby::Test
{

namespace
{

constexpr double kRad = 3.14159265358979323846 / 180.0;
constexpr double kDeltaTDays = 69.0 / 86400.0; // terrestrial minus universal time, near 2020

struct SunPlace {
    double ra, dec; // radians
};

double centuries(double jd)
{
    return (jd - 2451545.0) / 36525.0;
}

struct Anomalies {
    double t, mean, centre; // centuries; radians; degrees
};

Anomalies anomalies(double jdUt)
{
    const double t = centuries(jdUt + kDeltaTDays);
    const double m = (357.52911 + 35999.05029 * t - 0.0001537 * t * t) * kRad;
    const double centre = (1.914602 - 0.004817 * t - 0.000014 * t * t) * std::sin(m) +
                          (0.019993 - 0.000101 * t) * std::sin(2 * m) + 0.000289 * std::sin(3 * m);
    return {t, m, centre};
}

SunPlace apparentSun(double jdUt)
{
    const auto [t, m, centre] = anomalies(jdUt);
    const double l0 = 280.46646 + 36000.76983 * t + 0.0003032 * t * t;
    const double omega = (125.04 - 1934.136 * t) * kRad;
    const double lambda = (l0 + centre - 0.00569 - 0.00478 * std::sin(omega)) * kRad;
    const double eps0 =
        23.0 +
        (26.0 + (21.448 - 46.8150 * t - 0.00059 * t * t + 0.001813 * t * t * t) / 60.0) / 60.0;
    const double eps = (eps0 + 0.00256 * std::cos(omega)) * kRad;
    return {std::atan2(std::cos(eps) * std::sin(lambda), std::cos(lambda)),
            std::asin(std::sin(eps) * std::sin(lambda))};
}

double apparentSiderealTime(double jdUt) // radians
{
    const double t = centuries(jdUt);
    const double mean = 280.46061837 + 360.98564736629 * (jdUt - 2451545.0) + 0.000387933 * t * t -
                        t * t * t / 38710000.0;
    const double omega = (125.04452 - 1934.136261 * t) * kRad;
    const double lSun = (280.4665 + 36000.7698 * t) * kRad;
    const double lMoon = (218.3165 + 481267.8813 * t) * kRad;
    const double nutationLon = (-17.20 * std::sin(omega) - 1.32 * std::sin(2 * lSun) -
                                0.23 * std::sin(2 * lMoon) + 0.21 * std::sin(2 * omega)) /
                               3600.0;
    const double eps = 23.4393 * kRad;
    return (mean + nutationLon * std::cos(eps)) * kRad;
}

double hourAngle(double jdUt, double longitude)
{
    const double h = apparentSiderealTime(jdUt) + longitude * kRad - apparentSun(jdUt).ra;
    return std::remainder(h, 2 * 3.14159265358979323846);
}

double altitude(double jdUt, double latitude, double longitude)
{
    const SunPlace s = apparentSun(jdUt);
    const double h = hourAngle(jdUt, longitude);
    const double phi = latitude * kRad;
    return std::asin(std::sin(phi) * std::sin(s.dec) +
                     std::cos(phi) * std::cos(s.dec) * std::cos(h)) /
           kRad;
}

// The moment in [from, to] where the altitude passes `target`; the altitude must rise
// (or fall) through the interval.
double bisect(double from, double to, double latitude, double longitude, double target)
{
    const bool rising = altitude(from, latitude, longitude) < target;
    for (int i = 0; i < 50; ++i) {
        const double mid = (from + to) / 2;
        const bool below = altitude(mid, latitude, longitude) < target;
        (below == rising ? from : to) = mid;
    }
    return (from + to) / 2;
}

} // namespace

double sunDistance(double julianDayUt)
{
    const auto [t, m, centre] = anomalies(julianDayUt);
    const double e = 0.016708634 - 0.000042037 * t - 0.0000001267 * t * t;
    return 1.000001018 * (1 - e * e) / (1 + e * std::cos(m + centre * kRad));
}

ReferenceCrossing referenceCrossing(double julianDayAt0hUt, double latitude, double longitude,
                                    double target)
{
    double transit = julianDayAt0hUt + 0.5 - longitude / 360.0;
    for (int i = 0; i < 4; ++i)
        transit -= hourAngle(transit, longitude) / (2 * 3.14159265358979323846) / 1.0027379;
    const double before = transit - 0.5; // the lower culminations on either side
    const double after = transit + 0.5;
    const double lowBefore = altitude(before, latitude, longitude);
    const double lowAfter = altitude(after, latitude, longitude);
    ReferenceCrossing c{};
    c.highestAltitude = altitude(transit, latitude, longitude);
    c.lowestAltitude = std::min(lowBefore, lowAfter);
    if (c.highestAltitude > target && lowBefore < target)
        c.rise = bisect(before, transit, latitude, longitude, target);
    if (c.highestAltitude > target && lowAfter < target)
        c.set = bisect(transit, after, latitude, longitude, target);
    return c;
}

} // namespace Tarnby::Test
