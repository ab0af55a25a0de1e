#include "run/runhooks.h"

#include <QHash>

#include <utility>

namespace Tarnby
{

namespace
{

QHash<QString, DownloadKindHandler> &kinds()
{
    static QHash<QString, DownloadKindHandler> table;
    return table;
}

RetrievalHooks &installedHooks()
{
    static RetrievalHooks hooks;
    return hooks;
}

} // namespace

void registerDownloadKind(const QString &kind, DownloadKindHandler handler)
{
    if (handler)
        kinds().insert(kind, std::move(handler));
    else
        kinds().remove(kind);
}

DownloadKindHandler downloadKind(const QString &kind)
{
    return kinds().value(kind);
}

void setRetrievalHooks(RetrievalHooks hooks)
{
    installedHooks() = std::move(hooks);
}

const RetrievalHooks &retrievalHooks()
{
    return installedHooks();
}

} // namespace Tarnby
