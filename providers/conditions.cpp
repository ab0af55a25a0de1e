#include "providers/conditions.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/comfort.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/units.h"
#include "providers/observationdatabase.h"
#include "providers/readingrules.h"
#include "providers/station.h"
#include "providers/textcutters.h"

#include <array>

namespace Tarnby
{

namespace
{

// What stood in Current before the reading began.
struct Remembered {
    QString observed;
    QString pressure;
};
Remembered &remembered()
{
    static Remembered values;
    return values;
}

std::function<void()> &balloonHandler()
{
    static std::function<void()> handler;
    return handler;
}

ObservationDatabase *&installedDatabase()
{
    static ObservationDatabase *database = nullptr;
    return database;
}

QString current(const char *key)
{
    return GetCache(kCurrentSection, QLatin1String(key));
}

QString pressureTrend()
{
    const QString rate = GetPressureRate().remove(QStringLiteral("+0.00"));
    if (rate.contains(QLatin1Char('-'))) return QStringLiteral("falling");
    if (rate.contains(QLatin1Char('+'))) return QStringLiteral("rising");
    return QStringLiteral("steady");
}

void writeHumidex(const QString &section, const QString &temperatureKey, const QString &dewPointKey,
                  const QString &humidexKey, const QString &humidexTwinKey)
{
    const QString temperature = GetCache(section, temperatureKey);
    const QString dewPoint = GetCache(section, dewPointKey);
    const bool known = isNumeric(temperature) && isNumeric(dewPoint);
    const QString celsius =
        known ? QString::number(ComputeHumidex(temperature, dewPoint)) : kNotAvailable;
    // The Fahrenheit conversion reads a missing humidex as 0 °C: the key then reads 32.
    const QString fahrenheit = FahrenheitFromCelsius(known ? celsius : QStringLiteral("0"));
    SaveCache(section, humidexKey, WholeNumberText(fahrenheit));
    SaveCache(section, humidexTwinKey, celsius);
}

// A cached number as the database reads it: "." for the decimal mark, no "+".
QString neutral(const QString &text, bool isRate = false)
{
    QString value = ToInvariantNumber(text);
    return isRate ? value.remove(QLatin1Char('+')) : value;
}

// The words of the balloon option, in the order their values are compared.
struct WatchedWord {
    const char *word;
    const char *key; // nullptr: the condition words or the observation time
};
constexpr std::array<WatchedWord, 8> kWatchedWords{{
    {"barometer changes", "pressure"},
    {"condition changes", nullptr},
    {"dew point changes", "dew-point"},
    {"feels like changes", "feels-like"},
    {"humidity changes", "humidity"},
    {"temperature changes", "temp"},
    {"wind changes", "wind-speed"},
    {"last observed changes", nullptr},
}};
constexpr int kConditionWord = 1;

QString observationStamp(ConditionWatch::ObservedForm form)
{
    if (form == ConditionWatch::ObservedForm::ObservedKey) return current("observed");
    const QString month = current("ob-date-month-number"), day = current("ob-date-day-number");
    const QString hour = current("ob-date-hour-number"), minute = current("ob-date-minute-number");
    if ((month + day + hour + minute).isEmpty()) return {};
    return month + QLatin1Char('-') + day + QLatin1Char(' ') + hour + QLatin1Char(':') + minute;
}

} // namespace

void RememberConditions()
{
    remembered() = {current("observed"), current("pressure")};
}

void StoreLastPressure()
{
    const QString observed = current("observed");
    if (!observed.isEmpty() && observed != remembered().observed)
        SaveCache(QStringLiteral("Cache"), QStringLiteral("last-pressure"), remembered().pressure);
}

QString GetPressureRate()
{
    const QString rate = current("pressure-rate");
    if (isNumeric(rate)) return rate;
    const std::optional<double> pressure = NumberInText(current("pressure"));
    const std::optional<double> last =
        NumberInText(GetCache(QStringLiteral("Cache"), QStringLiteral("last-pressure")));
    if (!pressure || !last) return {};
    const double difference = *pressure - *last;
    const QString text = formatNumber(difference, u"0.00");
    return difference >= 0 ? QLatin1Char('+') + text : text;
}

QString GetPressureText(bool withUnit, const QString &suffix)
{
    const QString unit = process().UnitBar;
    const bool twin = unit != QStringLiteral("inches");
    QString value = GetCache(kCurrentSection, QStringLiteral("pressure") + suffix +
                                                  (twin ? QStringLiteral("C") : QString()));
    if (value.isEmpty()) value = kNotAvailable;
    if (!withUnit) return value;
    value += QLatin1Char(' ') + unit;
    if (suffix == QStringLiteral("-rate")) return value;
    return value + QStringLiteral(" and ") + pressureTrend();
}

QString GetCurrentCondition()
{
    QString condition = current("description");
    if (condition.isEmpty() &&
        IsInternational(GetPref(QStringLiteral("CityCode"), QStringLiteral("ZipCode"))))
        condition = GetCache(QStringLiteral("Daily"), QStringLiteral("short-title11"));
    if (condition.isEmpty() || condition == kNotAvailable)
        condition = GetCache(QStringLiteral("Hourly"), QStringLiteral("weather-icon-description1"));
    return condition.isEmpty() ? kNotAvailable : condition;
}

void UpdateHumidex()
{
    writeHumidex(kCurrentSection, QStringLiteral("temp"), QStringLiteral("dew-point"),
                 QStringLiteral("humidex"), QStringLiteral("humidexC"));
}

void UpdateHourlyHumidex()
{
    const QString hourly = QStringLiteral("Hourly");
    const int count = CacheCount(hourly);
    for (int hour = 1; hour <= count; ++hour) {
        const QString n = QString::number(hour);
        writeHumidex(hourly, QStringLiteral("temperature") + n, QStringLiteral("dew-point") + n,
                     QStringLiteral("humidex") + n, QStringLiteral("humidex") + n + u'C');
    }
}

void setConditionBalloonHandler(std::function<void()> handler)
{
    balloonHandler() = std::move(handler);
}

void PopConditionBalloon()
{
    Log(QStringLiteral("Conditions changed: balloon (PopConditionBalloon)"));
    if (balloonHandler()) balloonHandler()();
}

ConditionWatch::ConditionWatch(ObservedForm form)
    : m_form(form),
      m_option(
          GetPref(QStringLiteral("TrayTooltip"), QStringLiteral("PopTrayBalloonWhen")).toLower()),
      m_stationId(current("station-id"))
{
    if (!watching()) return;
    const QString bars = QLatin1Char('|') + m_option + QLatin1Char('|');
    for (int word = 0; word < int(kWatchedWords.size()); ++word) {
        const QString wanted = QStringLiteral("|%1|").arg(QLatin1String(kWatchedWords[word].word));
        m_snapshot.append(bars.contains(wanted) ? freshValue(word) : QString());
    }
}

QString ConditionWatch::freshValue(int word) const
{
    if (const char *key = kWatchedWords[word].key) return current(key);
    return word == kConditionWord ? GetCurrentCondition() : observationStamp(m_form);
}

bool ConditionWatch::popIfChanged(bool ignoreMissing) const
{
    if (!watching() || current("station-id") != m_stationId) return false;
    for (int word = 0; word < m_snapshot.size(); ++word) {
        if (m_snapshot[word].isEmpty()) continue;
        const QString fresh = freshValue(word);
        if (ignoreMissing && IsMissingValue(fresh)) continue;
        if (fresh != m_snapshot[word]) {
            PopConditionBalloon();
            return true;
        }
    }
    return false;
}

void setObservationDatabase(ObservationDatabase *database)
{
    installedDatabase() = database;
}

ObservationDatabase &observationDatabase()
{
    static ObservationDatabase missing;
    return installedDatabase() ? *installedDatabase() : missing;
}

void SaveObservation()
{
    const QString observed = current("observed");
    if (observed.isEmpty() || !observationDatabase().exists()) return;
    const QString sun = QStringLiteral("Sun");
    CurrentObservationRow row{
        GetCurrentCondition(),
        neutral(current("dew-point")),
        neutral(current("feels-like")),
        neutral(current("humidity")),
        neutral(current("humidity-rate"), true),
        current("image-icon"),
        neutral(current("pressure")),
        neutral(GetPressureRate(), true),
        neutral(current("rain-today")),
        neutral(current("rain-rate")),
        neutral(current("temp")),
        neutral(current("temp-rate"), true),
        current("wind-direction"),
        neutral(current("wind-speed")),
        neutral(current("visibility")),
        GetCache(sun, QStringLiteral("sunrise-time1")),
        GetCache(sun, QStringLiteral("sunset-time1")),
        observed,
    };
    observationDatabase().QueueCurrentInsert(row, StationGroupNumber(process().StationType));
}

void CountLiveReading(bool found)
{
    ProcessValues &values = process();
    if (found) {
        values.RealtimeErrorCount = 0;
        return;
    }
    ++values.RealtimeErrorCount;
    values.RealtimeLastError = clock().now();
}

} // namespace Tarnby
