#include "app/desktop.h"

#include "app/singleinstance.h"
#include "app/startup.h"
#include "app/wiring.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "presentation/links.h"
#include "presentation/skinfolder.h"
#include "providers/stationselection.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "run/retrievalrun.h"
#include "run/runhooks.h"
#include "run/scheduler.h"
#include "template/exportlog.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMenu>
#include <QMessageBox>
#include <QTextStream>

#include <unistd.h>

namespace Tarnby
{

namespace
{

// For the start-up benchmark: the program says when its first page is on screen and
// ends there.
void endAfterFirstPageWhenAsked(frmIface &window)
{
    if (qEnvironmentVariableIsEmpty("TARNBY_EXIT_AFTER_FIRST_PAGE")) return;
    QObject::connect(&window, &frmIface::pageShown, qApp, [] {
        QTextStream(stdout) << "first page shown" << Qt::endl;
        QCoreApplication::quit();
    });
}

void popUp(QMenu *menu, const QPoint &at)
{
    if (menu) menu->popup(at);
}

} // namespace

void PrepareBrowserEngine()
{
    if (::geteuid() == 0 && qEnvironmentVariableIsEmpty("QTWEBENGINE_DISABLE_SANDBOX"))
        qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
}

Desktop::Desktop(Scheduler &scheduler, SingleInstance &instance, const StartupState &state)
{
    QApplication::setQuitOnLastWindowClosed(false); // the program lives on in the tray
    installHooks(scheduler);
    QObject::connect(&instance, &SingleInstance::messageReceived, &m_tray,
                     &frmMisc::onInstanceMessage);
    WriteFontList(QFontDatabase::families(), state.Upgrade);
    m_tray.SetupTrayIcon();
    endAfterFirstPageWhenAsked(m_window);
    if (GetPref(QStringLiteral("General"), QStringLiteral("StartMin")) != QStringLiteral("True")) {
        process().InterfaceShown = false;
        m_window.ShowInterface();
    }
    greetNewcomer(state);
}

void Desktop::installHooks(Scheduler &scheduler)
{
    setMessageBoxSink([](const QString &title, const QString &text) {
        QMessageBox::information(nullptr, title, text);
    });
    m_tray.setHooks(trayHooks(scheduler));
    m_window.setHooks(interfaceHooks(scheduler));

    RetrievalHooks run = retrievalHooks();
    run.interfaceBusy = [this] { return m_window.WebBrowserGetBusy(); };
    // After a run the page is made anew from the new data.
    run.refreshInterface = [this] { m_window.RefreshInterface(false, true); };
    m_tray.addRetrievalHooks(run);
    setRetrievalHooks(run);

    SchedulerHooks timers = ProviderSchedulerHooks();
    timers.refreshInterface = [this] { m_window.RefreshInterface(false, true); };
    timers.showRealtimeReading = [this](const QString &readings) {
        m_window.ShowRealtimeReading(readings);
        m_tray.RefreshTray();
        RunExport();
        RunLog();
    };
    m_tray.addSchedulerHooks(timers);
    scheduler.setHooks(timers);

    StationSelectionHooks station;
    station.refreshInterface = [this] { m_window.RefreshInterface(false, true); };
    station.updateTheWeather = [&scheduler] { scheduler.requestUpdateAfterStationChange(); };
    station.reReadUpdateRate = [&scheduler] { scheduler.ParseUpdateRate(true); };
    m_tray.addStationSelectionHooks(station);
    setStationSelectionHooks(station);
}

TrayHooks Desktop::trayHooks(Scheduler &scheduler)
{
    TrayHooks hooks;
    hooks.showTarnby = [this] { m_window.ShowInterface(); };
    hooks.interfaceShown = [this] { return process().InterfaceShown && m_window.isVisible(); };
    hooks.updateWeather = [] { UpdateTheWeather(false, false, false); };
    hooks.updateAfterStationChange = [&scheduler] { scheduler.requestUpdateAfterStationChange(); };
    hooks.viewAlerts = [this] { m_window.ShowAlerts(false); };
    hooks.stationWebsite = [] { OpenLink(QStringLiteral("wxstationhomepage"), false); };
    hooks.vendorWebsite = [] { OpenAddress(HostUrl(Host::Vendor) + u'/'); };
    hooks.exitTarnby = [] { QCoreApplication::quit(); };
    return hooks;
}

InterfaceHooks Desktop::interfaceHooks(Scheduler &scheduler)
{
    InterfaceHooks hooks;
    hooks.updateWeather = [&scheduler] { scheduler.requestUpdateAfterStationChange(); };
    hooks.showMapMenu = [this](const QPoint &at) { popUp(m_tray.MapMenu(), at); };
    hooks.showStationMenu = [this](const QPoint &at) { popUp(m_tray.StationMenu(), at); };
    hooks.exitProgram = [] { QCoreApplication::quit(); };
    hooks.refreshTooltip = [this] { refreshTooltip(); };
    return hooks;
}

// A skinned tooltip on screen follows the new data at once.
void Desktop::refreshTooltip()
{
    frmTooltipWindow *tooltip = m_tray.tooltipWindow();
    if (tooltip && tooltip->isVisible()) tooltip->ReloadTooltipContent();
}

// The help page on a first run, and after the skin was reset to the stock one.
void Desktop::greetNewcomer(const StartupState &state)
{
    if (state.FirstRun || (state.Runs > 0 && state.SkinReset)) m_window.ShowHelp();
}

} // namespace Tarnby
