// Parse command: one downloaded document through its parser into the selected station's
// cache, as a retrieval run hands it over, then the branch the parser wrote. The kinds
// are the alert documents and the forecast documents.

#include "alerts/alertingestion.h"
#include "app/cli/command.h"
#include "core/files.h"
#include "core/weathercache.h"
#include "providers/forecasts.h"

#include <QFileInfo>

namespace Tarnby::Cli
{

namespace
{

// A document kind: its parser, the cache branch it writes and, where the parser keeps
// one, the flag that says the document could not be read.
struct ParseKind {
    const char *kind;
    void (*parse)(const QString &documentPath);
    const char *section;
    bool (*failed)();
};

// A document given by hand is always read, whatever the stamps of the cache say.
const ParseKind kParseKinds[] = {
    {"nws-alerts", ProcessNwsAlerts, "Alerts", AlertsFailed},
    {"pulse-alerts", ProcessWeatherBugAlerts, "Alerts", AlertsFailed},
    {"daily", [](const QString &path) { ReadDailyForecast(path, true); }, "Daily",
     [] { return ForecastFailed(ForecastDocument::Daily); }},
    {"hourly", [](const QString &path) { ReadHourlyForecast(path, true); }, "Hourly",
     [] { return ForecastFailed(ForecastDocument::Hourly); }},
    {"uv", ReadUvForecast, "UV", [] { return ForecastFailed(ForecastDocument::Uv); }},
    {"nws-text", ReadNwsForecastText, "Daily",
     [] { return ForecastFailed(ForecastDocument::NwsText); }},
};

const ParseKind *findKind(const QString &name)
{
    for (const ParseKind &kind : kParseKinds) {
        if (name == QLatin1String(kind.kind)) return &kind;
    }
    return nullptr;
}

QString kindNames()
{
    QStringList names;
    for (const ParseKind &kind : kParseKinds)
        names.append(QString::fromLatin1(kind.kind));
    return names.join(QStringLiteral(", "));
}

int parse(const QStringList &args, Io &io)
{
    const ParseKind *kind = args.size() == 2 ? findKind(args.at(0)) : nullptr;
    if (!kind)
        return usageError(*findCommand(QStringLiteral("parse")), io,
                          QStringLiteral("KIND is one of ") + kindNames());
    const QString path = QFileInfo(args.at(1)).absoluteFilePath();
    if (!FileExists(path)) {
        io.err << "tarnby-cli parse: no file " << path << Qt::endl;
        return 1;
    }
    kind->parse(path);
    for (const QString &line : CacheBranchLines(QString::fromLatin1(kind->section)))
        io.out << line << Qt::endl;
    if (kind->failed && kind->failed()) {
        io.err << "tarnby-cli parse: the document could not be read; the branch is as it was"
               << Qt::endl;
        return 1;
    }
    return 0;
}
TARNBY_CLI_COMMAND({"parse", "KIND FILE",
                    "read a downloaded document into the station's cache, print the branch",
                    &parse});

} // namespace

} // namespace Tarnby::Cli
