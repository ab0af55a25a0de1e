// tbservice --root DIR [--port N] [--port-file FILE]: serves the recorded documents in
// DIR on 127.0.0.1 until SIGINT or SIGTERM. Prints the port it listens on (and writes
// it, whole, into FILE when asked), so port 0 or no --port picks a free one.
#include "tools/childfetch/childsupport.h"
#include "tools/service/documentservice.h"

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace
{

constexpr const char *Program = "tbservice";

struct Options {
    std::string root;
    int port = 0;
    std::string portFile;
};

std::optional<Options> parseOptions(int argc, char **argv)
{
    Options options;
    for (int i = 1; i + 1 < argc; i += 2) {
        const std::string name = argv[i];
        const std::string value = argv[i + 1];
        if (name == "--root")
            options.root = value;
        else if (name == "--port-file")
            options.portFile = value;
        else if (name == "--port" && value.find_first_not_of("0123456789") == std::string::npos &&
                 value.size() <= 5 && std::stoi(value) <= 65535)
            options.port = std::stoi(value);
        else
            return std::nullopt;
    }
    if (argc % 2 == 0 || !std::filesystem::is_directory(options.root)) return std::nullopt;
    return options;
}

sigset_t stopSignals()
{
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

int run(int argc, char **argv)
{
    const auto options = parseOptions(argc, argv);
    if (!options) {
        Tarnby::Child::complain(Program, "usage: tbservice --root DIR [--port N] [--port-file "
                                         "FILE] (DIR must be a folder)");
        return 2;
    }
    // Blocked before the service's threads exist, so that only sigwait sees them.
    const sigset_t signals = stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    Tarnby::DocumentService service;
    const int port = service.start(options->root, options->port);
    if (port == 0) {
        Tarnby::Child::complain(Program,
                                "cannot listen on 127.0.0.1:" + std::to_string(options->port));
        return 1;
    }
    if (!options->portFile.empty() &&
        !Tarnby::Child::writeFileAtomic(options->portFile, std::to_string(port))) {
        Tarnby::Child::complain(Program, "cannot write " + options->portFile);
        return 1;
    }
    // Printed last: whoever reads it may count on the port file.
    std::printf("%d\n", port);
    std::fflush(stdout);
    int received = 0;
    sigwait(&signals, &received);
    service.stop();
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    try {
        return run(argc, argv);
    } catch (...) {
        Tarnby::Child::complain(Program, "out of memory");
        return 2;
    }
}
