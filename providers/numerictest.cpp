#include "providers/numerictest.h"

#include "core/processvalues.h"

namespace Tarnby
{

namespace
{

QChar symbolOr(const QString &symbol, QChar fallback)
{
    return symbol.size() == 1 ? symbol.at(0) : fallback;
}

bool isAsciiDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isSign(QChar c)
{
    return c == QLatin1Char('+') || c == QLatin1Char('-');
}

// Reads an optional exponent at pos; true when the text ends cleanly behind it.
bool exponentEndsText(const QString &text, qsizetype pos)
{
    if (pos == text.size()) return true;
    if (text.at(pos) != QLatin1Char('e') && text.at(pos) != QLatin1Char('E')) return false;
    ++pos;
    if (pos < text.size() && isSign(text.at(pos))) ++pos;
    const qsizetype firstDigit = pos;
    while (pos < text.size() && isAsciiDigit(text.at(pos)))
        ++pos;
    return pos > firstDigit && pos == text.size();
}

} // namespace

bool looksNumeric(const QString &text)
{
    const QString t = text.trimmed();
    const QChar decimal = symbolOr(process().DecimalSymbol, QLatin1Char('.'));
    const QChar group = symbolOr(process().GroupSymbol, QLatin1Char(','));
    qsizetype pos = 0;
    if (pos < t.size() && isSign(t.at(pos))) ++pos;
    int digits = 0;
    bool seenDecimal = false;
    for (; pos < t.size(); ++pos) {
        const QChar c = t.at(pos);
        if (isAsciiDigit(c))
            ++digits;
        else if (c == decimal && !seenDecimal)
            seenDecimal = true;
        else if (c != group || seenDecimal || digits == 0)
            break;
    }
    return digits > 0 && exponentEndsText(t, pos);
}

} // namespace Tarnby
