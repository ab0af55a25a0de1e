#include "app/cli/command.h"

#include <algorithm>
#include <cstring>

namespace Tarnby::Cli
{

namespace
{
QList<Command> &registry()
{
    static QList<Command> commands;
    return commands;
}
} // namespace

void registerCommand(const Command &command)
{
    registry().append(command);
}

const Command *findCommand(const QString &name)
{
    for (const Command &command : registry())
        if (name == QLatin1String(command.name)) return &command;
    return nullptr;
}

QList<Command> allCommands()
{
    QList<Command> sorted = registry();
    std::sort(sorted.begin(), sorted.end(),
              [](const Command &a, const Command &b) { return std::strcmp(a.name, b.name) < 0; });
    return sorted;
}

int usageError(const Command &command, Io &io, const QString &why)
{
    if (!why.isEmpty()) io.err << "tarnby-cli " << command.name << ": " << why << Qt::endl;
    io.err << "usage: tarnby-cli " << command.name << ' ' << command.usage << Qt::endl;
    return 2;
}

} // namespace Tarnby::Cli
