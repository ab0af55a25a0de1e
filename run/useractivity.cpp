#include "run/useractivity.h"

#include "run/dbususeractivity.h"

namespace Tarnby
{

namespace
{

UserActivity *&installed()
{
    static UserActivity *activity = nullptr;
    return activity;
}

} // namespace

void setUserActivity(UserActivity *activity)
{
    installed() = activity;
}

int IdleSeconds()
{
    return installed() ? installed()->idleSeconds() : DBusIdleSeconds();
}

bool ScreenSaverRunning()
{
    return installed() ? installed()->screenSaverRunning() : DBusScreenSaverActive();
}

} // namespace Tarnby
