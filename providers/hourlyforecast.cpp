// The hourly forecast of the Pulse service into the Hourly branch.

#include "providers/forecasts.h"

#include "core/weathercache.h"
#include "derive/dateformat.h"
#include "derive/dates.h"
#include "providers/conditions.h"
#include "providers/forecastdocument.h"
#include "providers/readingrules.h"

#include <array>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kHourly = u"Hourly"_s;
const QString kStampKey = u"HourlyTimeStamp"_s;

enum class Treatment { None, LocalTime, Description, Icon, Compass, TemperatureTwin, WindTwin };

struct HourlyKey {
    const char *documentKey;
    const char *cacheKey;
    Treatment treatment = Treatment::None;
};

// The keys kept, each under its cache key; the service's other keys are dropped.
constexpr HourlyKey kHourlyKeys[] = {
    {"description", "weather-icon-description", Treatment::Description},
    {"feelsLike", "feels-like", Treatment::TemperatureTwin},
    {"forecastDateLocalStr", "date-time", Treatment::LocalTime},
    {"precipProbability", "prob-of-precip"},
    {"thunderstormProbability", "prob-of-tstorm"},
    {"iconCode", "weather-icon", Treatment::Icon},
    {"windDirectionDegrees", "wind-direction", Treatment::Compass},
    {"relativeHumidity", "humidity"},
    {"dewPoint", "dew-point", Treatment::TemperatureTwin},
    {"cloudCoverPercent", "sky-cover"},
    {"windSpeed", "wind-speed", Treatment::WindTwin},
    {"precipRate", "rate-of-precip"},
    {"temperature", "temperature", Treatment::TemperatureTwin},
};

// "40% Chance of Rain" reads "Chance Rain": the chance has keys of its own.
QString plainDescription(QString text)
{
    for (int percent = 10; percent <= 100; percent += 10)
        text.replace(QString::number(percent) + u"% Chance"_s, u"Chance"_s);
    return text.replace(u"Chance of"_s, u"Chance"_s);
}

// The day, date and hour texts of a time. The hours of a document run in order, so the
// texts of one day are made once.
class TimeTexts
{
public:
    struct Texts {
        QString day;
        QString date;
        QString hour;
    };
    const Texts &of(const QDateTime &time)
    {
        if (time.date() != m_date) {
            m_date = time.date();
            m_texts.day = formatDateTime(time, u"DDDD"_s, dateLocale());
            m_texts.date = ShortDateText(m_date);
        }
        m_texts.hour = hourText(time.time().hour());
        return m_texts;
    }

private:
    const QString &hourText(int hour)
    {
        QString &text = m_hours[size_t(hour)];
        if (text.isNull())
            text = formatDateTime(wallClock(m_date, QTime(hour, 0)), u"h AM/PM"_s, dateLocale());
        return text;
    }

    QDate m_date;
    Texts m_texts;
    std::array<QString, 24> m_hours;
};

class HourWriter
{
public:
    HourWriter(int row, TimeTexts &timeTexts)
        : m_index(QString::number(row)), m_timeTexts(timeTexts)
    {
    }
    void write(const QString &period) const;

private:
    void save(const char *key, const QString &value, const QString &suffix = QString()) const
    {
        SaveCache(kHourly, QLatin1String(key) + m_index + suffix, value);
    }
    void saveWithTwin(const char *key, ReadingRule rule, const QString &value) const;
    void saveTimeKeys(const QString &localTime) const;

    QString m_index;
    TimeTexts &m_timeTexts;
};

void HourWriter::saveWithTwin(const char *key, ReadingRule rule, const QString &value) const
{
    const Reading reading = ApplyReadingRule(rule, value);
    save(key, reading.value);
    save(key, reading.twin, u"C"_s);
}

void HourWriter::saveTimeKeys(const QString &localTime) const
{
    const std::optional<QDateTime> time = ServiceTime(localTime);
    if (!time) return;
    const TimeTexts::Texts &texts = m_timeTexts.of(*time);
    save("day", texts.day);
    save("date", texts.date);
    save("hour", texts.hour);
}

void HourWriter::write(const QString &period) const
{
    for (const HourlyKey &key : kHourlyKeys) {
        const QString value = PeriodValue(period, key.documentKey);
        switch (key.treatment) {
        case Treatment::None:
            save(key.cacheKey, value);
            break;
        case Treatment::LocalTime:
            save(key.cacheKey, value);
            saveTimeKeys(value);
            break;
        case Treatment::Description:
            save(key.cacheKey, plainDescription(value));
            break;
        case Treatment::Icon:
            save(key.cacheKey, PulseConditionCode(value));
            break;
        case Treatment::Compass:
            save(key.cacheKey, CompassWord(value));
            break;
        case Treatment::TemperatureTwin:
            saveWithTwin(key.cacheKey, ReadingRule::Temperature, value);
            break;
        case Treatment::WindTwin:
            saveWithTwin(key.cacheKey, ReadingRule::Wind, value);
            break;
        }
    }
}

// The first period's time in the machine's local time: the stamp of the document.
std::optional<QDateTime> documentTime(const QStringList &periods)
{
    const std::optional<QDateTime> utc =
        ServiceTime(PeriodValue(periods.first(), "forecastDateUtcStr"));
    return utc ? std::optional<QDateTime>(utcToLocal(*utc)) : std::nullopt;
}

bool isOlderOrSame(const QDateTime &time)
{
    const std::optional<QDateTime> stored = readDate(GetCache(kLastUpdatedSection, kStampKey));
    return stored && time <= *stored;
}

void writeHourly(const QStringList &periods, const QDateTime &time)
{
    const ForecastWriting writing;
    DelCache(kHourly);
    TimeTexts timeTexts;
    for (qsizetype row = 0; row < periods.size(); ++row)
        HourWriter(int(row + 1), timeTexts).write(periods.at(row));
    SaveCache(kHourly, u"count"_s, QString::number(periods.size()));
    SaveCache(kLastUpdatedSection, kStampKey, generalDateText(time));
    // The daily rows are picked from these hours: the next daily document counts as new.
    SaveCache(kLastUpdatedSection, u"DetailedTimeStamp"_s, QString());
    UpdateHourlyHumidex();
}

} // namespace

void ReadHourlyForecast(const QString &documentPath, bool force)
{
    const char *routine = "ReadHourlyForecast";
    const std::optional<QStringList> periods =
        CutPeriods(ReadForecastDocument(documentPath), u"\"hourlyForecastPeriod\": ["_s);
    if (!periods || periods->isEmpty())
        return ForecastNotRead(ForecastDocument::Hourly, u"no hourly periods"_s, routine);
    const std::optional<QDateTime> time = documentTime(*periods);
    if (!time)
        return ForecastNotRead(ForecastDocument::Hourly, u"no time in the first hour"_s, routine);
    setForecastFailed(ForecastDocument::Hourly, false);
    if (!force && isOlderOrSame(*time)) return;
    writeHourly(*periods, *time);
}

void ProcessNdfdDownload(const QString &documentPath, bool newData, bool force)
{
    ReadHourlyForecast(documentPath, newData || force);
}

} // namespace Tarnby
