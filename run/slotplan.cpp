#include "run/slotplan.h"

#include "core/timestamp.h"
#include "core/weathercache.h"
#include "derive/numberformat.h"

#include <QStringList>

#include <array>
#include <initializer_list>

namespace Tarnby
{

namespace
{

constexpr qint64 kUvFreshSeconds = 6 * 60;

// No service offers the history documents at present, so no group asks for them; the
// rules that keep the slow values whole still stand.
constexpr bool kHistoryDownloads = false;

struct HistoryRule {
    Slot slot;
    QString stampKey;
    qint64 staleSeconds; // a download at least this old is stale
    QStringList keys;    // the slow values in the station's Cache section
};

const std::array<HistoryRule, 2> kHistoryRules{{
    {Slot::DailyHistory,
     QStringLiteral("DailyHistory"),
     11 * 60,
     {QStringLiteral("rain-today"), QStringLiteral("humidity-low"),
      QStringLiteral("humidity-high")}},
    {Slot::YearlyHistory,
     QStringLiteral("YearlyHistory"),
     5 * 60 * 60,
     {QStringLiteral("rain-month"), QStringLiteral("rain-year")}},
}};

bool historySlotOn(const HistoryRule &rule, const QDateTime &now)
{
    const QString stamp = GetCache(QStringLiteral("LastUpdated"), rule.stampKey);
    bool on = kHistoryDownloads && !StampIsFresh(stamp, rule.staleSeconds - 1, now);
    for (const QString &key : rule.keys)
        if (!isNumeric(GetCache(QStringLiteral("Cache"), key))) on = true;
    if (on)
        for (const QString &key : rule.keys)
            SaveCache(QStringLiteral("Cache"), key, QString());
    return on;
}

bool uvIsFresh(const QDateTime &now)
{
    const std::optional<qint64> age =
        StampAgeSeconds(GetCache(QStringLiteral("LastUpdated"), QStringLiteral("UV")), now);
    return age && *age < kUvFreshSeconds;
}

// Observations of these groups come through the provider classes, not the slot.
bool conditionsByProviderClass(const QString &group)
{
    return group == QStringLiteral("WeatherBug") || group == QStringLiteral("WUnderground") ||
           group == QStringLiteral("NWS");
}

void setEnabled(RunSlots &jobs, std::initializer_list<Slot> list, bool on)
{
    for (Slot slot : list)
        jobs[slot].Enabled = on;
}

} // namespace

void EnableSlots(RunSlots &jobs, const RunUrls &urls, const SlotPlanInput &input,
                 const QDateTime &now)
{
    for (const SlotInfo &info : slotTable())
        if (info.slot != Slot::Map) jobs[info.slot].Url = urls[info.slot];
    setEnabled(jobs, {Slot::Hourly, Slot::Detailed}, true);
    jobs[Slot::Conditions].Enabled = !conditionsByProviderClass(input.group);
    jobs[Slot::NwsDetailed].Enabled = false;
    jobs[Slot::UV].Enabled = !input.international;
    if (input.international) DelCache(QStringLiteral("UV"));

    jobs[Slot::Alerts].Enabled = !input.international;
    if (input.international) DelCache(QStringLiteral("Alerts"));
    jobs[Slot::Links].Enabled = false;
    if (input.alertsOnly)
        setEnabled(jobs, {Slot::Conditions, Slot::Hourly, Slot::Detailed}, false);
    else
        jobs[Slot::Detailed].Enabled = !urls[Slot::Detailed].isEmpty();
    // Also covers both being empty.
    if (urls[Slot::Alerts] == urls[Slot::Conditions]) jobs[Slot::Alerts].Enabled = false;

    for (const HistoryRule &rule : kHistoryRules)
        jobs[rule.slot].Enabled = historySlotOn(rule, now);
    if (uvIsFresh(now)) jobs[Slot::UV].Enabled = false;
    jobs[Slot::Map].Enabled = true;
}

} // namespace Tarnby
