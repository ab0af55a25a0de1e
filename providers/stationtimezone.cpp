#include "providers/stationtimezone.h"

#include "core/log.h"
#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/readingrules.h"
#include "providers/stationselection.h"
#include "providers/textcutters.h"
#include "retrieval/fetch.h"
#include "retrieval/hosts.h"
#include "retrieval/urls.h"

#include <QTimeZone>
#include <QUrl>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int kFetchSeconds = 30;
// A zone with no change ahead is asked again after this many days, in case its rules moved.
constexpr int kKeepDaysWithoutChange = 30;
const QString kCacheBranch = u"Cache"_s;

QString element(const QString &document, const QString &name)
{
    return CutBetweenMarks(document, u'<' + name + u'>', u"</"_s + name + u'>')
        .value_or(QString())
        .trimmed();
}

// The zone name in the NWS document of the station: "timeZone": "America/Chicago".
QString nwsZoneName(const QString &code)
{
    const QString document =
        DownloadIt(RelayIfOldSystem(HostUrl(Host::NwsApi) + u"/stations/"_s + code), kFetchSeconds);
    return CutBetweenMarks(document, u"\"timeZone\": \""_s, u"\""_s).value_or(QString());
}

std::optional<StationTimeZone> askNws(const QString &code)
{
    if (StationGroup() != u"NWS") return std::nullopt;
    const QString name = nwsZoneName(code);
    return name.isEmpty() ? std::nullopt : TimeZoneFromDatabase(name, UtcNow());
}

std::optional<StationTimeZone> storedZone()
{
    const QString name = GetCache(kCacheBranch, u"TimeZoneName"_s);
    const std::optional<QDateTime> expires =
        readDate(GetCache(kCacheBranch, u"TimeZoneOffsetExpires"_s));
    bool numeric = false;
    const int offset = GetCache(kCacheBranch, u"TimeZoneOffset"_s).toInt(&numeric);
    if (name.isEmpty() || !numeric || !expires || localNow() >= *expires) return std::nullopt;
    return StationTimeZone{name, offset, localToUtc(*expires)};
}

void store(const StationTimeZone &zone)
{
    const QDateTime expires =
        zone.changesAt.isValid() ? zone.changesAt : UtcNow().addDays(kKeepDaysWithoutChange);
    SaveCache(kCacheBranch, u"TimeZoneName"_s, zone.name);
    SaveCache(kCacheBranch, u"TimeZoneOffset"_s, QString::number(zone.offsetSeconds));
    SaveCache(kCacheBranch, u"TimeZoneOffsetExpires"_s, generalDateText(utcToLocal(expires)));
}

} // namespace

std::optional<StationTimeZone> ReadTimeZoneDocument(const QString &document)
{
    if (element(document, u"status"_s) != u"OK") return std::nullopt;
    StationTimeZone zone;
    zone.name = element(document, u"zoneName"_s);
    bool numeric = false;
    zone.offsetSeconds = element(document, u"offset"_s).toInt(&numeric);
    if (zone.name.isEmpty() || !numeric) return std::nullopt;
    const qint64 end = element(document, u"zoneEnd"_s).toLongLong();
    if (end > 0) zone.changesAt = QDateTime::fromSecsSinceEpoch(end, Qt::UTC);
    return zone;
}

std::optional<StationTimeZone> TimeZoneFromDatabase(const QString &name, const QDateTime &utc)
{
    const QTimeZone zone(name.toUtf8());
    if (!zone.isValid()) return std::nullopt;
    const QTimeZone::OffsetData next = zone.nextTransition(utc);
    return StationTimeZone{name, zone.offsetFromUtc(utc),
                           next.atUtc.isValid() ? next.atUtc.toUTC() : QDateTime()};
}

bool GetTimeZone(const QString &latitude, const QString &longitude, StationTimeZone &zone)
{
    const QString url = HostUrl(Host::Vendor) + u"/Apps/GetTimeZone?lat="_s + latitude +
                        u"&lon="_s + longitude + u"&zone="_s +
                        QString::fromLatin1(QUrl::toPercentEncoding(zone.name));
    const std::optional<StationTimeZone> answer =
        ReadTimeZoneDocument(DownloadIt(RelayIfOldSystem(url), kFetchSeconds));
    if (!answer) return false;
    zone = *answer;
    return true;
}

bool UpdateStationTimeZone()
{
    std::optional<StationTimeZone> zone = storedZone();
    if (!zone) {
        StationTimeZone asked;
        asked.name = GetCache(kCacheBranch, u"TimeZoneName"_s);
        if (GetTimeZone(process().Latitude, process().Longitude, asked))
            zone = asked;
        else
            zone = askNws(process().CityCode);
        if (!zone) {
            Log(u"No time zone for "_s + process().CityCode + u" (UpdateStationTimeZone)"_s);
            return false;
        }
        store(*zone);
    }
    SaveCache(kCurrentSection, u"timezone-offset"_s,
              formatNumber(zone->offsetSeconds / 3600.0, u""));
    return true;
}

} // namespace Tarnby
