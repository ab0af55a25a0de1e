#pragma once
// Fixtures of the retrieval run's tests: a throwaway profile with a selected station, a
// helper folder holding a stand-in map drawer (and links to the real downloaders), an
// absent user, a record of log lines, message boxes and progress, and a child launcher
// that answers downloads from a script.

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/scheduler.h"
#include "core/settingsstore.h"
#include "retrieval/children.h"
#include "retrieval/fetch.h"
#include "run/runhooks.h"
#include "run/runprogress.h"
#include "run/runstate.h"
#include "run/useractivity.h"
#include "tests/support/testprofile.h"

#include <QObject>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace Tarnby::Test
{

struct StationSetting {
    QString code;
    QString type;
    QString zip;
    QString latitude = QStringLiteral("41.53389");
    QString longitude = QStringLiteral("-93.64889");
};

// Answers the user-activity questions the way a test wants.
struct FakeActivity : UserActivity {
    int idle = 600; // away: no map is fetched
    bool saver = false;
    int idleSeconds() override { return idle; }
    bool screenSaverRunning() override { return saver; }
};

// A folder for TARNBY_HELPER_FOLDER: a map drawer that writes "<folder>/map.jpg", and
// links to the dl and tbdownloader built beside the test.
class HelperFolder
{
public:
    HelperFolder();
    ~HelperFolder();
    QString path() const { return m_dir.path(); }

private:
    QTemporaryDir m_dir;
};

struct ChildAnswer {
    QString status = QStringLiteral("0");
    QString body;
    bool hangs = false; // writes nothing and runs until it is ended
    int polls = 0;      // runs this many looks at it before it answers

    static ChildAnswer ok(const QString &body) { return {QStringLiteral("0"), body, false}; }
    static ChildAnswer failing(int status) { return {QString::number(status), {}, false}; }
    static ChildAnswer hanging() { return {{}, {}, true}; }
    static ChildAnswer late(int status, int polls)
    {
        return {QString::number(status), {}, false, polls};
    }
};

// Answers dl launches from a script at once (or never, for a hanging child) and
// records every launch; the map drawer writes its map file.
class ScriptedRunChildren : public ChildLauncher
{
public:
    explicit ScriptedRunChildren(std::function<ChildAnswer(const QString &url)> script = {});
    ~ScriptedRunChildren() override;
    qint64 start(const QString &program, const QStringList &arguments) override;
    bool isRunning(qint64 pid) override;
    void end(qint64 pid) override;

    std::function<ChildAnswer(const QString &url)> script;
    QStringList urls;           // the downloads asked for, in launch order
    QStringList drawerLaunches; // the map drawer's arguments, joined by blanks
    QList<qint64> ended;

private:
    struct LateAnswer {
        ChildAnswer answer;
        QString outputFile;
        QString statusFile;
    };
    QSet<qint64> m_running;
    QHash<qint64, LateAnswer> m_late;
    qint64 m_nextPid = 5000;
};

class RunTest : public ProfileTest
{
protected:
    RunTest();
    ~RunTest() override;

    void selectStation(const StationSetting &station);
    // Records kinds and hooks in the order the run calls them.
    void traceProcessing();
    bool logged(const QString &line) const { return logLines.contains(line); }

    HelperFolder helpers;
    FakeActivity activity;
    QStringList logLines;
    QStringList boxes;
    QStringList trace;
    QList<int> percents;
    QStringList barEvents;
    QList<QPair<bool, QString>> outcomes;

private:
    QObject m_listener;
};

} // namespace Tarnby::Test
