#pragma once
// The promises of the routines that take any text from the network, checked on one text:
// no crash, missing values pass through, number forms stay number forms. Shared by the
// randomized test and the libFuzzer harness.

#include <QString>

namespace Tarnby::Test
{

// Runs `text` through number reading and formatting, TidyNumberText, the conversions,
// RewriteForecast, ChanceFromForecast, DayPartOfHour and the date readers (NormaliseDate,
// FixDateFormat, FormatTime), under units and options chosen
// by `variant`. Gives an empty text when every promise holds, else the broken one.
QString brokenTextPromise(const QString &text, unsigned variant);

} // namespace Tarnby::Test
