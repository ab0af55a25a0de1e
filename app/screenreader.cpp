#include "app/screenreader.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QVariant>

namespace Tarnby
{

bool ScreenReaderActive()
{
    if (!QDBusConnection::sessionBus().isConnected()) return false;
    QDBusInterface status(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                          QStringLiteral("org.a11y.Status"), QDBusConnection::sessionBus());
    if (!status.isValid()) return false;
    return status.property("ScreenReaderEnabled").toBool();
}

} // namespace Tarnby
