#include "core/scheduler.h"

#include "core/timestamp.h"

#include <QRegularExpression>

#include <array>
#include <limits>
#include <utility>

namespace Tarnby
{

namespace
{

constexpr int kAutomaticMinutes = 5;
constexpr qint64 kFullRunSeconds = 14 * 60;
constexpr qint64 kQuickStationFullRunSeconds = 9 * 60;
constexpr qint64 kAlertSeconds = 9 * 60;
constexpr qint64 kRealtimeAlertSeconds = 14 * 60;
constexpr qint64 kErrorSilenceSeconds = 60 * 60;
constexpr int kRealtimeErrorLimit = 10;
constexpr int kSlowQuerySeconds = 300;
constexpr int kRecentQuerySeconds = 10;
constexpr int kFastestWuQuerySeconds = 30;
constexpr int kMinuteMs = 60000;
constexpr int kFastestTickMs = 10000;

const QString kRealtime = QStringLiteral("Update in realtime");
const QString kAutomatic = QStringLiteral("Update automatically");

const std::array<std::pair<const char *, int>, 5> kHourRates{{
    {"Every hour", 60},
    {"Every 2 hours", 120},
    {"Every 3 hours", 180},
    {"Every 4 hours", 240},
    {"Every 5 hours", 300},
}};

// The leading whole number of the text behind "Every ", read the lenient way: no
// digits give 0, and so does a count beyond 16 bits.
int leadingMinutes(const QString &rate)
{
    static const QRegularExpression number(QStringLiteral("^\\s*(\\d+)"));
    QString rest = rate;
    if (rest.startsWith(QStringLiteral("Every "))) rest.remove(0, 6);
    const QRegularExpressionMatch match = number.match(rest);
    if (!match.hasMatch()) return 0;
    bool ok = false;
    const int minutes = match.captured(1).toInt(&ok);
    return ok && minutes <= std::numeric_limits<qint16>::max() ? minutes : 0;
}

bool isQuickStation(const QString &code)
{
    static const QRegularExpression pattern(QStringLiteral("^[pP]\\d+$"));
    return pattern.match(code).hasMatch();
}

} // namespace

SchedulerValues &schedulerValues()
{
    static SchedulerValues values;
    return values;
}

UpdateRate ParseUpdateRateText(const QString &rate)
{
    if (rate.isEmpty() || rate == kAutomatic) return {kAutomatic, kAutomaticMinutes, true};
    if (rate == kRealtime) return {rate, kAutomaticMinutes, true};
    if (rate == kNeverAutoUpdate) return {rate, 0, false};
    for (const auto &[text, minutes] : kHourRates)
        if (rate == QLatin1String(text)) return {rate, minutes, false};
    return {rate, leadingMinutes(rate), false};
}

int ParseWallpaperRate(const QString &rate)
{
    if (rate == QStringLiteral("Every minute")) return 1;
    return ParseUpdateRateText(rate).minutes;
}

bool Timer1Tick(SchedulerValues &values, bool autoRetry, const std::function<bool()> &runBlocked)
{
    values.RetryingAfterFailure = false;
    bool wanted = false;
    if (values.UpdateMinutes >= values.UpdateRate) {
        wanted = true;
        values.LastRunFailed = false;
    }
    // With AutoRetry a failed run is repeated every minute until one succeeds.
    if (values.LastRunFailed && autoRetry) {
        wanted = true;
        values.RetryingAfterFailure = true;
    }
    if (!wanted) {
        ++values.UpdateMinutes;
        return false;
    }
    if (runBlocked && runBlocked()) return false;
    values.UpdateMinutes = values.LastRunFailed ? values.UpdateMinutes + 1 : 0;
    return true;
}

RealtimeRun RealtimeTickRun(SchedulerValues &values, bool recentUpdate, const QString &alertsStamp,
                            const QDateTime &now)
{
    if (values.realtimeQueryInterval == 0) return RealtimeRun::Full;
    if (values.realtimeQueryInterval == kSlowQuerySeconds && recentUpdate)
        values.realtimeQueryInterval = kRecentQuerySeconds;
    const bool queryDue = !values.LastRealtimeQuery.isValid() ||
                          values.LastRealtimeQuery.secsTo(now) >= values.realtimeQueryInterval;
    if (queryDue) return RealtimeRun::Full;
    if (!StampIsFresh(alertsStamp, kRealtimeAlertSeconds, now)) return RealtimeRun::AlertsOnly;
    return RealtimeRun::None;
}

int NextRealtimeIntervalMs(bool weatherUndergroundStation, bool interfaceShown, int realtimeSeconds)
{
    if (!weatherUndergroundStation || !interfaceShown || realtimeSeconds >= 60) return kMinuteMs;
    if (realtimeSeconds < 10) return kFastestTickMs;
    return realtimeSeconds * 1000;
}

RealtimeRun RealtimeProcedureRun(bool alertsOnly, const QString &weatherStamp,
                                 const QString &alertsStamp, const QString &stationCode,
                                 const QDateTime &now)
{
    const qint64 fullSeconds =
        isQuickStation(stationCode) ? kQuickStationFullRunSeconds : kFullRunSeconds;
    if (!alertsOnly && !StampIsFresh(weatherStamp, fullSeconds, now)) return RealtimeRun::Full;
    if (!StampIsFresh(alertsStamp, kAlertSeconds, now)) return RealtimeRun::AlertsOnly;
    return RealtimeRun::None;
}

void ResetRealtimeErrorsIfDue(int &errorCount, const QDateTime &lastError, const QDateTime &now)
{
    if (errorCount >= kRealtimeErrorLimit &&
        (!lastError.isValid() || lastError.secsTo(now) > kErrorSilenceSeconds))
        errorCount = 0;
}

bool RealtimeFetchAllowed(int errorCount, bool fullRunMade, bool connectionAllowed)
{
    return !fullRunMade && errorCount < kRealtimeErrorLimit && connectionAllowed;
}

int RealtimeQueryIntervalFor(const QString &group, int realtimeSeconds, bool recentUpdate)
{
    if (group != QStringLiteral("WUnderground") || !recentUpdate) return kSlowQuerySeconds;
    if (realtimeSeconds < 10) return kFastestWuQuerySeconds;
    return std::min(realtimeSeconds, kSlowQuerySeconds);
}

Timer5Jobs ParseTimer5Tag(const QString &tag)
{
    const QString words = tag.toLower();
    return {words.contains(QStringLiteral("update")), words.contains(QStringLiteral("check")),
            words.contains(QStringLiteral("wallpaper"))};
}

Timer10Job ParseTimer10Tag(const QString &tag)
{
    const QString word = tag.toLower();
    if (word.contains(QStringLiteral("reprocess"))) return Timer10Job::Reprocess;
    if (word.contains(QStringLiteral("update"))) return Timer10Job::Update;
    return Timer10Job::None;
}

bool Timer8Tick(SchedulerValues &values, int wallpaperRate)
{
    if (values.WallpaperMinutes + 1 >= wallpaperRate) {
        values.WallpaperMinutes = 0;
        return true;
    }
    ++values.WallpaperMinutes;
    return false;
}

} // namespace Tarnby
