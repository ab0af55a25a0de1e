#include "template/alerttokens.h"

#include "core/weathercache.h"
#include "template/cachereads.h"

#include <QStringList>

namespace Tarnby
{

QString AlertsTokenText(bool fullText, bool html)
{
    const QString section = QStringLiteral("Alerts");
    const QString field = fullText ? QStringLiteral("msg-body") : QStringLiteral("short-title");
    QStringList parts;
    const int count = CacheCount(section);
    for (int n = 1; n <= count; ++n) {
        const QString part = CacheValue(section, field + QString::number(n));
        if (!part.isEmpty()) parts.append(part);
    }
    if (fullText)
        return parts.join(html ? QStringLiteral("<BR><BR><BR><BR><BR>") : QStringLiteral("\r\n"));
    if (parts.isEmpty()) return QStringLiteral("N/A");
    const QString last = parts.takeLast();
    if (parts.isEmpty()) return last;
    return parts.join(QStringLiteral(", ")) +
           (html ? QStringLiteral(" &amp; ") : QStringLiteral(" & ")) + last;
}

} // namespace Tarnby
