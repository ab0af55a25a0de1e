// tarnby-cli: the headless front end for scripts, status bars and checks.
//
//   tarnby-cli [-i] [--profile DIR] COMMAND [ARGS...]
//
// Options come before the command; everything after the command is its arguments,
// taken as text even when it begins with "-" (set Conversion Offset -5).

#include "app/cli/command.h"
#include "app/startup.h"
#include "app/wiring.h"
#include "core/paths.h"
#include "core/settingsstore.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>

using namespace Tarnby;
using namespace Tarnby::Cli;

namespace
{

int help(const QStringList &, Io &io)
{
    io.out << "usage: tarnby-cli [-i] [--profile DIR] COMMAND [ARGS...]" << Qt::endl;
    io.out << "options: -i  use the profile file <user>.ini for settings; "
              "--profile DIR  keep profile and settings under DIR"
           << Qt::endl;
    for (const Command &command : allCommands())
        io.out << "  " << QString::fromLatin1(command.name).leftJustified(10) << ' '
               << QString::fromLatin1(command.usage).leftJustified(28) << ' ' << command.help
               << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"help", "", "list the commands", &help, false});

struct Invocation {
    bool useIni = false;
    QString profile;
    QString command;
    QStringList args;
    QString error;
};

Invocation parseArguments(const QStringList &arguments)
{
    Invocation call;
    qsizetype i = 1;
    for (; i < arguments.size(); ++i) {
        const QString &word = arguments.at(i);
        if (word == QStringLiteral("-i")) {
            call.useIni = true;
        } else if (word == QStringLiteral("--profile")) {
            if (++i >= arguments.size()) {
                call.error = QStringLiteral("--profile needs a folder");
                return call;
            }
            call.profile = arguments.at(i);
        } else if (word.startsWith(QLatin1Char('-'))) {
            call.error = QStringLiteral("unknown option %1").arg(word);
            return call;
        } else {
            break;
        }
    }
    if (i < arguments.size()) {
        call.command = arguments.at(i);
        call.args = arguments.mid(i + 1);
    }
    return call;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    Io io{out, err};

    const Invocation call = parseArguments(QCoreApplication::arguments());
    if (!call.error.isEmpty() || call.command.isEmpty()) {
        err << "tarnby-cli: "
            << (call.error.isEmpty() ? QStringLiteral("no command given") : call.error) << Qt::endl
            << "usage: tarnby-cli [-i] [--profile DIR] COMMAND [ARGS...]; tarnby-cli help lists "
               "the commands"
            << Qt::endl;
        return 2;
    }
    const Command *command = findCommand(call.command);
    if (!command) {
        err << "tarnby-cli: unknown command " << call.command
            << "; tarnby-cli help lists the commands" << Qt::endl;
        return 2;
    }
    if (command->needsStore) {
        setProfileOverride(call.profile);
        OpenSettingsStore(call.useIni ? QStringLiteral("-i") : QString());
        ChooseProfileFolder();
        LoadProcessValues();
        InstallRetrievalWiring();
    }
    const int code = command->run(call.args, io);
    out.flush();
    SettingsStore::close();
    return code;
}
