#include "core/log.h"

#include "core/clock.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"

#include <QDir>
#include <QFile>
#include <QLoggingCategory>

namespace Tarnby
{

Q_LOGGING_CATEGORY(lcTarnby, "tarnby", QtWarningMsg)

namespace
{

constexpr qint64 kLocalLogLimit = 1024 * 1024; // then tarnby.log becomes tarnby.log.1
constexpr qint64 kRemoteLogMinutes = 30;

std::function<void(const QString &)> &remoteSink()
{
    static std::function<void(const QString &)> sink;
    return sink;
}

bool localLogWanted()
{
    return !qEnvironmentVariableIsEmpty("TARNBY_LOG") ||
           GetPref(QStringLiteral("Misc"), QStringLiteral("LocalLog")) == QStringLiteral("True");
}

void writeLocal(const QString &message)
{
    const QString folder = process().ProfilePath;
    if (folder.isEmpty() || !localLogWanted()) return;
    const QString dir = folder + QStringLiteral("/Logs");
    QDir().mkpath(dir);
    const QString path = dir + QStringLiteral("/tarnby.log");
    QFile file(path);
    if (file.size() > kLocalLogLimit) {
        QFile::remove(path + QStringLiteral(".1"));
        QFile::rename(path, path + QStringLiteral(".1"));
    }
    if (file.open(QIODevice::Append | QIODevice::Text))
        file.write(
            (clock().now().toString(Qt::ISODate) + QLatin1Char(' ') + message + QLatin1Char('\n'))
                .toUtf8());
}

// The remote log switches itself off 30 minutes after it was switched on.
bool remoteLogOn()
{
    ProcessValues &pv = process();
    if (!pv.LogEnabled) return false;
    if (pv.LogStartedAt.isValid() &&
        pv.LogStartedAt.secsTo(clock().now()) > kRemoteLogMinutes * 60) {
        pv.LogEnabled = false;
        SavePref(QStringLiteral("Misc"), QStringLiteral("EnableLogging"), QStringLiteral("False"));
        return false;
    }
    return true;
}

} // namespace

void Log(const QString &message)
{
    static bool inLog = false; // the remote sink downloads, and a download may log
    if (inLog) return;
    inLog = true;
    qCInfo(lcTarnby).noquote() << message;
    writeLocal(message);
    if (remoteSink() && remoteLogOn()) remoteSink()(message);
    inLog = false;
}

void setRemoteLogSink(std::function<void(const QString &)> sink)
{
    remoteSink() = std::move(sink);
}

QString ErrorLine(int number, const QString &description, int line, const QString &where)
{
    return QStringLiteral("Error %1: %2 at line %3 (%4)")
        .arg(number)
        .arg(description)
        .arg(line)
        .arg(where);
}

} // namespace Tarnby
