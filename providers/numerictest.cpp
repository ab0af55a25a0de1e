#include "providers/numerictest.h"

#include "core/processvalues.h"

#include <QVarLengthArray>

#include <charconv>
#include <cmath>
#include <limits>

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
bool exponentEndsText(QStringView text, qsizetype pos)
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

// Plain digits, the common case of station values, without the general reader.
std::optional<double> plainDigitsValue(QStringView text)
{
    if (text.isEmpty() || text.size() > 15) return std::nullopt;
    double value = 0;
    for (QChar c : text) {
        if (!isAsciiDigit(c)) return std::nullopt;
        value = value * 10 + (c.unicode() - u'0');
    }
    return value;
}

} // namespace

bool looksNumeric(QStringView text)
{
    const QStringView t = text.trimmed();
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

std::optional<double> numericValue(QStringView text)
{
    if (const std::optional<double> plain = plainDigitsValue(text)) return plain;
    if (!looksNumeric(text)) return std::nullopt;
    const QChar decimal = symbolOr(process().DecimalSymbol, QLatin1Char('.'));
    const QChar group = symbolOr(process().GroupSymbol, QLatin1Char(','));
    // looksNumeric has vouched for the characters: digits, sign, marks and exponent.
    QVarLengthArray<char, 64> c;
    for (QChar ch : text.trimmed()) {
        if (ch == decimal)
            c.append('.');
        else if (ch != group && ch != QLatin1Char('+'))
            c.append(char(ch.unicode()));
    }
    double value = 0;
    const auto [end, error] = std::from_chars(c.data(), c.data() + c.size(), value);
    if (error != std::errc() || end != c.data() + c.size()) return std::nullopt;
    return value;
}

std::optional<int> wholeNumberValue(QStringView text)
{
    const std::optional<double> value = numericValue(text);
    if (!value) return std::nullopt;
    const double whole = std::nearbyint(*value);
    if (!(whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max()))
        return std::nullopt;
    return int(whole);
}

} // namespace Tarnby
