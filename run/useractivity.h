#pragma once
// Whether someone is at the machine: the seconds since the last input, and whether the
// screen saver runs. The desktop answers over D-Bus (org.freedesktop.ScreenSaver); where
// it does not answer, the user counts as active and no screen saver as running. Tests
// install their own answer.

namespace Tarnby
{

class UserActivity
{
public:
    virtual ~UserActivity() = default;
    virtual int idleSeconds() = 0;
    virtual bool screenSaverRunning() = 0;
};

// The answer in force; nullptr restores the desktop's. Not owned.
void setUserActivity(UserActivity *activity);

// Seconds since the last keyboard or pointer input; 0 when unknown.
int IdleSeconds();
// True while the screen saver runs; false when unknown.
bool ScreenSaverRunning();

} // namespace Tarnby
