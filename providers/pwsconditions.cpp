// The pipe-delimited live record: one line, fields numbered from 0, in the base units
// of an "english" request.

#include "providers/conditions.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"

#include <QStringList>

#include <array>
#include <optional>

namespace Tarnby
{

namespace
{

enum class FieldKind { Reading, WholeRate, Humidity, HumidityHigh, HumidityLow, Plain, Direction };

struct RecordField {
    int index;
    const char *key;
    FieldKind kind;
    ReadingRule rule = ReadingRule::Temperature; // for Reading and WholeRate
};

constexpr int kTimeField = 1;
constexpr int kDateField = 2;
constexpr int kHumidityField = 11;

// The walk after the observation time; a record that ends early stops it.
constexpr std::array<RecordField, 24> kFields{{
    {3, "temp", FieldKind::Reading, ReadingRule::Temperature},
    {12, "temp-high", FieldKind::Reading, ReadingRule::Temperature},
    {13, "temp-low", FieldKind::Reading, ReadingRule::Temperature},
    {15, "feels-like", FieldKind::Reading, ReadingRule::Temperature},
    {17, "temp-rate", FieldKind::WholeRate, ReadingRule::Rate},
    {14, "dew-point", FieldKind::Reading, ReadingRule::Temperature},
    {kHumidityField, "humidity", FieldKind::Humidity},
    {20, "humidity-high", FieldKind::HumidityHigh},
    {21, "humidity-low", FieldKind::HumidityLow},
    {18, "humidity-rate", FieldKind::Plain},
    {8, "rain-today", FieldKind::Reading, ReadingRule::Rain},
    {9, "rain-rate", FieldKind::Reading, ReadingRule::Rain},
    {24, "rain-rate-max", FieldKind::Reading, ReadingRule::Rain},
    {16, "rain-month", FieldKind::Reading, ReadingRule::Rain},
    {4, "wind-direction", FieldKind::Direction},
    {26, "wind-direction-avg", FieldKind::Direction},
    {5, "wind-speed", FieldKind::Reading, ReadingRule::Wind},
    {27, "wind-speed-avg", FieldKind::Reading, ReadingRule::Wind},
    {6, "gust-direction", FieldKind::Direction},
    {7, "gust-speed", FieldKind::Reading, ReadingRule::Wind},
    {10, "pressure", FieldKind::Reading, ReadingRule::Pressure},
    {22, "pressure-high", FieldKind::Reading, ReadingRule::Pressure},
    {23, "pressure-low", FieldKind::Reading, ReadingRule::Pressure},
    {19, "pressure-rate", FieldKind::Reading, ReadingRule::Pressure},
}};

// The field's number characters; "N/A" when they make no number. Current was cleared
// before the walk, so there is no cached value to fall back on.
QString numberField(const QStringList &fields, int index, const QString &kind = QString())
{
    const QString number = KeepNumberCharacters(fields.at(index), kind);
    return isNumeric(number) ? number : kNotAvailable;
}

QString humidityField(const QStringList &fields)
{
    const QString humidity = numberField(fields, kHumidityField, QStringLiteral("Humidity"));
    return humidity == QStringLiteral("0") ? kNotAvailable : humidity;
}

// "3:05p" on "4/07/2024" is 3:05 PM on 7 April 2024, in the system's date form.
QString observedText(const QStringList &fields)
{
    QString time = fields.at(kTimeField).trimmed();
    time.replace(QLatin1Char('a'), QStringLiteral(" AM"))
        .replace(QLatin1Char('p'), QStringLiteral(" PM"));
    const QString date =
        fields.at(kDateField).trimmed().replace(QStringLiteral("/0"), QStringLiteral("/"));
    return NormaliseDate(date + QLatin1Char(' ') + time, QStringLiteral("MDY"));
}

void save(const char *key, const QString &value)
{
    SaveCache(kCurrentSection, QLatin1String(key), value);
}

void writeField(const QStringList &fields, const RecordField &field)
{
    const QString key = QLatin1String(field.key);
    switch (field.kind) {
    case FieldKind::Reading:
        WriteReading(key, field.rule, numberField(fields, field.index));
        break;
    case FieldKind::WholeRate:
        WriteReading(key, field.rule, WholeNumberText(numberField(fields, field.index)));
        break;
    case FieldKind::Humidity:
        save(field.key, humidityField(fields));
        break;
    case FieldKind::HumidityHigh:
    case FieldKind::HumidityLow:
        save(field.key,
             ClampedHumidityBound(numberField(fields, field.index), humidityField(fields),
                                  field.kind == FieldKind::HumidityHigh));
        break;
    case FieldKind::Plain:
        save(field.key, numberField(fields, field.index));
        break;
    case FieldKind::Direction: {
        const QString number = KeepNumberCharacters(fields.at(field.index));
        if (!number.isEmpty()) save(field.key, CompassWord(number));
        break;
    }
    }
}

// False when the record ended before the walk did.
bool writeFields(const QStringList &fields)
{
    if (fields.size() <= kDateField) return false;
    save("observed", observedText(fields));
    for (const RecordField &field : kFields) {
        if (field.index >= fields.size()) return false;
        writeField(fields, field);
    }
    return true;
}

} // namespace

void ProcessPwsConditions(const QString &documentPath, bool, bool)
{
    process().ProcessingConditions = true;
    const QString record = ReadFile(documentPath).trimmed();
    const QStringList fields = record.split(QLatin1Char('|'));
    if (record.size() <= 10 || fields.size() < 2) {
        Log(QStringLiteral("No live record in %1 (ProcessPwsConditions)").arg(documentPath));
        process().ProcessingConditions = false;
        return;
    }
    const QString stationBefore = GetCache(kCurrentSection, QStringLiteral("station-id"));
    RememberConditions();
    DelCache(kCurrentSection);
    save("downloaded", generalDateText(localNow()));
    // A short record leaves the flag raised: the branch is half written.
    if (!writeFields(fields)) {
        Log(QStringLiteral("Live record ends after field %1 (ProcessPwsConditions)")
                .arg(fields.size() - 1));
        return;
    }
    // This reader watches after its writes, so the values agree and no balloon pops.
    const ConditionWatch watch;
    if (GetCache(kCurrentSection, QStringLiteral("station-id")) == stationBefore)
        watch.popIfChanged(true);
    SaveCache(QStringLiteral("LastUpdated"), QStringLiteral("CurrentTimeStamp"),
              GetCache(kCurrentSection, QStringLiteral("observed")));
    StoreLastPressure();
    process().ProcessingConditions = false;
}

} // namespace Tarnby
