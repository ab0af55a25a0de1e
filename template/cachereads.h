#pragma once
// How the template engine reads the Weather cache of the current station.
//
// While an expansion runs (an ExpansionCache lives), every value read is kept for the
// rest of that expansion: a skin asks for the same hour's temperature in a dozen tokens
// and graphs, and a read of the settings store costs more than the token. Nothing in an
// expansion writes the cache, so the kept values are what the store holds; a new
// expansion reads afresh. Outside an expansion every read goes to the store.
//
// Sections are named without the station part: "Current", "Hourly", "Daily", "Sun",
// "UV", "Alerts", "LastUpdated", "Cache".

#include <QString>

namespace Tarnby
{

class ExpansionCache
{
public:
    // An ExpansionCache made while another lives shares the outer one's values.
    ExpansionCache();
    ~ExpansionCache();
    ExpansionCache(const ExpansionCache &) = delete;
    ExpansionCache &operator=(const ExpansionCache &) = delete;

private:
    bool m_outermost;
};

// The cached text, empty when missing.
QString CacheValue(const QString &section, const QString &key);
// The cache reader of tokens that no formatter dresses. A leading "now-", "hour-" or
// "day-" is cut from the key. An empty value gives "N/A" with naIfEmpty; with afterBlank
// a value holding a blank gives what stands behind the first blank (the time of a
// date-time).
QString ReadCacheValue(const QString &section, const QString &key, bool afterBlank = false,
                       bool naIfEmpty = false);

// The icon path (derive/icons.h) of a condition code for the current station's family,
// kept for the rest of the expansion like the cache values.
QString IconPathOfCode(const QString &code);

} // namespace Tarnby
