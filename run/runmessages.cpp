#include "run/runmessages.h"

namespace Tarnby
{

namespace
{

const QString kVerify = QStringLiteral("Please verify the following:\n");
const QString kConnected = QStringLiteral("1) You're connected to the Internet.\n");
const QString kNotBlocked =
    QStringLiteral("2) Your software (e.g. firewall software, security software) is not\n"
                   "     blocking Internet access to Tarnby.");

} // namespace

QString RunErrorMessage(const QString &errorText)
{
    if (errorText == RunError::NoStation)
        return QStringLiteral(
            "Before attempting to retrieve the weather information, you must\n"
            "select a station in the \"Weather Stations\" section of the Tarnby Options.\n\n"
            "Would you like to setup your station now?");
    if (errorText == RunError::NoConnection || errorText == RunError::NotOnline)
        return QStringLiteral("Tarnby was not able to locate your Internet connection.\n\n") +
               kVerify + kConnected + kNotBlocked;
    if (errorText == RunError::ServerNotFound)
        return QStringLiteral("Tarnby was not able to retrieve the weather data.\n") + kVerify +
               kConnected + kNotBlocked +
               QStringLiteral("\n3) Your computer and/or network is not preventing you from\n"
                              "     viewing the WeatherBug and Weather Underground web sites.");
    if (errorText == RunError::ProxyAuthenticationRequired)
        return QStringLiteral("Please verify that you've entered the correct proxy\n"
                              "username and password in the \"Advanced\" --> \"Internet\"\n"
                              "section of the Tarnby Options.");
    if (errorText == RunError::WinHttpNotConfigured)
        return QStringLiteral("WinHTTP is not properly configured on your system.\n"
                              "You can resolve this issue by installing the latest Microsoft\n"
                              "Windows updates.");
    return errorText;
}

} // namespace Tarnby
