#include "app/desktop.h"

#include "app/singleinstance.h"
#include "app/startup.h"
#include "app/wiring.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "presentation/skinfolder.h"
#include "retrieval/fetch.h"
#include "run/runhooks.h"
#include "run/scheduler.h"
#include "template/exportlog.h"

#include <QApplication>
#include <QFontDatabase>
#include <QMessageBox>
#include <QTextStream>

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

} // namespace

Desktop::Desktop(Scheduler &scheduler, SingleInstance &instance, const StartupState &state)
{
    QApplication::setQuitOnLastWindowClosed(false); // the program lives on in the tray
    installHooks(scheduler);
    QObject::connect(&instance, &SingleInstance::messageReceived, &m_window,
                     [this] { m_window.ShowInterface(); });
    WriteFontList(QFontDatabase::families(), state.Upgrade);
    endAfterFirstPageWhenAsked(m_window);
    if (GetPref(QStringLiteral("General"), QStringLiteral("StartMin")) != QStringLiteral("True")) {
        process().InterfaceShown = false;
        m_window.ShowInterface();
    }
    greetNewcomer(state);
}

void Desktop::installHooks(Scheduler &scheduler)
{
    RetrievalHooks run = retrievalHooks();
    run.interfaceBusy = [this] { return m_window.WebBrowserGetBusy(); };
    // After a run the page is made anew from the new data.
    run.refreshInterface = [this] { m_window.RefreshInterface(false, true); };
    setRetrievalHooks(run);

    SchedulerHooks timers = ProviderSchedulerHooks();
    timers.refreshInterface = [this] { m_window.RefreshInterface(false, true); };
    timers.showRealtimeReading = [this](const QString &readings) {
        m_window.ShowRealtimeReading(readings);
        RunExport();
        RunLog();
    };
    scheduler.setHooks(timers);

    setMessageBoxSink([](const QString &title, const QString &text) {
        QMessageBox::information(nullptr, title, text);
    });

    InterfaceHooks window;
    window.updateWeather = [&scheduler] { scheduler.requestUpdateAfterStationChange(); };
    window.exitProgram = [] { QCoreApplication::quit(); };
    m_window.setHooks(window);
}

// The help page on a first run, and after the skin was reset to the stock one.
void Desktop::greetNewcomer(const StartupState &state)
{
    if (state.FirstRun || (state.Runs > 0 && state.SkinReset)) m_window.ShowHelp();
}

} // namespace Tarnby
