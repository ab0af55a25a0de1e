#pragma once
// What every downloader child does around its fetch: stay tied to its parent, and
// hand its results over in files that are never seen half written.

#include <cstddef>
#include <string>

namespace Tarnby::Child
{

// The files of one job, as given on the command line.
struct JobFiles {
    std::string outputFile;
    std::string statusFile;
};

// Makes the kernel kill this process when the thread that started it ends, and ends
// at once when the parent is already gone (the child was handed to init before the
// request took hold). Call first thing in main().
void tieLifetimeToParent();

// Writes all of data to the descriptor; false on a write error.
bool writeAll(int fd, const char *data, std::size_t size);

// Writes text to path whole: to "<path>.<pid>.tmp" beside it, then renamed over it, so
// a reader sees either the old file or the complete new one. False on any failure.
bool writeFileAtomic(const std::string &path, const std::string &text);

// Writes the status number as decimal text without a line end, last of all the job's
// files. Returns the process exit code: 0 for status 0, 1 for a failure status written,
// 2 when the status file could not be written (said on stderr).
int finishJob(const char *program, const JobFiles &files, int status);

// The main() of a child: ties it to its parent, then runs run(argc, argv) and returns
// its exit code; an exception (only memory can run out here) becomes exit code 2.
int childMain(const char *program, int argc, char **argv, int (*run)(int, char **));

// Prints "<program>: <message>" on stderr.
void complain(const char *program, const std::string &message);

} // namespace Tarnby::Child
