#pragma once
// The "is this text a number" test that station values go through.
//
// It follows the user's locale the way the rest of the program does: blanks around
// the text are ignored, a leading sign, the locale's group symbol between digits, one
// decimal symbol and an exponent are accepted. "N/A" and the empty text are not numbers.
// Providers keep this one test until the shared number formatting of derive/ is
// linked here; then it gives way to that one.

#include <QString>

namespace Tarnby
{

bool looksNumeric(const QString &text);

} // namespace Tarnby
