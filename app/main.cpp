// tarnby: the desktop program. Built with the windows it shows the interface window
// and runs retrievals on the timers; built without them it runs start-up headless,
// reports what it did, and lives on as the one running instance until ended.
//
//   tarnby [--demo] [--profile DIR] [-i] [-id] [station=CODE] [monthlydb=PATH] [pid=N]
//
// --demo runs against the built-in demo service on a demo profile of its own.

#include "app/demo.h"
#include "app/singleinstance.h"
#include "app/startup.h"
#include "app/wiring.h"
#include "core/log.h"
#include "core/paths.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "run/scheduler.h"

#ifdef TARNBY_GUI
#include "app/desktop.h"

#include <QApplication>
#endif
#include <QCoreApplication>
#include <QRegularExpression>
#include <QSocketNotifier>
#include <QTextStream>

#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

using namespace Tarnby;

namespace
{

int signalPipe[2] = {-1, -1};
// Set by a signal that came before the event loop ran, when quit() cannot end it.
bool quitRequested = false;

void onSignal(int)
{
    const char byte = 1;
    [[maybe_unused]] const auto written = ::write(signalPipe[1], &byte, 1);
}

// SIGINT and SIGTERM end the program through its one way out.
void quitOnSignals(QCoreApplication &app)
{
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) return;
    auto *notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &app);
    QObject::connect(notifier, &QSocketNotifier::activated, &app, [] {
        quitRequested = true;
        QCoreApplication::quit();
    });
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
}

// The command line as one text, as start-up's substring tests expect it; the
// --profile and --demo options are taken out first.
QString commandLine(QStringList arguments, bool &demo)
{
    arguments.removeFirst();
    demo = arguments.removeAll(QStringLiteral("--demo")) > 0;
    if (demo) setProfileOverride(Demo::defaultProfile());
    const qsizetype profile = arguments.indexOf(QStringLiteral("--profile"));
    if (profile >= 0 && profile + 1 < arguments.size()) {
        setProfileOverride(arguments.at(profile + 1));
        arguments.remove(profile, 2);
    }
    return arguments.join(QLatin1Char(' '));
}

// Step 2 of start-up: a second instance hands over and leaves.
bool handOverToRunningInstance(SingleInstance &instance, const QString &line)
{
    if (instance.becomePrimary()) return false;
    const qsizetype pid = line.indexOf(QStringLiteral("pid="));
    if (pid >= 0) {
        bool numeric = false;
        const qint64 id = line.mid(pid + 4).section(QLatin1Char(' '), 0, 0).toLongLong(&numeric);
        if (numeric) EndHelperProcess(id);
    } else {
        instance.sendToPrimary(QStringLiteral("TarnbyLaunched"));
    }
    return true;
}

// The demo shows on the console too that the station's documents arrive: the latest
// observation, fetched through a helper process.
void showDemoObservation(QTextStream &out)
{
    const QString url =
        HostUrl(Host::NwsApi) + QStringLiteral("/stations/KTIW/observations/latest");
    const QString document = DownloadIt(url, 30);
    out << "fetched " << url << " (" << document.size() << " characters)" << Qt::endl;
    static const QRegularExpression field(
        QStringLiteral(R"re("(textDescription|rawMessage|timestamp)": "([^"]*)")re"));
    for (auto match = field.globalMatch(document); match.hasNext();) {
        const QRegularExpressionMatch m = match.next();
        out << "  " << m.captured(1) << ": " << m.captured(2) << Qt::endl;
    }
}

// What the Weather cache of the station holds, section by section.
void showCacheSummary(QTextStream &out)
{
    const QString prefix = CacheSection(QString());
    for (const QString &section : SettingsStore::active()->sections())
        if (section.startsWith(prefix, Qt::CaseInsensitive))
            out << "  cache " << section.mid(prefix.size()) << ": "
                << SettingsStore::active()->keys(section).size() << " values" << Qt::endl;
}

} // namespace

int main(int argc, char **argv)
{
#ifdef TARNBY_GUI
    PrepareBrowserEngine();
    QApplication app(argc, argv);
#else
    QCoreApplication app(argc, argv);
#endif
    QCoreApplication::setApplicationName(QStringLiteral("Tarnby"));
    quitOnSignals(app); // also during start-up, whose retrieval pumps events
    QTextStream out(stdout);
    bool demoWanted = false;
    const QString line = commandLine(QCoreApplication::arguments(), demoWanted);

    SingleInstance instance;
    if (handOverToRunningInstance(instance, line)) {
        out << "Tarnby is already running; it was asked to show its window." << Qt::endl;
        return 0;
    }
    QObject::connect(&instance, &SingleInstance::messageReceived, [&out](const QString &message) {
        out << "message from a second start: " << message << Qt::endl;
    });

    OpenSettingsStore(line);
    Demo demo;
    if (demoWanted) {
        if (!demo.startService()) {
            QTextStream(stderr) << "tarnby: the demo documents are missing from " << ProgramFolder()
                                << Qt::endl;
            return 1;
        }
        ChooseProfileFolder();
        demo.prepareProfile();
        out << "Demo service on " << demo.address() << Qt::endl;
    }
    InstallRetrievalWiring();
    const StartupState state = RunStartup(line);
    out << "Tarnby " << ProgramVersion() << " started" << Qt::endl;
    for (const QString &done : state.done)
        out << "  " << done << Qt::endl;
    Scheduler scheduler(ProviderSchedulerHooks());
#ifdef TARNBY_GUI
    Desktop desktop(scheduler, instance, state);
#endif
    if (demoWanted) showDemoObservation(out);
    StartTimersAndFirstRetrieval(scheduler, state);
    showCacheSummary(out);
    out << "Running; Ctrl-C ends it." << Qt::endl;

    const int code = quitRequested ? 0 : app.exec();
    ExitTB();
    return code;
}
