#include "template/cachereads.h"

#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/icons.h"
#include "providers/station.h"

#include <QHash>

namespace Tarnby
{

namespace
{

struct Memo {
    QHash<QString, QString> values;
    QHash<QString, QString> icons;
};

// One memo for the one thread that expands templates at a time.
thread_local Memo *t_memo = nullptr;

QString memoKey(const QString &section, const QString &key)
{
    return section + QChar(0x1F) + key;
}

} // namespace

ExpansionCache::ExpansionCache() : m_outermost(t_memo == nullptr)
{
    if (m_outermost) t_memo = new Memo;
}

ExpansionCache::~ExpansionCache()
{
    if (m_outermost) {
        delete t_memo;
        t_memo = nullptr;
    }
}

QString CacheValue(const QString &section, const QString &key)
{
    if (!t_memo) return GetCache(section, key);
    const QString memo = memoKey(section, key);
    const auto it = t_memo->values.constFind(memo);
    if (it != t_memo->values.cend()) return it.value();
    const QString value = GetCache(section, key);
    t_memo->values.insert(memo, value);
    return value;
}

QString ReadCacheValue(const QString &section, const QString &key, bool afterBlank, bool naIfEmpty)
{
    QString name = key;
    for (const QLatin1StringView prefix :
         {QLatin1StringView("now-"), QLatin1StringView("hour-"), QLatin1StringView("day-")}) {
        if (name.startsWith(prefix)) {
            name.remove(0, prefix.size());
            break;
        }
    }
    const QString value = CacheValue(section, name);
    if (value.isEmpty()) return naIfEmpty ? QStringLiteral("N/A") : value;
    const qsizetype blank = value.indexOf(u' ');
    return afterBlank && blank >= 0 ? value.mid(blank + 1) : value;
}

QString IconPathOfCode(const QString &code)
{
    const auto compute = [&code] {
        return IconPath(QString(), code, false, false, false, true,
                        StationGroup(process().StationType));
    };
    if (!t_memo) return compute();
    const auto it = t_memo->icons.constFind(code);
    if (it != t_memo->icons.cend()) return it.value();
    return *t_memo->icons.insert(code, compute());
}

} // namespace Tarnby
