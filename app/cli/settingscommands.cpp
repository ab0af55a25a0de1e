// Settings commands: get, set, delete.

#include "app/cli/command.h"
#include "core/settingsstore.h"

namespace Tarnby::Cli
{

namespace
{

int get(const QStringList &args, Io &io)
{
    if (args.size() != 2) return usageError(*findCommand(QStringLiteral("get")), io);
    io.out << GetPref(args.at(0), args.at(1)) << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"get", "SECTION KEY", "print a setting (an empty line when missing)", &get});

int set(const QStringList &args, Io &io)
{
    if (args.size() != 3) return usageError(*findCommand(QStringLiteral("set")), io);
    SavePref(args.at(0), args.at(1), args.at(2));
    return 0;
}
TARNBY_CLI_COMMAND({"set", "SECTION KEY VALUE", "store a setting", &set});

int deleteSection(const QStringList &args, Io &io)
{
    if (args.size() != 1) return usageError(*findCommand(QStringLiteral("delete")), io);
    DelPref(args.at(0));
    return 0;
}
TARNBY_CLI_COMMAND({"delete", "SECTION", "delete a section and all sections beneath it",
                    &deleteSection});

} // namespace

} // namespace Tarnby::Cli
