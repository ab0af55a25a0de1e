#pragma once
// The program's own feels-like temperature, for readings whose station reports none.

namespace Tarnby
{

// Degrees Fahrenheit as the body feels them: the wind chill at 50 °F and below with
// wind of 3 mph or more, the heat index at 80 °F and above, the air temperature in
// between. Humidity is in percent, wind in miles per hour.
double feelsLikeF(double temperatureF, double humidity, double windMph);

} // namespace Tarnby
