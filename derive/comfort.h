#pragma once
// Humidex from temperature and dew point, and the colours and words that skins show for
// temperatures and humidex. Pure functions on numeric text; a text that is not a number
// counts as the sentinel 999, which has the darkest colour.
//
// Cache keys: "humidex" (°F) and "humidexC" (°C) in "\Current", humidex<i> and
// humidex<i>C in "\Hourly", both whole numbers or "N/A".

#include <QString>

namespace Tarnby
{

// Humidex in whole °C (rounded half to even) from a temperature and a dew point in °F.
// The temperature is taken in °C as the display shows it (whole degrees, or tenths with
// UseTenths). A missing input, or arithmetic that runs out of range, gives 0.
int ComputeHumidex(const QString &temperatureF, const QString &dewPointF);
// (°F - 32) / 1.8 + 273.15, up to 15 significant digits; a missing value passes through.
QString FahrenheitToKelvin(const QString &value);

// "humidex"/"humidexC" of "\Current" from "temp" and "dew-point"; "N/A" for both unless
// both inputs are numeric.
void WriteCurrentHumidex();
// The same for each hour of "\Hourly", from temperature<i> and dew-point<i>.
void WriteHourlyHumidex();

// The colour of a temperature in °F; the text may carry a dress behind an "&" ("72&deg;").
QString TemperatureColour(const QString &text);
// The colour of a humidex given in °F.
QString HumidexColour(const QString &text);
// "Comfortable" to "Very Dangerous" for a humidex given in °F; "N/A" for a text that is not
// a number.
QString HumidexDescription(const QString &text);

} // namespace Tarnby
