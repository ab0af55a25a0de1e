#pragma once
// The Weather cache: the branch Cache\<code>\<name> of the settings tree, where <code>
// is the current station (process().CityCode). A station switch redirects every reader
// at once; data of earlier stations stay until the cache is deleted.
//
// Sections: Current, Hourly, Daily, Alerts, Links, News, Sun, UV, LastUpdated, Cache, Misc.
// Writers of row-wise sections write "count" last, readers never read beyond it.

#include <QString>
#include <QStringList>

namespace Tarnby
{

QString CacheSection(const QString &name); // "Cache\<code>\<name>"
QString CacheSectionFor(const QString &code, const QString &name);
QString GetCache(const QString &name, const QString &key, const QString &defaultValue = QString());
void SaveCache(const QString &name, const QString &key, const QString &value);
void DelCache(const QString &name);
// The "count" of a row-wise section as a number of rows: 0 when it is missing or not a
// whole number, and never more than kMaxCacheRows, so that a damaged count cannot make
// a reader loop for ever.
inline constexpr int kMaxCacheRows = 10000;
int CacheCount(const QString &name);
// Every key of a section as "key=value", sorted by key without regard to case: a whole
// branch at a glance, for tools and tests. Empty when the store is not open.
QStringList CacheBranchLines(const QString &name);
// Deletes the whole cache subtree of one station, or of every station.
void DeleteStationCache(const QString &code);
void DeleteWholeCache();

} // namespace Tarnby
