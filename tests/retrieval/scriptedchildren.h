#pragma once
// A child launcher for tests: instead of starting dl or tbdownloader it answers each
// launch at once from a script, writing the body and status files the real child
// would write, and records what was launched.

#include "retrieval/children.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

namespace Tarnby::Test
{

struct ChildReply {
    QString status = QStringLiteral("0");
    QString body;
    bool endsSilently = false; // writes nothing and ends

    static ChildReply answer(const QString &status, const QString &body = {})
    {
        return {status, body, false};
    }
    static ChildReply silent() { return {{}, {}, true}; }
};

class ScriptedChildren : public ChildLauncher
{
public:
    struct Launch {
        QString program;
        QStringList arguments;
        QString url; // the URL the child was asked for
    };

    // Installs itself as the launcher; the destructor restores the real one.
    explicit ScriptedChildren(std::function<ChildReply(const QString &url)> script = {});
    ~ScriptedChildren() override;

    qint64 start(const QString &program, const QStringList &arguments) override;
    bool isRunning(qint64) override { return false; } // every child ends at once
    void end(qint64 pid) override { ended.append(pid); }
    QStringList urls() const;

    std::function<ChildReply(const QString &url)> script;
    QList<Launch> launches;
    QList<qint64> ended;

private:
    qint64 m_nextPid = 1000;
};

} // namespace Tarnby::Test
