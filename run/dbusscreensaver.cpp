#include "run/dbususeractivity.h"

#include <QDBusReply>

namespace Tarnby
{

bool DBusScreenSaverActive()
{
    const QDBusReply<bool> reply = CallScreenSaver(QStringLiteral("GetActive"));
    return reply.isValid() && reply.value();
}

} // namespace Tarnby
