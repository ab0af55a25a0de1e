#pragma once
// The "is this text a number" test that station values go through, and the value of
// such a text.
//
// It follows the user's locale the way the rest of the program does: blanks around
// the text are ignored, a leading sign, the locale's group symbol between digits, one
// decimal symbol and an exponent are accepted. "N/A" and the empty text are not numbers.
// Providers keep this one test until the shared number formatting of derive/ is
// linked here; then it gives way to that one.

#include <QString>
#include <QStringView>

#include <optional>

namespace Tarnby
{

bool looksNumeric(QStringView text);
// For callers with a QString or a text literal.
inline bool looksNumeric(const QString &text)
{
    return looksNumeric(QStringView(text));
}

// The value of a text that looksNumeric accepts; nothing for any other text and for
// values beyond the range of a double, as a failed conversion.
std::optional<double> numericValue(QStringView text);

// The value made a whole number, halves rounded to even as the program's whole-number
// conversion does; nothing when the text is no number or the value lies beyond int.
std::optional<int> wholeNumberValue(QStringView text);

} // namespace Tarnby
