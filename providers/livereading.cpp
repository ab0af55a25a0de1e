#include "providers/livereading.h"

#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/observationdatabase.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"

namespace Tarnby
{

namespace
{

// How each row reaches the cache and the argument list.
enum class Row {
    Reading,
    DayHigh,
    DayLow,
    DewPoint,
    Humidity,
    HumidityHigh,
    HumidityLow,
    Plain,
    Direction
};

struct LiveRow {
    const char *key;
    Row row;
    ReadingRule rule = ReadingRule::Temperature;
};

// The order is the skins' contract: they read the argument list by place.
constexpr LiveRow kLiveRows[] = {
    {"temp", Row::Reading},
    {"temp-high", Row::DayHigh},
    {"temp-low", Row::DayLow},
    {"feels-like", Row::Reading},
    {"temp-rate", Row::Reading, ReadingRule::Rate},
    {"wet-bulb", Row::Reading},
    {"dew-point", Row::DewPoint},
    {"humidity", Row::Humidity},
    {"humidity-high", Row::HumidityHigh},
    {"humidity-low", Row::HumidityLow},
    {"humidity-rate", Row::Plain},
    {"rain-today", Row::Reading, ReadingRule::Rain},
    {"rain-rate", Row::Reading, ReadingRule::Rain},
    {"rain-rate-max", Row::Reading, ReadingRule::Rain},
    {"rain-month", Row::Reading, ReadingRule::Rain},
    {"wind-direction", Row::Direction},
    {"wind-direction-avg", Row::Direction},
    {"wind-speed", Row::Reading, ReadingRule::Wind},
    {"wind-speed-avg", Row::Reading, ReadingRule::Wind},
    {"gust-direction", Row::Direction},
    {"gust-speed", Row::Reading, ReadingRule::Wind},
    {"pressure", Row::Reading, ReadingRule::Pressure},
    {"pressure-high", Row::Reading, ReadingRule::Pressure},
    {"pressure-low", Row::Reading, ReadingRule::Pressure},
    {"pressure-rate", Row::Reading, ReadingRule::Pressure},
};

QString cached(const QString &key)
{
    return GetCache(kCurrentSection, key);
}

QString orNotAvailable(const QString &value)
{
    return value.isEmpty() ? kNotAvailable : value;
}

// The number characters of a reading, else the cached value of the key.
QString numberOrCached(const QString &value, const QString &key)
{
    const QString number = KeepNumberCharacters(value);
    return isNumeric(number) ? number : cached(key);
}

bool hasTwin(Row row)
{
    return row == Row::Reading || row == Row::DayHigh || row == Row::DayLow || row == Row::DewPoint;
}

class LiveRowWriter
{
public:
    LiveRowWriter(const LiveValueSource &source, const QDate &day, RealtimeArguments &arguments)
        : m_source(source), m_day(day), m_arguments(arguments)
    {
    }

    void write(const LiveRow &row);

private:
    void writeValue(const LiveRow &row, const QString &key, const QString &value);
    void addCached(const LiveRow &row, const QString &key);
    QString dayExtreme(const QString &value, const QString &key, bool highest) const;
    void writePlain(const QString &key, const QString &value);
    void writeDirection(const QString &key, const QString &value);
    void addCachedDewPointExtremes();

    const LiveValueSource &m_source;
    QDate m_day;
    RealtimeArguments &m_arguments;
    QString m_humidity;
};

void LiveRowWriter::write(const LiveRow &row)
{
    const QString key = QLatin1String(row.key);
    const std::optional<QString> value = m_source(key);
    if (value)
        writeValue(row, key, *value);
    else
        addCached(row, key);
    if (row.row == Row::DewPoint) addCachedDewPointExtremes();
}

// A row the reading lacks keeps its keys; the list shows what they hold.
void LiveRowWriter::addCached(const LiveRow &row, const QString &key)
{
    if (hasTwin(row.row))
        m_arguments.add(row.rule, Reading{cached(key), cached(key + QLatin1Char('C'))});
    else
        m_arguments.add(cached(key));
    if (row.row == Row::Humidity) m_humidity = cached(key);
}

void LiveRowWriter::writeValue(const LiveRow &row, const QString &key, const QString &value)
{
    switch (row.row) {
    case Row::Reading:
    case Row::DewPoint:
        WriteReading(m_arguments, key, row.rule, numberOrCached(value, key));
        break;
    case Row::DayHigh:
    case Row::DayLow:
        WriteReading(m_arguments, key, row.rule, dayExtreme(value, key, row.row == Row::DayHigh));
        break;
    case Row::Humidity: {
        // A humidity of 0 is a sensor without a reading.
        QString humidity = KeepNumberCharacters(value, QStringLiteral("Humidity"));
        if (!isNumeric(humidity) || humidity == QStringLiteral("0")) humidity = cached(key);
        m_humidity = WholeNumberText(humidity);
        writePlain(key, m_humidity);
        break;
    }
    case Row::HumidityHigh:
    case Row::HumidityLow:
        writePlain(key, ClampedHumidityBound(numberOrCached(value, key), m_humidity,
                                             row.row == Row::HumidityHigh));
        break;
    case Row::Plain:
        writePlain(key, numberOrCached(value, key));
        break;
    case Row::Direction:
        writeDirection(key, value);
        break;
    }
}

// The day's extreme from the reading, else the cache, else the observation database.
QString LiveRowWriter::dayExtreme(const QString &value, const QString &key, bool highest) const
{
    const QString number = numberOrCached(value, key);
    if (isNumeric(number)) return number;
    ObservationDatabase &database = observationDatabase();
    if (!database.exists()) return number;
    return highest ? database.GetHighTempFromDatabase(m_day)
                   : database.GetLowTempFromDatabase(m_day);
}

void LiveRowWriter::writePlain(const QString &key, const QString &value)
{
    const QString written = orNotAvailable(value);
    SaveCache(kCurrentSection, key, written);
    m_arguments.add(written);
}

// A direction is written only when the reading has one; the list then shows the
// cached direction instead.
void LiveRowWriter::writeDirection(const QString &key, const QString &value)
{
    const QString direction = CompassWord(value);
    // "NA" is the text cutters' word for a key the document lacks.
    if (direction.isEmpty() || direction == kNotAvailable || direction == QStringLiteral("NA")) {
        m_arguments.add(cached(key));
        return;
    }
    SaveCache(kCurrentSection, key, direction);
    m_arguments.add(direction);
}

void LiveRowWriter::addCachedDewPointExtremes()
{
    for (const char *key : {"dew-point-high", "dew-point-low"})
        m_arguments.add(ReadingRule::Temperature,
                        ApplyReadingRule(ReadingRule::Temperature, cached(QLatin1String(key))));
}

} // namespace

QString ObservedStamp(const QString &observedText)
{
    return FormatTime(observedText, false, false, true)
        .replace(QStringLiteral("'"), QStringLiteral("\\'"));
}

void WriteLiveRows(const LiveValueSource &source, const QDate &day, RealtimeArguments &arguments)
{
    LiveRowWriter writer(source, day, arguments);
    for (const LiveRow &row : kLiveRows)
        writer.write(row);
}

} // namespace Tarnby
