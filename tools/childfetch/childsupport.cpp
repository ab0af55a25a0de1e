#include "tools/childfetch/childsupport.h"

#include "tools/childfetch/fetch.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace Tarnby::Child
{

bool writeAll(int fd, const char *data, size_t size)
{
    while (size > 0) {
        const ssize_t n = ::write(fd, data, size);
        if (n < 0) return false;
        data += n;
        size -= size_t(n);
    }
    return true;
}

void tieLifetimeToParent()
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // init (pid 1) as parent means the real parent died before prctl took hold.
    if (::getppid() == 1) ::_exit(2);
}

bool writeFileAtomic(const std::string &path, const std::string &text)
{
    const std::string temporary = path + "." + std::to_string(::getpid()) + ".tmp";
    const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (fd < 0) return false;
    const bool written = writeAll(fd, text.data(), text.size());
    const bool closed = ::close(fd) == 0;
    if (written && closed && ::rename(temporary.c_str(), path.c_str()) == 0) return true;
    ::unlink(temporary.c_str());
    return false;
}

int finishJob(const char *program, const JobFiles &files, int status)
{
    if (files.statusFile.empty() || !writeFileAtomic(files.statusFile, std::to_string(status))) {
        complain(program, "cannot write the status file \"" + files.statusFile + "\"");
        return 2;
    }
    return status == StatusOk ? 0 : 1;
}

int childMain(const char *program, int argc, char **argv, int (*run)(int, char **))
{
    tieLifetimeToParent();
    try {
        return run(argc, argv);
    } catch (...) {
        complain(program, "out of memory");
        return 2;
    }
}

void complain(const char *program, const std::string &message)
{
    std::fprintf(stderr, "%s: %s\n", program, message.c_str());
}

} // namespace Tarnby::Child
