// Station commands: stations, select.

#include "app/cli/command.h"
#include "core/processvalues.h"
#include "providers/stationselection.h"

namespace Tarnby::Cli
{

namespace
{

// One saved station a line: code, type and name separated by tabs, the selected
// station marked with "*" before its code.
int stations(const QStringList &args, Io &io)
{
    if (!args.isEmpty()) return usageError(*findCommand(QStringLiteral("stations")), io);
    for (const QString &line : ReadStationLines()) {
        const std::optional<StationEntry> entry = StationEntry::parse(line);
        if (!entry) continue;
        const QString mark = entry->Code == process().CityCode ? QStringLiteral("*") : QString();
        io.out << mark << entry->Code << '\t' << entry->StationType << '\t' << entry->City
               << Qt::endl;
    }
    return 0;
}
TARNBY_CLI_COMMAND({"stations", "",
                    "list the saved stations: code, type and name; * marks the selected one",
                    &stations});

int select(const QStringList &args, Io &io)
{
    if (args.size() != 1) return usageError(*findCommand(QStringLiteral("select")), io);
    if (!SetWeatherStationByCode(args.first())) {
        io.err << "tarnby-cli select: no saved station has the code " << args.first() << Qt::endl;
        return 1;
    }
    io.out << process().CityCode << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"select", "CODE", "make a saved station the selected one", &select});

} // namespace

} // namespace Tarnby::Cli
