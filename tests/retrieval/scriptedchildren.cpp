#include "tests/retrieval/scriptedchildren.h"

#include "core/files.h"

namespace Tarnby::Test
{

ScriptedChildren::ScriptedChildren(std::function<ChildReply(const QString &)> script)
    : script(std::move(script))
{
    setChildLauncher(this);
}

ScriptedChildren::~ScriptedChildren()
{
    setChildLauncher(nullptr);
}

qint64 ScriptedChildren::start(const QString &program, const QStringList &arguments)
{
    // dl takes "<url>|<output>|<status>", tbdownloader the three as separate arguments.
    const QStringList parts =
        arguments.size() == 1 ? arguments.first().split(QLatin1Char('|')) : arguments;
    const QString url = parts.value(0);
    launches.append({program, arguments, url});
    const ChildReply reply = script ? script(url) : ChildReply{};
    if (!reply.endsSilently) {
        WriteFileAtomic(parts.value(1), reply.body);
        WriteFileAtomic(parts.value(2), reply.status);
    }
    return m_nextPid++;
}

QStringList ScriptedChildren::urls() const
{
    QStringList urls;
    for (const Launch &launch : launches)
        urls.append(launch.url);
    return urls;
}

} // namespace Tarnby::Test
