#pragma once
// The commands of tarnby-cli. Each command lives in one of the *commands.cpp files of
// this folder and registers itself with TARNBY_CLI_COMMAND; `tarnby-cli help` lists
// them in name order. Output is one value per line; the command's return value is
// the exit code (0 success, 1 failure of the work, 2 bad usage).

#include <QStringList>
#include <QTextStream>

namespace Tarnby::Cli
{

struct Io {
    QTextStream &out;
    QTextStream &err;
};

using CommandFn = int (*)(const QStringList &args, Io &io);

struct Command {
    const char *name;
    const char *usage; // arguments after the name, e.g. "SECTION KEY"
    const char *help;  // one line
    CommandFn run;
    bool needsStore = true; // false: runs without opening the settings store
};

void registerCommand(const Command &command);
const Command *findCommand(const QString &name);
QList<Command> allCommands();

// For bad usage: prints "usage: tarnby-cli <name> <usage>" on err and returns 2.
int usageError(const Command &command, Io &io, const QString &why = QString());

struct Registrar {
    explicit Registrar(const Command &command) { registerCommand(command); }
};

} // namespace Tarnby::Cli

#define TARNBY_CLI_CONCAT2(a, b) a##b
#define TARNBY_CLI_CONCAT(a, b) TARNBY_CLI_CONCAT2(a, b)
// TARNBY_CLI_COMMAND({"name", "ARGS", "help line", &function}) in a commands file.
#define TARNBY_CLI_COMMAND(...)                                                                    \
    static const ::Tarnby::Cli::Registrar TARNBY_CLI_CONCAT(tarnbyCliRegistrar, __LINE__)(         \
        ::Tarnby::Cli::Command __VA_ARGS__)
