#include "run/dbususeractivity.h"

#include <QDBusConnection>

namespace Tarnby
{

namespace
{
constexpr int kAnswerLimitMs = 1000;
}

QDBusMessage CallScreenSaver(const QString &method)
{
    const QString name = QStringLiteral("org.freedesktop.ScreenSaver");
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return QDBusMessage::createError(QDBusError::Disconnected,
                                         QStringLiteral("no session bus"));
    const QDBusMessage call = QDBusMessage::createMethodCall(
        name, QStringLiteral("/org/freedesktop/ScreenSaver"), name, method);
    return bus.call(call, QDBus::Block, kAnswerLimitMs);
}

} // namespace Tarnby
