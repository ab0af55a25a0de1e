#pragma once
// tarnby-cli run as a script would run it: the real binary beside the test program, on
// a profile folder of the test's own.

#include <QCoreApplication>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace Tarnby::Test
{

struct CliResult {
    int code = -1;
    QString out, err;
};

inline CliResult runCli(const QString &profileFolder, const QStringList &arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/tarnby-cli"),
                  QStringList{QStringLiteral("--profile"), profileFolder} + arguments);
    process.waitForFinished(120000);
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace Tarnby::Test
