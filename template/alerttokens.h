#pragma once
// The texts behind [ALERTS INFO], [ALERTS INFO PLAIN], [ALERTS FULL TEXT] and
// [ALERTS FULL TEXT PLAIN] come from the alert formatters, which belong to the alert
// subsystem above this one: the program installs them at start.

#include <QString>

#include <functional>

namespace Tarnby
{

// fullText: the bulletins, else the short titles; html: with the HTML dress.
using AlertTextSource = std::function<QString(bool fullText, bool html)>;

// Installs the formatters; without them the tokens read empty.
void setAlertTextSource(AlertTextSource source);

QString AlertsTokenText(bool fullText, bool html);

} // namespace Tarnby
