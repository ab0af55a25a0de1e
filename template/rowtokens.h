#pragma once
// What the rows of the forecast loops share: a row piece expanded as a working text, and
// token families of one stem with a list of suffixes.

#include "template/passtools.h"
#include "template/tokentext.h"

#include <QString>

#include <initializer_list>

namespace Tarnby
{

using SuffixList = std::initializer_list<const char *>;

// Every "[stem suffix]" of the list that occurs, with value(suffix) as its value.
template <class ValueFn>
void expandFamily(TokenText &row, const QString &stem, SuffixList suffixes, ValueFn value)
{
    for (const char *suffix : suffixes) {
        const QString words = QLatin1StringView(suffix);
        expandToken(row, tokenName(stem, words), [&] { return value(words); });
    }
}

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
