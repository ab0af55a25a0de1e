#include "template/cachereads.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "providers/station.h"

#include <QFileInfo>
#include <QHash>
#include <QStringList>

namespace Tarnby
{

namespace
{

// A section's values by key in lower case: keys compare without regard to case.
using SectionValues = QHash<QString, QString>;

struct Memo {
    quint64 id = 0;
    QHash<QString, SectionValues> sections;
    QHash<QString, QString> texts; // derived texts by kind and input
};

// One memo for the one thread that expands templates at a time.
thread_local Memo *t_memo = nullptr;
thread_local quint64 t_lastId = 0;

// The whole section, read at its first use: a skin reads most of a forecast.
const SectionValues &sectionValues(const QString &section)
{
    auto it = t_memo->sections.find(section);
    if (it == t_memo->sections.end()) {
        SectionValues values;
        for (const auto &[key, value] : GetPrefSection(CacheSection(section)))
            values.insert(key.toLower(), value);
        it = t_memo->sections.insert(section, values);
    }
    return it.value();
}

// A derived text computed once an expansion; `kind` keeps different computations apart.
template <class ComputeFn> QString remembered(char kind, const QString &input, ComputeFn compute)
{
    if (!t_memo) return compute();
    const QString key = QChar::fromLatin1(kind) + input;
    const auto it = t_memo->texts.constFind(key);
    if (it != t_memo->texts.cend()) return it.value();
    return *t_memo->texts.insert(key, compute());
}

// Icon paths hang on the code and on what changes seldom: the icon set and the files in
// its folder, the profile folder, the station's family and hemisphere. They are kept
// across expansions under all of these, since finding a set's extension lists its folder,
// which for each icon of a skin would cost more than the rest of the skin.
QString iconCircumstances()
{
    return remembered('c', QString(), [] {
        const QString set = IconSetName(false);
        const QString &profile = process().ProfilePath;
        const QFileInfo folder(profile + QStringLiteral("/Skins/Icons/") + set);
        const QString latitude =
            SettingValue(QStringLiteral("CityCode"), QStringLiteral("Latitude"));
        return QStringList{set, profile, StationGroup(process().StationType),
                           latitude.trimmed().startsWith(u'-') ? QStringLiteral("S")
                                                               : QStringLiteral("N"),
                           QString::number(folder.lastModified().toMSecsSinceEpoch())}
            .join(QChar(0x1F));
    });
}

// Texts kept across expansions, under a key that holds all they hang on.
thread_local QHash<QString, QString> t_icons, t_times;

template <class ComputeFn>
QString kept(QHash<QString, QString> &store, const QString &key, ComputeFn compute)
{
    constexpr qsizetype kMostKept = 4096;
    const auto it = store.constFind(key);
    if (it != store.cend()) return it.value();
    if (store.size() >= kMostKept) store.clear();
    return *store.insert(key, compute());
}

template <class ComputeFn> QString keptIconPath(char kind, const QString &code, ComputeFn compute)
{
    return kept(t_icons, iconCircumstances() + QChar::fromLatin1(kind) + code, compute);
}

} // namespace

ExpansionCache::ExpansionCache() : m_outermost(t_memo == nullptr)
{
    if (!m_outermost) return;
    t_memo = new Memo;
    t_memo->id = ++t_lastId;
}

ExpansionCache::~ExpansionCache()
{
    if (m_outermost) {
        delete t_memo;
        t_memo = nullptr;
    }
}

quint64 ExpansionCache::current()
{
    return t_memo ? t_memo->id : 0;
}

QString CacheValue(const QString &section, const QString &key)
{
    if (!t_memo) return GetCache(section, key);
    return sectionValues(section).value(key.toLower());
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

QString SettingValue(const QString &section, const QString &key)
{
    return remembered('s', section + QChar(0x1F) + key, [&] { return GetPref(section, key); });
}

QString IconPathOfCode(const QString &code)
{
    return keptIconPath('i', code, [&] {
        return IconPath(QString(), code, false, false, false, true,
                        StationGroup(process().StationType));
    });
}

QString MoonIconOf(const QString &imageName)
{
    return keptIconPath('m', imageName, [&] { return MoonIconPath(imageName, false); });
}

QString TimeText(const QString &text, bool noAmPm, bool trimMinutes, bool noSeconds,
                 bool keepMinutes)
{
    const QChar flags(u'0' + (noAmPm ? 1 : 0) + (trimMinutes ? 2 : 0) + (noSeconds ? 4 : 0) +
                      (keepMinutes ? 8 : 0));
    // A time's text hangs on the clock setting and the locale besides the input; it is kept
    // across expansions under those.
    const QString circumstances = remembered('u', QString(), [] {
        return SettingValue(QStringLiteral("OnDownload"), QStringLiteral("Use24")) + QChar(0x1F) +
               dateLocale().name();
    });
    return kept(t_times, circumstances + flags + text,
                [&] { return FormatTime(text, noAmPm, trimMinutes, noSeconds, keepMinutes); });
}

} // namespace Tarnby
