#pragma once
// Child processes: the downloaders and the map drawer run as short-lived children of
// the one user-interface thread. Every child is tracked from launch to end; a stuck one
// is ended on request, and none outlives the program (all are killed when the
// application object goes, and each is told by the kernel to die with its parent).

#include <QString>
#include <QStringList>

namespace Tarnby
{

// Starts and ends children. The program uses the QProcess launcher; tests install
// their own to script what a child writes.
class ChildLauncher
{
public:
    virtual ~ChildLauncher() = default;
    // The child's process id, or 0 when it could not be started.
    virtual qint64 start(const QString &program, const QStringList &arguments) = 0;
    // True while the child of that id has not ended.
    virtual bool isRunning(qint64 pid) = 0;
    // Ends the child of that id at once; ids that are not live children are ignored.
    virtual void end(qint64 pid) = 0;
};

// The launcher in force; nullptr restores the QProcess launcher. Not owned.
void setChildLauncher(ChildLauncher *launcher);
ChildLauncher &childLauncher();

// Starts a program as a tracked child, with TARNBY_USER_AGENT set to UserAgent() and
// TARNBY_RADAR_IMAGE / TARNBY_SATELLITE_IMAGE to the map pictures (MapImageUrl).
// Returns its process id, 0 on failure (logged).
qint64 LaunchProcess(const QString &program, const QStringList &arguments);
bool ChildRunning(qint64 pid);
void EndChild(qint64 pid);
// Kills every live child of the QProcess launcher; also runs when the application
// object is destroyed.
void EndAllChildren();

// The "pid=<number>" request of a second start: ends that process only when it runs
// one of the helper programs beside this executable (dl, tbdownloader, tbradar), as
// /proc/<pid>/exe shows. Returns true when a helper was ended.
bool EndHelperProcess(qint64 pid);

} // namespace Tarnby
