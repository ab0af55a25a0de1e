#pragma once
// The desktop half of the program: the interface window and the hidden owner of the
// tray, joined to each other, to the timers, the retrieval run, the station switch and
// the single-instance signal. Built with the windows only.

#include "presentation/frmmisc.h"
#include "presentation/tooltipwindow.h"
#include "presentation/interfacewindow.h"

namespace Tarnby
{

class Scheduler;
class SingleInstance;
struct StartupState;

// Before the application object: the embedded browser refuses to start for root with
// its sandbox on, so for root it runs without (as in containers and test machines).
void PrepareBrowserEngine();

class Desktop
{
public:
    // Builds the tray, installs the desktop's part of every hook set, and shows the
    // window unless the program starts to the tray (General/StartMin).
    Desktop(Scheduler &scheduler, SingleInstance &instance, const StartupState &state);

    frmIface &window() { return m_window; }
    frmMisc &tray() { return m_tray; }

private:
    void installHooks(Scheduler &scheduler);
    TrayHooks trayHooks(Scheduler &scheduler);
    InterfaceHooks interfaceHooks(Scheduler &scheduler);
    void refreshTooltip();
    void greetNewcomer(const StartupState &state);

    frmIface m_window;
    frmMisc m_tray;
};

} // namespace Tarnby
