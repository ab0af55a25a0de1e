// Retrieval commands: run, cache.

#include "app/cli/command.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "retrieval/fetch.h"
#include "run/retrievalrun.h"
#include "run/runprogress.h"

#include <QObject>

namespace Tarnby::Cli
{

namespace
{

struct RunOutcome {
    bool finished = false;
    bool ok = false;
    QString errorText;
};

// One manual retrieval of the selected station: a line per progress step, then "ok" or
// the run's error text. Message boxes of the run go to stderr.
int run(const QStringList &args, Io &io)
{
    const bool alertsOnly = args == QStringList{QStringLiteral("--alerts-only")};
    if (!args.isEmpty() && !alertsOnly) return usageError(*findCommand(QStringLiteral("run")), io);
    setMessageBoxSink([&io](const QString &, const QString &text) { io.err << text << Qt::endl; });
    RunOutcome outcome;
    int shown = -1;
    QObject listener;
    RetrievalProgress *progress = &retrievalProgress();
    QObject::connect(progress, &RetrievalProgress::percentChanged, &listener, [&](int percent) {
        if (percent != shown) io.out << "progress " << percent << '%' << Qt::endl;
        shown = percent;
    });
    QObject::connect(
        progress, &RetrievalProgress::downloadsCompleted, &listener,
        [&](int completed) { io.out << "downloads " << completed << "/10" << Qt::endl; });
    QObject::connect(progress, &RetrievalProgress::runFinished, &listener,
                     [&](bool ok, const QString &errorText) {
                         outcome = {true, ok, errorText};
                     });
    UpdateTheWeather(false, alertsOnly, false);
    setMessageBoxSink({});
    if (!outcome.finished) {
        io.out << "not run" << Qt::endl;
        return 1;
    }
    io.out << (outcome.ok ? QStringLiteral("ok") : outcome.errorText) << Qt::endl;
    return outcome.ok ? 0 : 1;
}
TARNBY_CLI_COMMAND({"run", "[--alerts-only]",
                    "retrieve the weather of the selected station once; exit 1 when it failed",
                    &run});

void printSection(const QString &name, Io &io)
{
    for (const QString &line : CacheBranchLines(name))
        io.out << line << Qt::endl;
}

// The current station's cache sections, by name.
QStringList cacheSections()
{
    const QString prefix = CacheSection(QString());
    QStringList names;
    for (const QString &section : SettingsStore::active()->sections())
        if (section.startsWith(prefix, Qt::CaseInsensitive))
            names.append(section.mid(prefix.size()));
    names.sort(Qt::CaseInsensitive);
    return names;
}

// "key=value" lines sorted by key; without a section, every section under a "[name]" line.
int cache(const QStringList &args, Io &io)
{
    if (args.size() > 1) return usageError(*findCommand(QStringLiteral("cache")), io);
    if (args.size() == 1) {
        printSection(args.first(), io);
        return 0;
    }
    for (const QString &name : cacheSections()) {
        io.out << '[' << name << ']' << Qt::endl;
        printSection(name, io);
    }
    return 0;
}
TARNBY_CLI_COMMAND({"cache", "[SECTION]",
                    "print the selected station's Weather cache, one key=value a line", &cache});

} // namespace

} // namespace Tarnby::Cli
