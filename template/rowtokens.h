#pragma once
// What the rows of the forecast loops share.

#include "template/passtools.h"
#include "template/tokentext.h"

#include <QString>

namespace Tarnby
{

// A temperature that is given as a number in °F, dressed by its suffix; "PLAIN NOT
// CONVERTED" gives the number itself, "COLOR" its colour.
QString GivenTemperature(const QString &value, const QString &suffix);

// A span of two values: the one value when the two read the same as text, otherwise
// both, each shown by `shown`, joined by the separator ("&ndash;").
template <class ShowFn>
QString SpanOf(const QString &low, const QString &high, const QString &separator, ShowFn shown)
{
    return low == high ? shown(low) : shown(low) + separator + shown(high);
}

} // namespace Tarnby
