#include "retrieval/children.h"

#include "core/log.h"
#include "core/paths.h"
#include "retrieval/hosts.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QProcess>

#include <csignal>
#include <utility>
#include <sys/prctl.h>

namespace Tarnby
{

namespace
{

constexpr int kStartLimitMs = 5000;
constexpr int kEndLimitMs = 2000;

class ProcessLauncher : public ChildLauncher
{
public:
    qint64 start(const QString &program, const QStringList &arguments) override;
    bool isRunning(qint64 pid) override;
    void end(qint64 pid) override;
    void endAll();

private:
    QHash<qint64, QProcess *> m_children;
};

QProcess *newChild(const QString &program, const QStringList &arguments)
{
    auto *child = new QProcess;
    child->setProgram(program);
    child->setArguments(arguments);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TARNBY_USER_AGENT"), UserAgent());
    // The map drawer takes its pictures from the hosts in force, loopback ones included.
    environment.insert(QStringLiteral("TARNBY_RADAR_IMAGE"), MapImageUrl(QStringLiteral("radar")));
    environment.insert(QStringLiteral("TARNBY_SATELLITE_IMAGE"),
                       MapImageUrl(QStringLiteral("satellite")));
    child->setProcessEnvironment(environment);
    child->setStandardInputFile(QProcess::nullDevice());
    child->setStandardOutputFile(QProcess::nullDevice());
    child->setStandardErrorFile(QProcess::nullDevice());
    // Should this process die without cleaning up, the kernel ends the child too.
    child->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return child;
}

qint64 ProcessLauncher::start(const QString &program, const QStringList &arguments)
{
    static const bool cleanupRegistered = [] {
        qAddPostRoutine(EndAllChildren);
        return true;
    }();
    Q_UNUSED(cleanupRegistered);

    QProcess *child = newChild(program, arguments);
    child->start();
    if (!child->waitForStarted(kStartLimitMs)) {
        Log(QStringLiteral("Could not start %1: %2 (LaunchProcess)")
                .arg(program, child->errorString()));
        delete child;
        return 0;
    }
    const qint64 pid = child->processId();
    m_children.insert(pid, child);
    QObject::connect(child, &QProcess::finished, child, [this, pid, child] {
        m_children.remove(pid);
        child->deleteLater();
    });
    return pid;
}

bool ProcessLauncher::isRunning(qint64 pid)
{
    const QProcess *child = m_children.value(pid);
    return child && child->state() != QProcess::NotRunning;
}

void ProcessLauncher::end(qint64 pid)
{
    if (QProcess *child = m_children.value(pid)) {
        child->kill();
        child->waitForFinished(kEndLimitMs); // its finished handler forgets it
    }
}

void ProcessLauncher::endAll()
{
    const auto children = std::exchange(m_children, {});
    for (QProcess *child : children) {
        child->disconnect();
        child->kill();
        child->waitForFinished(kEndLimitMs);
        delete child;
    }
}

ProcessLauncher &processLauncher()
{
    static ProcessLauncher launcher;
    return launcher;
}

ChildLauncher *&installedLauncher()
{
    static ChildLauncher *launcher = nullptr;
    return launcher;
}

bool runsHelperProgram(qint64 pid)
{
    const QString exe = QFileInfo(QStringLiteral("/proc/%1/exe").arg(pid)).symLinkTarget();
    if (exe.isEmpty()) return false;
    for (const char *name : {"dl", "tbdownloader", "tbradar"}) {
        const QString helper =
            QFileInfo(HelperProgram(QString::fromLatin1(name))).canonicalFilePath();
        if (!helper.isEmpty() && helper == exe) return true;
    }
    return false;
}

} // namespace

void setChildLauncher(ChildLauncher *launcher)
{
    installedLauncher() = launcher;
}

ChildLauncher &childLauncher()
{
    ChildLauncher *launcher = installedLauncher();
    return launcher ? *launcher : processLauncher();
}

qint64 LaunchProcess(const QString &program, const QStringList &arguments)
{
    return childLauncher().start(program, arguments);
}

bool ChildRunning(qint64 pid)
{
    return pid > 0 && childLauncher().isRunning(pid);
}

void EndChild(qint64 pid)
{
    if (pid > 0) childLauncher().end(pid);
}

void EndAllChildren()
{
    processLauncher().endAll();
}

bool EndHelperProcess(qint64 pid)
{
    if (pid <= 0 || !runsHelperProgram(pid)) return false;
    if (processLauncher().isRunning(pid))
        processLauncher().end(pid);
    else if (::kill(static_cast<pid_t>(pid), SIGKILL) != 0)
        return false;
    Log(QStringLiteral("Ended helper process %1 (EndHelperProcess)").arg(pid));
    return true;
}

} // namespace Tarnby
