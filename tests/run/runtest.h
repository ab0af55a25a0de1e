#pragma once
// Fixtures of the retrieval run's tests: a throwaway profile with a token, a helper
// folder with a stand-in map drawer (and links to the real downloaders), an absent
// user, a record of log lines, message boxes, progress and outcomes, and scripted
// children.

#include "core/scheduler.h"
#include "core/settingsstore.h"
#include "retrieval/children.h"
#include "run/runhooks.h"
#include "run/runstate.h"
#include "run/useractivity.h"
#include "tests/retrieval/scriptedchildren.h"
#include "tests/support/testprofile.h"

#include <QObject>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

namespace Tarnby::Test
{

struct StationSetting {
    QString code, type, zip;
    QString latitude = QStringLiteral("41.53389");
    QString longitude = QStringLiteral("-93.64889");
};

struct FakeActivity : UserActivity {
    int idle = 600; // away: no map is fetched
    int idleSeconds() override { return idle; }
    bool screenSaverRunning() override { return false; }
};

inline ChildReply documentReply(const QString &body)
{
    return ChildReply::answer(QStringLiteral("0"), body);
}
inline ChildReply statusReply(int status)
{
    return ChildReply::answer(QString::number(status));
}

// Scripted downloads, and a map drawer that writes its map at once.
class ScriptedRunChildren : public ScriptedChildren
{
public:
    using ScriptedChildren::ScriptedChildren;
    qint64 start(const QString &program, const QStringList &arguments) override;

    QStringList drawerLaunches; // the map drawer's arguments, joined by blanks
};

class RunTest : public ProfileTest
{
protected:
    RunTest();
    ~RunTest() override;

    void selectStation(const StationSetting &station);
    // Records kinds ("<kind>:<document>") and hooks in the order the run calls them.
    void traceProcessing();
    bool logged(const QString &line) const { return logLines.contains(line); }

    QTemporaryDir helpers; // TARNBY_HELPER_FOLDER
    FakeActivity activity;
    QStringList logLines, boxes, trace, barEvents;
    QList<int> percents;
    QList<QPair<bool, QString>> outcomes;

private:
    QObject m_listener;
};

} // namespace Tarnby::Test
