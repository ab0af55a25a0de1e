#pragma once
// Numbers as the whole program reads and writes them: as text, in the user's locale.
//
// Three readings exist, on purpose:
// - leadingNumber: the leading number of any text ("12 mph" is 12, "abc" is 0), with "."
//   as the only decimal mark. Blanks, tabs and line feeds anywhere in the text are skipped
//   ("1 000" is 1000). A text with no digits is 0. "1e400" and other values beyond the
//   range of a double are an overflow: no value. A too small value ("1e-400") is 0.
//   There are no hexadecimal or octal forms.
// - readNumber: leadingNumber after every "," became "." - the way a cached value is
//   read, so that a value stored under a comma locale still parses ("29,92" is 29.92).
// - isNumeric: whether a text is a number in the user's locale, the test that decides
//   whether a cached value is there at all.
//
// Locale symbols are the first characters of process().DecimalSymbol and GroupSymbol,
// read at each call.

#include <QChar>
#include <QString>
#include <QStringView>

#include <optional>

namespace Tarnby
{

struct NumberSymbols {
    QChar decimal = u'.';
    QChar group = u','; // a null QChar: the locale does not group digits
};

// The user's symbols; an empty DecimalSymbol counts as ".", and a group symbol equal
// to the decimal symbol is ignored.
NumberSymbols localeSymbols();
inline constexpr NumberSymbols kInvariantSymbols{};

std::optional<double> leadingNumber(QStringView text);
std::optional<double> readNumber(QStringView text);

// True for blanks around an optional leading "+" or "-", digits with at most one
// decimal symbol, group symbols between digits of the whole part, and an optional
// exponent ("E5", "e-3"). At least one digit is needed, and the value must fit a double.
// So "", "N/A", "abc", "5-", "1e400" are not numeric. "1,5" is numeric in every locale:
// with a "," decimal symbol it is one and a half, with a "," group symbol the group
// symbol stands between two digits (as the desktop platform has always accepted it).
bool isNumeric(QStringView text);
bool isNumeric(QStringView text, NumberSymbols symbols);

// Formats a value with a number picture:
//   "#"  a digit, shown only when significant;
//   "0"  a digit, always shown (in the whole part the count from the first "0" to the
//        decimal point is the least number of digits; in the fraction, digits are shown
//        up to the last "0" and trailing zeros are dropped beyond it);
//   ","  anywhere in the whole part: digits are grouped by three;
//   "."  the decimal point; it is always shown when the picture has one.
// Other characters are ignored. The value is first taken to 15 significant digits and
// then rounded half away from zero to the picture's decimals. Like the desktop
// platform's formatter, all-"#" pictures give no digit for a zero whole part: 0.5 in
// "###.#" is ".5", 5 in "###.#" is "5.", 0 in "###" is "" (TidyNumberText repairs
// the first two). Unlike it, a negative value that shows no digit other than zero
// loses its sign: -0.01 in "0.0" is "0.0", never "-0.0".
// An empty picture gives the general form: up to 15 significant digits, no grouping.
// A value that is not finite gives an empty text.
QString formatNumber(double value, QStringView picture);
QString formatNumber(double value, QStringView picture, NumberSymbols symbols);

// Rounds half to even to a 16-bit whole number (2.5 is 2, 3.5 is 4, -2.5 is -2). A value
// outside -32768..32767 after rounding, or not finite, is an overflow: no value.
std::optional<qint16> roundToInt16(double value);

} // namespace Tarnby
