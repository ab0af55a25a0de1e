#include "providers/feelslike.h"

#include <cmath>

namespace Tarnby
{

namespace
{

// The wind chill index of the US and Canadian weather services (2001).
double windChillF(double t, double v)
{
    const double windTerm = std::pow(v, 0.16);
    return 35.74 + 0.6215 * t - 35.75 * windTerm + 0.4275 * t * windTerm;
}

// The heat index regression of the US weather service (Rothfusz).
double heatIndexF(double t, double rh)
{
    return -42.379 + 2.04901523 * t + 10.14333127 * rh - 0.22475541 * t * rh - 0.00683783 * t * t -
           0.05481717 * rh * rh + 0.00122874 * t * t * rh + 0.00085282 * t * rh * rh -
           0.00000199 * t * t * rh * rh;
}

} // namespace

double feelsLikeF(double temperatureF, double humidity, double windMph)
{
    if (temperatureF <= 50 && windMph >= 3) return windChillF(temperatureF, windMph);
    if (temperatureF >= 80) return heatIndexF(temperatureF, humidity);
    return temperatureF;
}

} // namespace Tarnby
