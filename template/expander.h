#pragma once
// Template expansion: a skin, a tooltip, an export file or an alert popup is text with
// square-bracket tokens in it, made into finished text from the Weather cache of the
// current station, the settings and a few computed values.
//
// There is no parser. Expansion is a fixed sequence of passes, each a sequence of
// replacements of literal tokens, and later passes see what earlier ones produced:
//   1. the misc pass (misctokens.h)          5. daily loops
//   2. the current pass (currenttokens.h)    6. moon loops
//   3. period sequence loops (loops.h)       7. hourly loops
//   4. daily sequence loops                  8. with useEntities: HTML entities
// Flat tokens inside a loop body are therefore expanded once, before the body repeats.
// Tokens no pass knows stay in the text as they stand; a token without data becomes "N/A".
// Nothing fails outwards; a template without tokens comes back unchanged.

#include <QString>

namespace Tarnby
{

// useEntities: the degree sign becomes "&deg;" and "&ndash;" is greyed. forceLoops: the
// loops look for their constructs even when their gate prefix is absent (exports).
QString ExpandTemplate(const QString &text, bool useEntities, bool forceLoops);

} // namespace Tarnby
