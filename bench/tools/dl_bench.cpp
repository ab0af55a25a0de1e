// One download through the dl child: a 5 KB document from the in-process document
// service, timed from the process start until the child has written its status file and
// ended. The whole fetch layer on top aims at a 15 ms median.
#include "tools/service/documentservice.h"

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

extern char **environ;

namespace
{

void writeFile(const fs::path &path, const std::string &text)
{
    std::ofstream(path, std::ios::binary) << text;
}

// Starts the program with one argument and waits for it; false when it did not run.
bool runToEnd(const std::string &program, const std::string &argument)
{
    pid_t pid = 0;
    char *argv[] = {const_cast<char *>(program.c_str()), const_cast<char *>(argument.c_str()),
                    nullptr};
    if (posix_spawn(&pid, program.c_str(), nullptr, nullptr, argv, environ) != 0) return false;
    int status = 0;
    return waitpid(pid, &status, 0) == pid;
}

void BM_DlFiveKilobyteDocument(benchmark::State &state)
{
    const fs::path folder =
        fs::temp_directory_path() / ("tarnby-bench-dl-" + std::to_string(getpid()));
    fs::create_directories(folder / "docs");
    writeFile(folder / "docs" / "doc.json", std::string(5 * 1024, 'x'));
    Tarnby::DocumentService service;
    const int port = service.start((folder / "docs").string());
    const std::string program = (fs::read_symlink("/proc/self/exe").parent_path() / "dl").string();
    const fs::path statusFile = folder / "status";
    const std::string argument = "http://127.0.0.1:" + std::to_string(port) + "/doc.json|" +
                                 (folder / "output").string() + "|" + statusFile.string();
    for (auto _ : state) {
        if (!runToEnd(program, argument) || !fs::exists(statusFile)) {
            state.SkipWithError("dl did not run");
            break;
        }
        fs::remove(statusFile);
    }
    service.stop();
    fs::remove_all(folder);
}

} // namespace

BENCHMARK(BM_DlFiveKilobyteDocument)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(10)
    ->ReportAggregatesOnly(true);
