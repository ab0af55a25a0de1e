#include "core/version.h"

#include <QStringList>

namespace Tarnby
{

int IsNewerVersion(const QString &local, const QString &remote)
{
    if (local.isEmpty() || remote.isEmpty()) return 0;
    const QStringList mine = local.split(QLatin1Char('.'));
    const QStringList theirs = remote.split(QLatin1Char('.'));
    for (qsizetype i = 0; i < mine.size() && i < theirs.size(); ++i) {
        const int own = mine.at(i).trimmed().toInt();
        const int other = theirs.at(i).trimmed().toInt();
        if (other > own) return -1;
        if (other < own) return 0;
    }
    return 0;
}

} // namespace Tarnby
