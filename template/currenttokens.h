#pragma once
// The current-conditions pass of template expansion: temperatures in all their dresses,
// pressure, humidity, humidex, icon, sun times, rain, UV, visibility and wind of
// "Current", and the graphs over the hourly forecast.

#include "template/tokentext.h"

#include <QString>

namespace Tarnby
{

QString ExpandCurrentTokens(QString text);
void ExpandCurrentTokens(TokenText &text);

} // namespace Tarnby
