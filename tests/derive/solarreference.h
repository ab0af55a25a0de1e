#pragma once
// An independent, more precise way to the sun's crossings, to check the program's fast one:
// the apparent position of the sun by Meeus, Astronomical Algorithms (2nd ed.), ch. 25
// (with nutation and aberration), apparent sidereal time by ch. 12, and the crossing found
// by bisection on the true altitude, with the declination and right ascension taken at
// the moment itself rather than carried from noon.

#include <optional>

namespace Tarnby::Test
{

struct ReferenceCrossing {
    std::optional<double> rise; // Julian days (UT)
    std::optional<double> set;
    double highestAltitude; // degrees, at the transit nearest local noon
    double lowestAltitude;  // degrees, half a day before it
};

// The sun's distance in astronomical units.
double sunDistance(double julianDayUt);

// The crossings of the altitude (degrees, for the sun's centre) around the transit nearest
// local noon of the day that begins at julianDayAt0hUt; longitude east positive.
ReferenceCrossing referenceCrossing(double julianDayAt0hUt, double latitude, double longitude,
                                    double altitude);

} // namespace Tarnby::Test
