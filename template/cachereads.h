#pragma once
// How the template engine reads the Weather cache of the current station, and what it
// keeps for the length of one expansion.
//
// While an expansion runs (an ExpansionCache lives), each cache section is read whole at
// its first use and kept, and a few derived texts (icon paths, times) are kept by their
// input: a skin asks for the same hour's temperature in a dozen tokens and graphs, and a
// read of the settings store costs more than the token. Nothing in an expansion writes
// the cache, so the kept values are what the store holds; a new expansion reads afresh.
// Outside an expansion every call goes to the store.
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

    // A number for the expansion in progress, new for each; 0 outside an expansion. Lets
    // a module keep its own results for one expansion.
    static quint64 current();

private:
    bool m_outermost;
};

// The cached text, empty when missing. Keys compare without regard to case.
QString CacheValue(const QString &section, const QString &key);

// The cache reader of tokens that no formatter dresses. A leading "now-", "hour-" or
// "day-" is cut from the key. An empty value gives "N/A" with naIfEmpty; with afterBlank
// a value holding a blank gives what stands behind the first blank (the time of a
// date-time).
QString ReadCacheValue(const QString &section, const QString &key, bool afterBlank = false,
                       bool naIfEmpty = false);

// A setting that no expansion writes (the Conversion flags, the skin and station names).
QString SettingValue(const QString &section, const QString &key);
// The icon path (derive/icons.h) of a condition code for the current station's family.
QString IconPathOfCode(const QString &code);
// The moon image's path in the icon set (derive/icons.h).
QString MoonIconOf(const QString &imageName);
// FormatTime (derive/dates.h) of a time text.
QString TimeText(const QString &text, bool noAmPm = false, bool trimMinutes = false,
                 bool noSeconds = false, bool keepMinutes = false);

} // namespace Tarnby
