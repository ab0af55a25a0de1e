#pragma once
// The texts behind [ALERTS INFO], [ALERTS INFO PLAIN], [ALERTS FULL TEXT] and
// [ALERTS FULL TEXT PLAIN]. The alert formatters proper belong to the alert subsystem;
// until the engine is pointed at them, this one function reads the Alerts branch of the
// cache directly: the short titles joined, or the bulletins one after the other.

#include <QString>

namespace Tarnby
{

QString AlertsTokenText(bool fullText, bool html);

} // namespace Tarnby
