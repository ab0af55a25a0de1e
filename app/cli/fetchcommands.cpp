// Fetch commands: download.

#include "app/cli/command.h"
#include "core/files.h"
#include "retrieval/fetch.h"

namespace Tarnby::Cli
{

namespace
{

constexpr int kDownloadSeconds = 30;

// One job of the downloader, as a retrieval runs it: the status alone on the first
// line (empty when the job timed out), then the body when the status is 0.
int download(const QStringList &args, Io &io)
{
    if (args.size() != 1) return usageError(*findCommand(QStringLiteral("download")), io);
    DownloadJob job;
    job.Url = args.first();
    job.Enabled = true;
    int active = 0;
    StartJob(job, active);
    WaitForDownload(job.StatusFile, job.ProcessId, kDownloadSeconds, job.StartTime);
    const QString status = ReadStatus(job.StatusFile);
    const bool ok = !status.isEmpty() && StatusValue(status) == 0;
    io.out << status << Qt::endl;
    if (ok) io.out << ReadFile(job.OutputFile);
    DeleteFile(job.OutputFile);
    DeleteFile(job.StatusFile);
    return ok ? 0 : 1;
}
TARNBY_CLI_COMMAND({"download", "URL", "fetch one document: the status number, then the body",
                    &download});

} // namespace

} // namespace Tarnby::Cli
