#include "alerts/alertingestion.h"

#include "alerts/alertformat.h"
#include "alerts/alerttables.h"
#include "core/files.h"
#include "core/log.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "providers/stationselection.h"
#include "providers/textcutters.h"

#include <QStringList>

#include <array>
#include <functional>
#include <optional>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kAlerts = u"Alerts"_s;
const QString kPulseLineEnd = u"\r\n"_s;
const QString kNwsLineEnd = u"\n"_s;
constexpr qsizetype kShortestItem = 10;

bool g_alertsFailed = false;

// ----- both services -----

// Reading a field gives "NA" for a null, an empty text or a field that is missing.
bool hasText(const QString &value)
{
    return !value.isEmpty() && value != u"NA";
}

std::nullopt_t notRead(const QString &source, const QString &why, const char *routine)
{
    setAlertsFailed(true);
    Log(u"Alerts not read from "_s + source + u": "_s + why + u" ("_s +
        QString::fromLatin1(routine) + u')');
    return std::nullopt;
}

void storeAlert(int row, const AlertRecord &alert)
{
    const QString index = QString::number(row);
    SaveCache(kAlerts, u"issued"_s + index, alert.issued);
    SaveCache(kAlerts, u"expires"_s + index, alert.expires);
    SaveCache(kAlerts, u"short-title"_s + index, GetAlertShortTitle(alert.title));
    SaveCache(kAlerts, u"title"_s + index, alert.title);
    SaveCache(kAlerts, u"msg-body"_s + index, alert.body);
    SaveCache(kAlerts, u"severity"_s + index, alert.severity);
}

// One batch: the branch is replaced whole, and a hundred and more writes cost one commit.
void storeAlerts(const AlertSet &set, const QString &type)
{
    const SettingsBatch batch;
    DelCache(kAlerts);
    for (qsizetype i = 0; i < set.alerts.size(); ++i)
        storeAlert(int(i + 1), set.alerts[i]);
    if (!set.alerts.isEmpty()) SaveCache(kAlerts, u"Type"_s, type);
    SaveCache(kAlerts, u"Count"_s, QString::number(set.alerts.size()));
    SaveCache(kAlerts, u"AlertsAvailable"_s, set.alerts.isEmpty() ? u"False"_s : u"True"_s);
    SaveCache(kAlerts, u"AlertEpoch"_s, set.epoch);
    setAlertsFailed(false);
}

bool isListed(const QString &code, const QString &selectedList)
{
    return (u',' + selectedList + u',').contains(u',' + code + u',');
}

// The skeleton both services share: a list cut by marks, parted into items. An item
// reader gives false for an alert without bulletin text, which spoils the whole answer.
struct ListLayout {
    QString start;
    QString end;
    QString itemSeparator;
    const char *routine;
};

using ItemReader = std::function<bool(const QString &item, const QString &selected, AlertSet &set)>;

std::optional<AlertSet> readAlertList(const QString &document, const QString &source,
                                      const ListLayout &layout, const ItemReader &readItem)
{
    const std::optional<QString> list = CutBetweenMarks(document, layout.start, layout.end);
    if (!list) return notRead(source, u"no alert list"_s, layout.routine);
    AlertSet set;
    if (list->isEmpty()) return set;
    setAlertsFailed(true);
    const QString selected = SelectedAlerts();
    for (const QString &item : list->split(layout.itemSeparator)) {
        if (item.size() >= kShortestItem && !readItem(item, selected, set))
            return notRead(source, u"an alert without text"_s, layout.routine);
    }
    return set;
}

// ----- Pulse alerts -----

QString pulseLocalTime(QString utc)
{
    return utcTextToLocal(utc.replace(u'T', u' ').remove(u'Z'));
}

// The filter on expiry dates of the form "... on <date>": an alert ending before the day
// of the observation or more than ten days after it is dropped. Expiries as the service
// sends them have no " on ", so the filter seldom applies.
bool expiresOutOfRange(const QString &expires, const QString &observed)
{
    if (!readDate(expires)) return false;
    const std::optional<QDateTime> until =
        readDate(ExtractBetween(expires, u" on "_s, QString(), QString(), 0, true));
    const std::optional<QDateTime> seen = readDate(observed);
    if (!until || !seen) return false;
    const qint64 days = seen->date().daysTo(until->date());
    return days < 0 || days > 10;
}

// A message that opens with "...TITLE..." carries its own title.
void takeTitleFromMessage(AlertRecord &alert)
{
    const QString dots = u"..."_s;
    const qsizetype first = alert.body.indexOf(dots);
    if (first < 0 || first > 18) return;
    const qsizetype second = alert.body.indexOf(dots, first + dots.size());
    if (second < 0) return;
    alert.title = alert.body.mid(first + dots.size(), second - first - dots.size())
                      .replace(uR"(\n)"_s, u" "_s)
                      .replace(u'\n', u' ');
    alert.body = alert.body.mid(second + dots.size());
}

// The identity of a Pulse set is the id of the last alert read, kept or not.
bool readPulseAlert(const QString &item, const QString &selected, const QString &observed,
                    AlertSet &set)
{
    const auto field = [&item](const char *key) {
        return ReadJsonValue(item, QString::fromLatin1(key), kPulseLineEnd);
    };
    set.epoch = field("AlertId");
    const QString name = field("AlertTypeName");
    AlertRecord alert{pulseLocalTime(field("IssuedDateTimeUtcString")),
                      pulseLocalTime(field("ExpiredDateTimeUtcString")), name, field("Message"),
                      AlertSeverity(name)};
    if (!hasText(alert.body)) return false;
    if (expiresOutOfRange(alert.expires, observed) ||
        !IsAlertSelected(GetAlertCode(name, selected), selected))
        return true;
    takeTitleFromMessage(alert);
    set.alerts.append(alert);
    return true;
}

// ----- NWS alerts -----

bool isNwsAlertItem(const QString &item)
{
    static const std::array<QString, 4> marks = {u"\"effective\": "_s, u"\"expires\": "_s,
                                                 u"\"headline\": "_s, u"\"description\": "_s};
    for (const QString &mark : marks) {
        if (!item.contains(mark)) return false;
    }
    return true;
}

bool isTestAlert(const QString &status, const QString &event)
{
    return status.compare(u"test", Qt::CaseInsensitive) == 0 ||
           event.compare(u"test message", Qt::CaseInsensitive) == 0;
}

// The time as sent, offset dropped: "2019-12-20T13:34:00-08:00" is "2019-12-20 13:34".
QString nwsTime(QString time)
{
    return time.replace(u'T', u' ').remove(u'Z').left(16);
}

// The short headline of the bulletin; the event in capitals when there is none.
QString nwsHeadline(const QString &item, const QString &event)
{
    const QString mark = u"\"NWSheadline\": ["_s;
    if (!item.contains(mark)) return event.toUpper();
    return ExtractBetween(item, mark, u"]"_s).remove(u'\n').remove(u'\r').remove(u'"').trimmed();
}

// Headline, description and instruction, parted by blank lines.
QString nwsBulletin(const QString &headline, const QString &description, const QString &instruction)
{
    QString body = description;
    if (hasText(instruction)) body += u"<br><br>"_s + instruction;
    return headline.isEmpty() ? body : headline + u"<br><br>"_s + body;
}

// The identity of an NWS set is the list of the kept alerts' ids.
bool readNwsAlert(const QString &item, const QString &selected, AlertSet &set)
{
    if (!isNwsAlertItem(item)) return true;
    const auto field = [&item](const char *key) {
        return ReadJsonValue(item, QString::fromLatin1(key), kNwsLineEnd);
    };
    QString event = field("event");
    if (isTestAlert(field("status"), event)) return true;
    const QString description = field("description");
    if (!hasText(description)) return false;
    const QString body = nwsBulletin(nwsHeadline(item, event), description, field("instruction"));
    event = event.left(event.indexOf(u" issued "_s));
    if (!IsAlertSelected(GetAlertCode(event, selected), selected)) return true;
    set.alerts.append({nwsTime(field("effective")), nwsTime(field("expires")), event, body,
                       AlertSeverity(event)});
    const QString id = field("@id").remove(u"https://api.weather.gov/alerts/"_s);
    set.epoch += set.alerts.size() == 1 ? id : u',' + id;
    return true;
}

} // namespace

std::optional<AlertSet> ReadWeatherBugAlerts(const QString &document, const QString &source)
{
    const QString observed = GetCache(u"Current"_s, u"observed"_s);
    return readAlertList(document, source,
                         {u"\"alertList\": ["_s, u"]"_s, u"}"_s, "ProcessWeatherBugAlerts"},
                         [&observed](const QString &item, const QString &selected, AlertSet &set) {
                             return readPulseAlert(item, selected, observed, set);
                         });
}

std::optional<AlertSet> ReadNwsAlerts(const QString &document, const QString &source)
{
    return readAlertList(
        document, source,
        {u"\"features\": ["_s, u"\"title\""_s, u"\"properties\": {"_s, "ProcessNwsAlerts"},
        readNwsAlert);
}

QString SelectedAlerts()
{
    const QString selected = GetPref(u"SevereAlert"_s, u"SelectedAlerts"_s);
    return selected.isEmpty() ? DefaultSelectedAlerts() : selected;
}

bool IsAlertSelected(const QString &code, const QString &selectedList)
{
    return isListed(code, selectedList) || (code == u"0" && selectedList != u",");
}

QString GetAlertCode(const QString &names, const QString &selectedList)
{
    QString code = u"0"_s;
    for (const QString &name : names.split(u',')) {
        code = AlertNameCode(name);
        if (code != u"0" && isListed(code, selectedList)) return code;
    }
    if (code == u"0" && names.contains(u"Abduction"_s, Qt::CaseInsensitive)) return u"303"_s;
    return code;
}

QString AlertSeverity(const QString &name)
{
    if (name.contains(u"warning"_s, Qt::CaseInsensitive)) return u"warning"_s;
    if (name.contains(u"watch"_s, Qt::CaseInsensitive)) return u"watch"_s;
    return u"other"_s;
}

bool AlertsFailed()
{
    return g_alertsFailed;
}

void setAlertsFailed(bool failed)
{
    g_alertsFailed = failed;
}

void ProcessWeatherBugAlerts(const QString &documentPath)
{
    if (const std::optional<AlertSet> set =
            ReadWeatherBugAlerts(ReadFile(documentPath), documentPath))
        storeAlerts(*set, u"EarthNetworks"_s);
}

void ProcessNwsAlerts(const QString &documentPath)
{
    if (const std::optional<AlertSet> set = ReadNwsAlerts(ReadFile(documentPath), documentPath))
        storeAlerts(*set, u"NWS"_s);
}

void ProcessAlertsDownload(const QString &documentPath, bool /*newData*/, bool /*force*/)
{
    if (IsInternational())
        ProcessWeatherBugAlerts(documentPath);
    else
        ProcessNwsAlerts(documentPath);
}

} // namespace Tarnby
