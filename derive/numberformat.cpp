#include "derive/numberformat.h"

#include "core/processvalues.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string>

namespace Tarnby
{

namespace
{

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

// The characters the leading-number reading passes over wherever they stand.
bool isSkippedBlank(QChar c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

// Decimal orders of magnitude of a plain digit text ("123.4" is 3, "0.001" is -2),
// used to tell an overflow from an underflow when the parse is out of range.
long long magnitudeOf(const std::string &mantissa)
{
    const auto point = mantissa.find('.');
    const std::string whole = mantissa.substr(0, point);
    const auto firstWhole = whole.find_first_not_of("-0");
    if (firstWhole != std::string::npos) return static_cast<long long>(whole.size() - firstWhole);
    if (point == std::string::npos) return 0;
    const auto firstFraction = mantissa.find_first_not_of('0', point + 1);
    return firstFraction == std::string::npos ? 0
                                              : -static_cast<long long>(firstFraction - point - 1);
}

// Parses "[-]digits[.digits]" with an exponent already applied by from_chars. An
// out-of-range text is an overflow when its magnitude is large and 0 when it is small.
std::optional<double> parsePlain(const std::string &mantissa, long long exponent)
{
    std::string text = mantissa;
    if (exponent != 0) text += 'e' + std::to_string(exponent);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::result_out_of_range) {
        if (magnitudeOf(mantissa) + exponent > 0) return std::nullopt;
        return 0.0;
    }
    if (error != std::errc() || !std::isfinite(value)) return std::nullopt;
    return value;
}

// Reads "e", "E", "d" or "D" with an optional sign and at least one digit at `i`;
// on success moves `i` behind it. Large exponents saturate instead of wrapping.
std::optional<long long> readExponent(QStringView text, qsizetype &i, bool skipBlanks)
{
    qsizetype j = i;
    const auto skip = [&] {
        while (skipBlanks && j < text.size() && isSkippedBlank(text[j]))
            ++j;
    };
    if (j >= text.size()) return std::nullopt;
    const QChar mark = text[j].toLower();
    if (mark != u'e' && !(skipBlanks && mark == u'd')) return std::nullopt;
    ++j;
    skip();
    bool negative = false;
    if (j < text.size() && (text[j] == u'-' || text[j] == u'+')) negative = text[j++] == u'-';
    long long exponent = 0;
    bool digits = false;
    for (skip(); j < text.size() && isDigit(text[j]); ++j, skip()) {
        exponent = std::min(exponent * 10 + text[j].digitValue(), 1'000'000'000LL);
        digits = true;
    }
    if (!digits) return std::nullopt;
    i = j;
    return negative ? -exponent : exponent;
}

struct Picture {
    int wholeMinimum = 0;
    bool grouped = false;
    bool point = false;
    int fractionMaximum = 0;
    int fractionMinimum = 0;
};

Picture parsePicture(QStringView picture)
{
    Picture p;
    bool zeroSeen = false;
    for (const QChar c : picture) {
        const bool placeholder = c == u'#' || c == u'0';
        if (c == u'.' && !p.point) {
            p.point = true;
        } else if (!p.point) {
            zeroSeen = zeroSeen || c == u'0';
            if (placeholder && zeroSeen) ++p.wholeMinimum;
            if (c == u',') p.grouped = true;
        } else if (placeholder) {
            ++p.fractionMaximum;
            if (c == u'0') p.fractionMinimum = p.fractionMaximum;
        }
    }
    return p;
}

struct Digits {
    std::string whole;    // without leading zeros; empty for a zero whole part
    std::string fraction; // exactly the asked number of decimals
};

// The decimal digits of a non-negative finite value, taken to 15 significant digits and
// rounded half away from zero to `decimals` places. Working on the decimal text avoids
// the binary fuzz of scaling (1.005 is 1.01 in "0.00", as the user reads it).
Digits decimalDigits(double magnitude, int decimals)
{
    char buffer[40];
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, magnitude, std::chars_format::scientific, 14);
    const std::string text(buffer, result.ptr);
    const auto e = text.find('e');
    std::string all = text.substr(0, 1) + text.substr(2, e - 2); // 15 significant digits
    const int pointAt = std::stoi(text.substr(e + 1)) + 1;       // digits before the point
    if (pointAt < -decimals) return {{}, std::string(decimals, '0')};
    std::size_t wholeLength = 0;
    if (pointAt <= 0) {
        all.insert(0, static_cast<std::size_t>(-pointAt), '0');
    } else {
        wholeLength = static_cast<std::size_t>(pointAt);
        if (all.size() < wholeLength) all.append(wholeLength - all.size(), '0');
    }
    const std::size_t keep = wholeLength + static_cast<std::size_t>(decimals);
    if (all.size() > keep) {
        const bool roundUp = all[keep] >= '5';
        all.resize(keep);
        std::size_t i = keep;
        for (bool carry = roundUp; carry;) {
            if (i == 0) {
                all.insert(all.begin(), '1');
                ++wholeLength;
                break;
            }
            carry = all[--i] == '9';
            all[i] = carry ? '0' : static_cast<char>(all[i] + 1);
        }
    } else {
        all.append(keep - all.size(), '0');
    }
    std::string whole = all.substr(0, wholeLength);
    whole.erase(0, std::min(whole.find_first_not_of('0'), whole.size()));
    return {whole, all.substr(wholeLength)};
}

QString groupedWhole(const std::string &whole, QChar group)
{
    QString out;
    out.reserve(static_cast<qsizetype>(whole.size() + whole.size() / 3));
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (!group.isNull() && i > 0 && (whole.size() - i) % 3 == 0) out += group;
        out += QLatin1Char(whole[i]);
    }
    return out;
}

QString generalForm(double value, QChar decimal)
{
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value == 0 ? 0.0 : value,
                                      std::chars_format::general, 15);
    QString text = QString::fromLatin1(buffer, result.ptr - buffer);
    text.replace(u'.', decimal);
    return text;
}

} // namespace

NumberSymbols localeSymbols()
{
    const ProcessValues &pv = process();
    NumberSymbols symbols;
    if (!pv.DecimalSymbol.isEmpty()) symbols.decimal = pv.DecimalSymbol.front();
    symbols.group = pv.GroupSymbol.isEmpty() ? QChar() : pv.GroupSymbol.front();
    if (symbols.group == symbols.decimal) symbols.group = QChar();
    return symbols;
}

std::optional<double> leadingNumber(QStringView text)
{
    std::string mantissa;
    qsizetype i = 0;
    const auto skip = [&] {
        while (i < text.size() && isSkippedBlank(text[i]))
            ++i;
    };
    skip();
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) {
        if (text[i] == u'-') mantissa += '-';
        ++i;
    }
    bool digits = false;
    bool point = false;
    for (skip(); i < text.size(); ++i, skip()) {
        const QChar c = text[i];
        if (isDigit(c)) {
            mantissa += static_cast<char>(c.unicode());
            digits = true;
        } else if (c == u'.' && !point) {
            mantissa += '.';
            point = true;
        } else {
            break;
        }
    }
    if (!digits) return 0.0;
    const long long exponent = readExponent(text, i, true).value_or(0);
    return parsePlain(mantissa, exponent);
}

std::optional<double> readNumber(QStringView text)
{
    if (!text.contains(u',')) return leadingNumber(text);
    QString copy = text.toString();
    copy.replace(u',', u'.');
    return leadingNumber(copy);
}

bool isNumeric(QStringView text)
{
    return isNumeric(text, localeSymbols());
}

bool isNumeric(QStringView text, NumberSymbols symbols)
{
    text = text.trimmed();
    std::string mantissa;
    qsizetype i = 0;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+')) ++i;
    bool digits = false;
    for (; i < text.size(); ++i) {
        const QChar c = text[i];
        if (isDigit(c)) {
            mantissa += static_cast<char>(c.unicode());
            digits = true;
        } else if (!symbols.group.isNull() && c == symbols.group && digits && i + 1 < text.size() &&
                   isDigit(text[i + 1])) {
            continue;
        } else {
            break;
        }
    }
    if (i < text.size() && text[i] == symbols.decimal) {
        mantissa += '.';
        for (++i; i < text.size() && isDigit(text[i]); ++i) {
            mantissa += static_cast<char>(text[i].unicode());
            digits = true;
        }
    }
    if (!digits) return false;
    long long exponent = 0;
    if (i < text.size()) {
        const auto read = readExponent(text, i, false);
        if (!read || i != text.size()) return false;
        exponent = *read;
    }
    return parsePlain(mantissa, exponent).has_value();
}

QString formatNumber(double value, QStringView picture)
{
    return formatNumber(value, picture, localeSymbols());
}

QString formatNumber(double value, QStringView picture, NumberSymbols symbols)
{
    if (!std::isfinite(value)) return QString();
    if (picture.isEmpty()) return generalForm(value, symbols.decimal);
    const Picture p = parsePicture(picture);
    Digits digits = decimalDigits(std::fabs(value), p.fractionMaximum);
    while (static_cast<int>(digits.fraction.size()) > p.fractionMinimum &&
           digits.fraction.back() == '0')
        digits.fraction.pop_back();
    const bool nonZero =
        !digits.whole.empty() || digits.fraction.find_first_not_of('0') != std::string::npos;
    if (static_cast<int>(digits.whole.size()) < p.wholeMinimum)
        digits.whole.insert(0, p.wholeMinimum - digits.whole.size(), '0');
    QString out;
    if (value < 0 && nonZero) out += u'-';
    out += groupedWhole(digits.whole, p.grouped ? symbols.group : QChar());
    if (p.point) out += symbols.decimal + QLatin1String(digits.fraction);
    return out;
}

std::optional<qint16> roundToInt16(double value)
{
    if (!std::isfinite(value)) return std::nullopt;
    const double below = std::floor(value);
    const double rest = value - below;
    double rounded = below + 1;
    if (rest < 0.5 || (rest == 0.5 && std::fmod(below, 2.0) == 0)) rounded = below;
    if (rounded < std::numeric_limits<qint16>::min() ||
        rounded > std::numeric_limits<qint16>::max())
        return std::nullopt;
    return static_cast<qint16>(rounded);
}

} // namespace Tarnby
