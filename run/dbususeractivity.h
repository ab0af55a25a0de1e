#pragma once
// The desktop's answers over the session bus: the shared call, and one file for each
// question.

#include <QDBusMessage>
#include <QString>

namespace Tarnby
{

// Calls a method of org.freedesktop.ScreenSaver and waits at most a second; an error
// message when there is no session bus or no answer.
QDBusMessage CallScreenSaver(const QString &method);

// GetSessionIdleTime (milliseconds) in seconds; 0 without an answer.
int DBusIdleSeconds();
// GetActive; false without an answer.
bool DBusScreenSaverActive();

} // namespace Tarnby
