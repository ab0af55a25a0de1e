#pragma once
// The scripts the program runs in a skin page. A call into the skin's own functions is
// guarded ("try {...} catch(err){}"), so that a skin lacking the function is no error.

#include <QString>

namespace Tarnby
{

// "try {<call>} catch(err){}"
QString GuardedCall(const QString &call);
// A text as a script string literal in single quotes.
QString ScriptString(const QString &text);
// The arguments of the skin's refreshRealtimeData: the live readings as the providers
// give them, then the units in force ('<temperature unit>','<wind>','<pressure>',
// '<rain>','<visibility>') and 'true' or 'false' for Conversion/WindInDegrees.
QString RealtimeScriptArguments(const QString &readings);
// The observed time stamp for the skin's refreshObservedTimeStamp: [OBSERVED TIMEZONE]
// without its "Updated ".
QString ObservedTimeStampText();

} // namespace Tarnby
