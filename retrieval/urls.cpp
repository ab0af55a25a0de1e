#include "retrieval/urls.h"

#include "core/processvalues.h"
#include "retrieval/hosts.h"

#include <QUrl>

namespace Tarnby
{

namespace
{

bool isAsciiAlphanumeric(QChar c)
{
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) ||
           (c >= QLatin1Char('a') && c <= QLatin1Char('z')) ||
           (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

QString withSslOff(const QString &url)
{
    return url +
           (url.contains(QLatin1Char('?')) ? QStringLiteral("&ssl=0") : QStringLiteral("?ssl=0"));
}

} // namespace

QString VendorUrl(const QString &url)
{
    if (!process().VendorPlainHttp) return url;
    const QString secure = HostUrl(Host::Vendor);
    const QString hostName = QUrl(secure).host();
    if (hostName.isEmpty() || !url.contains(hostName) || url.contains(QStringLiteral("ssl=0")) ||
        !url.contains(QStringLiteral("https://")))
        return url;
    QString lowered = url.toLower();
    lowered.replace(secure.toLower(), HostUrl(Host::VendorPlain));
    return withSslOff(lowered);
}

QString RelayUrl(const QString &url)
{
    return HostUrl(Host::Vendor) + QStringLiteral("/get?url=") + UrlEncode(url);
}

QString RelayIfOldSystem(const QString &url)
{
    if (process().WindowsMajor > 9) return url;
    const QString lowered = url.toLower();
    for (Host host :
         {Host::MesoWestApi, Host::NwsApi, Host::NwsWesternRegion, Host::EarthNetworksApi})
        if (lowered.startsWith(HostUrl(host).toLower())) return RelayUrl(url);
    return url;
}

QString UrlEncode(const QString &text)
{
    QString result = text;
    const qsizetype scanLength = text.size(); // taken once; escapes lengthen result
    for (qsizetype i = 0; i < scanLength; ++i) {
        const QChar c = result.at(i);
        if (isAsciiAlphanumeric(c)) continue;
        if (c == QLatin1Char(' '))
            result[i] = QLatin1Char('+');
        else
            result.replace(i, 1, QLatin1Char('%') + QString::number(c.unicode(), 16).toUpper());
    }
    return result;
}

} // namespace Tarnby
