#include "run/dbususeractivity.h"

#include <QDBusReply>

namespace Tarnby
{

int DBusIdleSeconds()
{
    const QDBusReply<uint> reply = CallScreenSaver(QStringLiteral("GetSessionIdleTime"));
    return reply.isValid() ? static_cast<int>(reply.value() / 1000) : 0;
}

} // namespace Tarnby
