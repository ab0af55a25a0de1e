// Template commands: expand, export.

#include "app/cli/command.h"
#include "core/files.h"
#include "derive/units.h"
#include "template/expander.h"
#include "template/exportlog.h"

namespace Tarnby::Cli
{

namespace
{

// Prints the expansion of a template file for the selected station, as the interface
// (--entities) or an export (--force-loops) would make it.
int expand(const QStringList &args, Io &io)
{
    const Command &command = *findCommand(QStringLiteral("expand"));
    QString file;
    bool entities = false, forceLoops = false;
    for (const QString &arg : args) {
        if (arg == QStringLiteral("--entities"))
            entities = true;
        else if (arg == QStringLiteral("--force-loops"))
            forceLoops = true;
        else if (file.isEmpty() && !arg.startsWith(QLatin1Char('-')))
            file = arg;
        else
            return usageError(command, io, QStringLiteral("unexpected argument %1").arg(arg));
    }
    if (file.isEmpty()) return usageError(command, io, QStringLiteral("no template file given"));
    if (!FileExists(file)) {
        io.err << "tarnby-cli expand: cannot read " << file << Qt::endl;
        return 1;
    }
    LoadConversionSettings();
    io.out << ExpandTemplate(ReadFile(file), entities, forceLoops) << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"expand", "FILE [--entities] [--force-loops]",
                    "print a template file expanded for the selected station", &expand});

// Writes the export and the log now, as the end of a retrieval does.
int exportNow(const QStringList &args, Io &io)
{
    if (!args.isEmpty()) return usageError(*findCommand(QStringLiteral("export")), io);
    LoadConversionSettings();
    RunExport();
    RunLog();
    return 0;
}
TARNBY_CLI_COMMAND({"export", "", "write the export and log files now, when they are enabled",
                    &exportNow});

} // namespace

} // namespace Tarnby::Cli
