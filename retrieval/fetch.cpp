#include "retrieval/fetch.h"

#include "core/clock.h"
#include "core/files.h"
#include "core/log.h"
#include "core/paths.h"
#include "core/processvalues.h"
#include "retrieval/children.h"
#include "retrieval/hosts.h"
#include "retrieval/urls.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QNetworkInformation>
#include <QRegularExpression>
#include <QTemporaryFile>
#include <QThread>

#include <cmath>

namespace Tarnby
{

namespace
{

constexpr int kRoundsPerTick = 10;
constexpr int kParseDownloadSeconds = 30;
constexpr int kRemoteLogSeconds = 30;

double &timeScale()
{
    static double scale = 1.0;
    return scale;
}

std::function<void(const QString &, const QString &)> &messageBoxSink()
{
    static std::function<void(const QString &, const QString &)> sink;
    return sink;
}

bool timeIsUp(int timeoutSeconds, qint64 startTime)
{
    return clock().monotonicMs() - startTime > FetchLimitMs(timeoutSeconds);
}

bool statusWritten(const QString &statusFile)
{
    return QFileInfo(statusFile).size() > 0;
}

// "yyyyMMddhmmss": the hour has no leading zero, as the services have always seen it.
QString withCacheBuster(const QString &url)
{
    return url + (url.contains(QLatin1Char('?')) ? QLatin1Char('&') : QLatin1Char('?')) +
           clock().now().toString(QStringLiteral("yyyyMMddhmmss"));
}

QString downloadUrl(const QString &url, bool addCacheBuster)
{
    return VendorUrl(addCacheBuster ? withCacheBuster(url) : url);
}

// One round of a wait: a 1 ms sleep and an event pump.
void pumpRound()
{
    QThread::msleep(1);
    QCoreApplication::processEvents();
}

QString downloadArguments(const QString &url, const QString &outputFile, const QString &statusFile)
{
    return url + QLatin1Char('|') + outputFile + QLatin1Char('|') + statusFile;
}

// The two temporary files of one synchronous download, deleted when it is done.
struct TransferFiles {
    QString output = TempFileName(kTempPrefix);
    QString status = TempFileName(kTempPrefix);
    ~TransferFiles()
    {
        DeleteFile(output);
        DeleteFile(status);
    }
    bool made() const { return !output.isEmpty() && !status.isEmpty(); }
};

} // namespace

void setFetchTimeScale(double scale)
{
    timeScale() = scale;
}

qint64 FetchLimitMs(int seconds)
{
    return std::llround(seconds * 1000.0 * timeScale());
}

void PumpedSleep(int ticks)
{
    for (int round = 0; round < ticks * kRoundsPerTick; ++round)
        pumpRound();
}

QString TempFolder()
{
    const QString profile = process().ProfilePath;
    const QString folder = profile.isEmpty() ? QDir::tempPath() + QStringLiteral("/Tarnby")
                                             : profile + QStringLiteral("/Temp");
    QDir().mkpath(folder);
    return folder;
}

QString TempFileName(const QString &prefix)
{
    QTemporaryFile file(TempFolder() + QLatin1Char('/') + prefix + QStringLiteral("XXXXXX.tmp"));
    file.setAutoRemove(false);
    if (!file.open()) {
        Log(QStringLiteral("Cannot make a temporary file in %1: %2 (TempFileName)")
                .arg(TempFolder(), file.errorString()));
        return {};
    }
    return file.fileName();
}

void DeleteTempFiles(const QString &prefix)
{
    QDir folder(TempFolder());
    const QStringList names =
        folder.entryList({prefix + QStringLiteral("*.tmp"), prefix + QStringLiteral("*.exe")},
                         QDir::Files | QDir::Hidden);
    for (const QString &name : names)
        folder.remove(name);
}

qint64 LaunchDownload(const QString &arguments, bool addCacheBuster)
{
    // No shared web cache sits between the children and the network, so there is no
    // cached copy to evict before a download.
    const qsizetype bar = arguments.indexOf(QLatin1Char('|'));
    const QString url = bar < 0 ? arguments : arguments.left(bar);
    const QString files = bar < 0 ? QString() : arguments.mid(bar);
    return LaunchProcess(HelperProgram(QStringLiteral("dl")),
                         {downloadUrl(url, addCacheBuster) + files});
}

qint64 LaunchParseDownload(const QString &url, const QString &outputFile, const QString &statusFile,
                           bool addCacheBuster)
{
    return LaunchProcess(HelperProgram(QStringLiteral("tbdownloader")),
                         {downloadUrl(url, addCacheBuster), outputFile, statusFile});
}

void StartJob(DownloadJob &job, int &activeDownloads)
{
    if (!job.Url.isEmpty()) {
        job.OutputFile = TempFileName(kTempPrefix);
        job.StatusFile = TempFileName(kTempPrefix);
        job.ProcessId = LaunchDownload(downloadArguments(job.Url, job.OutputFile, job.StatusFile));
    }
    job.StartTime = clock().monotonicMs();
    job.Started = true;
    ++activeDownloads;
}

bool DownloadFinished(const QString &statusFile, int timeoutSeconds, qint64 startTime)
{
    return timeIsUp(timeoutSeconds, startTime) || QFileInfo::exists(statusFile);
}

bool DownloadTimedOut(const QString &, int timeoutSeconds, qint64 startTime)
{
    return timeIsUp(timeoutSeconds, startTime);
}

bool WaitForDownload(const QString &statusFile, qint64 processId, int timeoutSeconds,
                     std::optional<qint64> startTime)
{
    if (processId < 1) return true;
    const qint64 start = startTime.value_or(clock().monotonicMs());
    bool childEnded = false;
    do {
        pumpRound();
        childEnded = !ChildRunning(processId);
    } while (!statusWritten(statusFile) && !childEnded && !timeIsUp(timeoutSeconds, start));
    // Checked once more: the child may have written its status and ended within the round.
    if (statusWritten(statusFile)) return true;
    if (childEnded) {
        Log(QStringLiteral("Download process %1 ended without a status (WaitForDownload)")
                .arg(processId));
        return false;
    }
    EndChild(processId);
    Log(QStringLiteral("Download process %1 timed out and was ended (WaitForDownload)")
            .arg(processId));
    return false;
}

QString ReadStatus(const QString &statusFile)
{
    return ReadFile(statusFile).trimmed().remove(QStringLiteral("\r\n"));
}

double StatusValue(const QString &status)
{
    static const QRegularExpression leadingNumber(
        QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)([eE][+-]?\\d+)?"));
    const QRegularExpressionMatch match = leadingNumber.match(status);
    return match.hasMatch() ? match.captured().trimmed().toDouble() : 0.0;
}

QString DownloadIt(const QString &url, int timeoutSeconds)
{
    const TransferFiles files;
    if (!files.made()) return {};
    const qint64 pid = LaunchDownload(downloadArguments(url, files.output, files.status));
    if (WaitForDownload(files.status, pid, timeoutSeconds) &&
        StatusValue(ReadStatus(files.status)) == DownloadStatus::Ok)
        return ReadFile(files.output);
    return {};
}

QString ResolveParseUrl(const QString &url)
{
    if (!url.contains(QStringLiteral("?parse=")) && !url.contains(QStringLiteral("&parse=")))
        return url;
    const TransferFiles files;
    if (!files.made()) return url;
    const qint64 pid = LaunchParseDownload(url, files.output, files.status, false);
    if (WaitForDownload(files.status, pid, kParseDownloadSeconds) &&
        ReadFile(files.status).trimmed() == QStringLiteral("0"))
        return ReadFile(files.output);
    return url;
}

bool IsOnline()
{
    static const bool loaded =
        QNetworkInformation::loadBackendByFeatures(QNetworkInformation::Feature::Reachability);
    const QNetworkInformation *information = QNetworkInformation::instance();
    if (!loaded || !information) return true;
    return information->reachability() != QNetworkInformation::Reachability::Disconnected;
}

void setMessageBoxSink(std::function<void(const QString &, const QString &)> sink)
{
    messageBoxSink() = std::move(sink);
}

void ShowMessageBox(const QString &text)
{
    if (messageBoxSink())
        messageBoxSink()(QStringLiteral("Tarnby"), text);
    else
        Log(text);
}

QString MissingProgramFileMessage(const QString &name)
{
    const QString folder = QFileInfo(HelperProgram(name)).absolutePath();
    return QStringLiteral(
               "The \"%1\" file could not be found in your Tarnby installation at \"%2\".\n"
               "Please reinstall Tarnby to restore this file.")
        .arg(name, folder);
}

bool RequireProgramFile(const QString &name, bool showMessage)
{
    if (QFileInfo::exists(HelperProgram(name))) return true;
    if (showMessage) ShowMessageBox(MissingProgramFileMessage(name));
    return false;
}

QString RemoteLogUrl(const QString &message)
{
    return HostUrl(Host::Vendor) + QStringLiteral("/tarnby/App/Log/?Version=") +
           QStringLiteral(TARNBY_VERSION) + QStringLiteral("&Message=") + UrlEncode(message);
}

void InstallRemoteLog()
{
    setRemoteLogSink(
        [](const QString &message) { DownloadIt(RemoteLogUrl(message), kRemoteLogSeconds); });
}

} // namespace Tarnby
