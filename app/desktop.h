#pragma once
// The desktop half of the program: the interface window, joined to the timers, the
// retrieval run and the single-instance signal. Built with the windows only.

#include "presentation/interfacewindow.h"

namespace Tarnby
{

class Scheduler;
class SingleInstance;
struct StartupState;

class Desktop
{
public:
    // Installs the window's part of the run's and the timers' hooks, and shows the
    // window unless the program starts to the tray (General/StartMin).
    Desktop(Scheduler &scheduler, SingleInstance &instance, const StartupState &state);

    frmIface &window() { return m_window; }

private:
    void installHooks(Scheduler &scheduler);
    void greetNewcomer(const StartupState &state);

    frmIface m_window;
};

} // namespace Tarnby
