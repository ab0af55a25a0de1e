#pragma once
// What a failed manual run tells the user.

#include <QString>

namespace Tarnby
{

namespace RunError
{
inline const QString NoStation = QStringLiteral("No Station");
inline const QString NoConnection = QStringLiteral("No Connection");
inline const QString NotOnline = QStringLiteral("Not Online");
inline const QString ServerNotFound = QStringLiteral("Server Not Found");
inline const QString ProxyAuthenticationRequired = QStringLiteral("Proxy Authentication Required");
inline const QString WinHttpNotConfigured = QStringLiteral("WinHTTP not configured");
} // namespace RunError

// The message box text for a run's error text; an error text of its own is shown as it is.
QString RunErrorMessage(const QString &errorText);

} // namespace Tarnby
