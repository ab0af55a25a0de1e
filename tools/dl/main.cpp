// dl "<url>|<outputfile>|<statusfile>": plain GET of <url> into <outputfile>, then the
// status number into <statusfile>, last. See tools/README.md for the contract.
#include "tools/childfetch/childsupport.h"
#include "tools/childfetch/fetch.h"

#include <fcntl.h>
#include <optional>
#include <string>
#include <unistd.h>

using namespace Tarnby::Child;

namespace
{

constexpr const char *Program = "dl";

struct DownloadJob {
    std::string url;
    JobFiles files;
};

// The URL runs up to the first "|" (a URL never holds a raw one), the status file
// follows the last, and the output file is everything between.
DownloadJob splitArgument(const std::string &argument)
{
    DownloadJob job;
    const size_t first = argument.find('|');
    const size_t last = argument.rfind('|');
    if (first == std::string::npos) return job;
    job.url = argument.substr(0, first);
    job.files.statusFile = argument.substr(last + 1);
    if (last > first) job.files.outputFile = argument.substr(first + 1, last - first - 1);
    return job;
}

// The body goes straight into the output file; only a status of 0 vouches for it, and
// any other status leaves the file empty.
int download(const DownloadJob &job)
{
    const char *output = job.files.outputFile.c_str();
    const int fd = ::open(output, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) {
        complain(Program, "cannot write " + job.files.outputFile);
        return StatusOutputNotWritten;
    }
    const FetchResult result =
        fetch(job.url, [fd](const char *data, size_t size) { return writeAll(fd, data, size); });
    const bool closed = ::close(fd) == 0;
    const int status = closed ? result.status : StatusOutputNotWritten;
    if (status != StatusOk && ::truncate(output, 0) != 0)
        complain(Program, "cannot empty " + job.files.outputFile);
    return status;
}

int run(int argc, char **argv)
{
    if (argc != 2) {
        complain(Program, "usage: dl \"<url>|<outputfile>|<statusfile>\" (one argument)");
        return 2;
    }
    const DownloadJob job = splitArgument(argv[1]);
    if (job.files.statusFile.empty()) {
        complain(Program, "no status file in \"" + std::string(argv[1]) + "\"");
        return 2;
    }
    if (job.url.empty() || job.files.outputFile.empty()) {
        complain(Program, "expected \"<url>|<outputfile>|<statusfile>\"");
        return finishJob(Program, job.files, StatusBadCommandLine);
    }
    return finishJob(Program, job.files, download(job));
}

} // namespace

int main(int argc, char **argv)
{
    return childMain(Program, argc, argv, run);
}
