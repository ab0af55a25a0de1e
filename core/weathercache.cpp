#include "core/weathercache.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"

#include <algorithm>

namespace Tarnby
{

QString CacheSectionFor(const QString &code, const QString &name)
{
    return QStringLiteral("Cache\\") + code + QLatin1Char('\\') + name;
}

QString CacheSection(const QString &name)
{
    // A parser writes thousands of keys into one branch: its name is built once.
    struct Built {
        QString code;
        QString name;
        QString section;
    };
    thread_local Built last;
    const QString &code = process().CityCode;
    if (name != last.name || code != last.code) last = {code, name, CacheSectionFor(code, name)};
    return last.section;
}

QString GetCache(const QString &name, const QString &key, const QString &defaultValue)
{
    return GetPref(CacheSection(name), key, defaultValue);
}

void SaveCache(const QString &name, const QString &key, const QString &value)
{
    SavePref(CacheSection(name), key, value);
}

void DelCache(const QString &name)
{
    DelPref(CacheSection(name));
}

int CacheCount(const QString &name)
{
    bool ok = false;
    const int count = GetCache(name, QStringLiteral("count")).trimmed().toInt(&ok);
    return ok ? std::clamp(count, 0, kMaxCacheRows) : 0;
}

QStringList CacheBranchLines(const QString &name)
{
    SettingsBackend *store = SettingsStore::active();
    if (!store) return {};
    QStringList keys = store->keys(CacheSection(name));
    keys.sort(Qt::CaseInsensitive);
    QStringList lines;
    for (const QString &key : keys)
        lines.append(key + QLatin1Char('=') + GetCache(name, key));
    return lines;
}

void DeleteStationCache(const QString &code)
{
    if (!code.isEmpty()) DelPref(QStringLiteral("Cache\\") + code);
}

void DeleteWholeCache()
{
    DelPref(QStringLiteral("Cache"));
}

} // namespace Tarnby
