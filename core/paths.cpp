#include "core/paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

namespace Tarnby
{

namespace
{
QString &overrideDir()
{
    static QString dir;
    return dir;
}

QString executableDir()
{
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath()
                                        : QDir::currentPath();
}
} // namespace

QString ProgramFolder()
{
    if (const QString fromEnv = qEnvironmentVariable("TARNBY_PROGRAM_FOLDER"); !fromEnv.isEmpty())
        return QDir::cleanPath(fromEnv);
    return QDir::cleanPath(executableDir() + QStringLiteral("/../share/tarnby"));
}

QString HelperProgram(const QString &name)
{
    const QString fromEnv = qEnvironmentVariable("TARNBY_HELPER_FOLDER");
    const QString folder = fromEnv.isEmpty() ? executableDir() : fromEnv;
    return QDir::cleanPath(folder + QLatin1Char('/') + name);
}

QString DefaultConfigFolder()
{
    if (!overrideDir().isEmpty()) return overrideDir();
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Tarnby");
}

QString DefaultProfileFolder()
{
    if (!overrideDir().isEmpty()) return overrideDir();
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/Tarnby");
}

void setProfileOverride(const QString &dir)
{
    overrideDir() = dir.isEmpty() ? QString() : QDir(dir).absolutePath();
}

QString profileOverride()
{
    return overrideDir();
}

} // namespace Tarnby
