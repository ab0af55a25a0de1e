#pragma once
// The fetch layer. The program never downloads in its own process: each download is a
// child (dl, or tbdownloader for "parse" links) that writes the body to one temporary
// file and a numeric status to another, the status last. The user-interface thread
// stays responsive by pumping events while it waits for the status file.
//
// Times: job start times and time limits are milliseconds of clock().monotonicMs();
// setFetchTimeScale shortens every limit given in seconds (tests use it).

#include <QString>

#include <functional>
#include <optional>

namespace Tarnby
{

// What a child writes into its status file.
namespace DownloadStatus
{
constexpr int Ok = 0;
constexpr int ServerNotFound = 3; // host not resolved or not reachable
constexpr int Unauthorized = 401; // the server refused the token
constexpr int ProxyAuthenticationRequired = 407;
} // namespace DownloadStatus

// One queued download of a retrieval run.
struct DownloadJob {
    QString Url; // empty: nothing is launched, the job still counts as started
    QString OutputFile;
    QString StatusFile;
    bool Started = false;
    bool Finished = false;
    bool Enabled = false;
    qint64 StartTime = 0; // clock().monotonicMs() at launch
    qint64 ProcessId = 0;
};

// Every limit of seconds becomes seconds * 1000 * scale milliseconds. 1 in the program.
void setFetchTimeScale(double scale);
qint64 FetchLimitMs(int seconds);

// Waits n ticks of about 10 ms, each made of 10 rounds of a 1 ms sleep and an event
// pump, so timers and clicks run during the wait.
void PumpedSleep(int ticks);

// <ProfilePath>/Temp (before the profile is known, the system's temp folder/Tarnby),
// created when missing.
QString TempFolder();
// A new, empty, uniquely named file "<prefix>*.tmp" in TempFolder(); empty on failure.
QString TempFileName(const QString &prefix);
// Deletes "<prefix>*.tmp" and "<prefix>*.exe" in TempFolder(). The prefix in use is "TBL".
void DeleteTempFiles(const QString &prefix);
inline const QString kTempPrefix = QStringLiteral("TBL");

// arguments: "<url>|<outputfile>|<statusfile>". The URL (with a time stamp added when
// addCacheBuster) goes through VendorUrl; starts dl. Returns the pid, 0 on failure.
qint64 LaunchDownload(const QString &arguments, bool addCacheBuster = false);
// The same for tbdownloader, which resolves the "parse" instruction of url to a link.
qint64 LaunchParseDownload(const QString &url, const QString &outputFile, const QString &statusFile,
                           bool addCacheBuster = false);

// Launches the job when its Url is not empty (making its two temporary files); in
// every case records StartTime, sets Started and adds 1 to activeDownloads.
void StartJob(DownloadJob &job, int &activeDownloads);
// True when the time is up or the status file exists. Temporary files exist from the
// moment they are made, so for a started job this holds at once; WaitForDownload then
// waits for the status itself.
bool DownloadFinished(const QString &statusFile, int timeoutSeconds, qint64 startTime);
// True when the time is up.
bool DownloadTimedOut(const QString &statusFile, int timeoutSeconds, qint64 startTime);
// Waits, pumping events, until the status file holds text (true). A pid below 1 gives
// true at once. On time-out the child is ended; a child that ended without a status
// is not waited for; both give false. startTime defaults to now.
bool WaitForDownload(const QString &statusFile, qint64 processId, int timeoutSeconds,
                     std::optional<qint64> startTime = std::nullopt);

// The status file's text, trimmed, with CR-LF removed; empty when missing.
QString ReadStatus(const QString &statusFile);
// The numeric value of a status text: its leading number, what follows ignored; 0 for
// an empty or non-numeric text (so a timed-out job reads as success without data).
double StatusValue(const QString &status);

// Synchronous download through dl: the body on status 0, else (or on time-out) the
// empty text. Both temporary files are deleted in every case.
QString DownloadIt(const QString &url, int timeoutSeconds);
// A URL holding "?parse=" or "&parse=" is resolved by tbdownloader (30 seconds) to the
// link it names; any other URL, or any failure, comes back unchanged.
QString ResolveParseUrl(const QString &url);

// False only when the system knows it is disconnected; unknown counts as online.
bool IsOnline();

// The desktop layer shows message boxes (title "Tarnby"); without a sink the text
// goes to Log.
void setMessageBoxSink(std::function<void(const QString &title, const QString &text)> sink);
void ShowMessageBox(const QString &text);

// Tests for the helper program beside the executable; when it is missing and
// showMessage, shows MissingProgramFileMessage(name).
bool RequireProgramFile(const QString &name, bool showMessage);
QString MissingProgramFileMessage(const QString &name);

// Installs the remote half of Log: each line goes to the vendor service's log path
// with DownloadIt (30 seconds), the answer ignored.
void InstallRemoteLog();
QString RemoteLogUrl(const QString &message);

} // namespace Tarnby
