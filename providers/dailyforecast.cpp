// The daily forecast of the Pulse service into the Daily branch.

#include "providers/forecasts.h"

#include "core/weathercache.h"
#include "derive/dateformat.h"
#include "derive/dates.h"
#include "derive/forecasttext.h"
#include "derive/numberformat.h"
#include "providers/forecastdocument.h"
#include "providers/readingrules.h"

#include <QList>
#include <QRegularExpression>

#include <optional>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kDaily = u"Daily"_s;
const QString kStampKey = u"DetailedTimeStamp"_s;
constexpr QChar kDegree(0x00B0);

struct DailyPeriod {
    QDate date;
    bool night = false;
    QString localTime;
    QString utcTime;
    QString summary;
    QString icon;
    QString chance;
    QString temperature;
    QString text;
};

// The service's wording made plain: no degree signs, "%" for "percent", no ellipses.
QString plainDescription(QString text)
{
    return text.remove(kDegree)
        .replace(u" percent"_s, u"%"_s)
        .replace(u" PERCENT"_s, u"%"_s)
        .replace(u"..."_s, u". "_s);
}

// A period without a date is not stored.
std::optional<DailyPeriod> readPeriod(const QString &period)
{
    DailyPeriod read;
    read.localTime = PeriodValue(period, "forecastDateLocalStr");
    read.date = ServiceDate(read.localTime);
    if (!read.date.isValid()) return std::nullopt;
    read.night = PeriodValue(period, "isNightTimePeriod") == u"true";
    read.utcTime = PeriodValue(period, "forecastDateUtcStr").remove(u'Z');
    read.summary = PeriodValue(period, "summaryDescription");
    read.icon = PulseConditionCode(PeriodValue(period, "iconCode"));
    read.chance = NumberOrNotAvailable(PeriodValue(period, "precipProbability"));
    read.temperature = NumberOrNotAvailable(PeriodValue(period, "temperature"));
    read.text = plainDescription(PeriodValue(period, "detailedDescription"));
    return read;
}

QList<DailyPeriod> readPeriods(const QStringList &periods)
{
    QList<DailyPeriod> read;
    for (const QString &period : periods) {
        if (std::optional<DailyPeriod> one = readPeriod(period)) read.append(*one);
    }
    return read;
}

QString rowKey(const QString &field, int day)
{
    return field + QString::number(day);
}

QString dateText(const QDate &date, const QString &picture)
{
    return formatDateTime(wallClock(date), picture, dateLocale());
}

// The text of a half as the cache keeps it, with the chosen temperature in its wording.
QString predictionText(QString text, const QString &high, const QString &low)
{
    text.replace(u"--"_s, u"N/A"_s);
    return ApplyHighLowToText(text, high, low)
        .remove(u'\n')
        .replace(u"..."_s, u"... "_s)
        .replace(u"&deg;"_s, QString(kDegree));
}

// Writes the periods day by day. The first period is day 1; a night half ends its day.
// When the document opens on tonight's night and the station's observation is already of
// that date, tonight stays in day 1 and is overwritten by the next night, so that the
// first column reads as tomorrow.
class DailyWriter
{
public:
    DailyWriter(const DailyPeriod &first, const std::optional<QDate> &observed);

    void write(const DailyPeriod &period, int periodNumber);
    int days() const { return m_opened; }

private:
    void openDay(const QDate &date);
    void writeDayHalf(const DailyPeriod &period, int periodNumber);
    void writeNightHalf(const DailyPeriod &period, int periodNumber);
    void writeTemperature(const QString &field, const QString &value);
    void writeText(const QString &half, const QString &text);
    QDate pickDate() const { return m_reference.addDays(m_day - 1); }
    void save(const QString &field, const QString &value) const
    {
        SaveCache(kDaily, rowKey(field, m_day), value);
    }

    HourlyTable m_highLow = BuildHourlyHighLowTable();
    HourlyTable m_chances = BuildHourlyPrecipitationTable();
    QDate m_reference;
    QDate m_firstDay;
    bool m_tomorrowFirst = false;
    int m_day = 1;
    int m_opened = 0;
};

DailyWriter::DailyWriter(const DailyPeriod &first, const std::optional<QDate> &observed)
    : m_reference(observed.value_or(first.date)), m_firstDay(first.date)
{
    m_tomorrowFirst = first.night && observed && first.date <= *observed;
    if (m_tomorrowFirst) {
        m_firstDay = first.date.addDays(1);
        m_reference = m_firstDay;
    }
    SaveCache(kDaily, u"date"_s, ShortDateText(m_firstDay));
    SaveCache(kDaily, u"forecastDateLocalStr"_s, first.localTime);
    SaveCache(kDaily, u"forecastDateUtcStr"_s, first.utcTime);
}

void DailyWriter::openDay(const QDate &date)
{
    save(u"date"_s, dateText(date, u"MMM D"_s));
    save(u"day"_s, dateText(date, u"dddd"_s));
    m_opened = m_day;
}

void DailyWriter::write(const DailyPeriod &period, int periodNumber)
{
    if (m_day > m_opened) openDay(m_day == 1 ? m_firstDay : period.date);
    if (period.night) {
        writeNightHalf(period, periodNumber);
        if (!(periodNumber == 1 && m_tomorrowFirst)) ++m_day;
    } else {
        writeDayHalf(period, periodNumber);
    }
}

void DailyWriter::writeTemperature(const QString &field, const QString &value)
{
    const Reading reading = ApplyReadingRule(ReadingRule::Temperature, value);
    save(field, reading.value);
    SaveCache(kDaily, rowKey(field, m_day) + u'C', reading.twin);
}

void DailyWriter::writeText(const QString &half, const QString &text)
{
    save(u"prediction"_s + half, text);
    save(u"predictionC"_s + half, RewriteForecast(text));
}

void DailyWriter::writeDayHalf(const DailyPeriod &period, int periodNumber)
{
    save(u"title1"_s, dateText(period.date, u"dddd"_s));
    save(u"short-title1"_s, period.summary);
    save(u"image1"_s, period.icon);
    save(u"pre1"_s,
         PickPrecipitation(m_chances, pickDate(), period.chance, PickKind::HighDay, periodNumber));
    const QString high = period.temperature == kNotAvailable
                             ? kNotAvailable
                             : PickHighLow(m_highLow, pickDate(), period.temperature,
                                           PickKind::HighDay, periodNumber);
    writeTemperature(u"high"_s, high);
    writeText(u"1"_s, predictionText(period.text, high, QString()));
}

void DailyWriter::writeNightHalf(const DailyPeriod &period, int periodNumber)
{
    save(u"title2"_s, dateText(period.date, u"dddd"_s) + u" Night"_s);
    save(u"short-title2"_s, period.summary);
    save(u"image2"_s, period.icon);
    save(u"pre2"_s, PickPrecipitation(m_chances, pickDate(), period.chance, PickKind::HighNight,
                                      periodNumber));
    const bool known = period.temperature != kNotAvailable;
    const auto pickLow = [&](PickKind kind) {
        return known ? PickHighLow(m_highLow, pickDate(), period.temperature, kind, periodNumber)
                     : kNotAvailable;
    };
    const QString low = pickLow(PickKind::Low);
    writeTemperature(u"low"_s, low);
    writeTemperature(u"lown"_s, pickLow(PickKind::LowNight));
    writeText(u"2"_s, predictionText(period.text, QString(), low));
}

std::optional<QDate> observedDate()
{
    const std::optional<QDateTime> observed = readDate(GetCache(u"Current"_s, u"observed"_s));
    return observed ? std::optional<QDate>(observed->date()) : std::nullopt;
}

void writeDaily(const QList<DailyPeriod> &periods, const QString &stamp)
{
    const ForecastWriting writing;
    DelCache(kDaily);
    DailyWriter writer(periods.first(), observedDate());
    for (qsizetype i = 0; i < periods.size(); ++i)
        writer.write(periods.at(i), int(i + 1));
    SaveCache(kDaily, u"count"_s, QString::number(writer.days()));
    SaveCache(kLastUpdatedSection, kStampKey, stamp);
}

// Replaces the first phrase of the high (or low) with the chosen number.
QString applyChosen(const QString &text, const QRegularExpression &phrase, const QString &word,
                    const QString &number)
{
    const QRegularExpressionMatch match = phrase.match(text);
    if (!match.hasMatch()) return text;
    const bool opensSentence = match.captured().startsWith(u". "_s);
    const QString replacement =
        (opensSentence ? u". "_s + word.at(0).toUpper() + word.mid(1) : u' ' + word) +
        u" temperature near "_s + number + u"F."_s;
    return QString(text).replace(match.capturedStart(), match.capturedLength(), replacement);
}

} // namespace

// The phrase runs to the end of its sentence: a "." before a digit is a decimal point
// ("around 71.5F."), not the end.
QString ApplyHighLowToText(const QString &text, const QString &high, const QString &low)
{
    static const QRegularExpression highPhrase(
        uR"((((\. High|\. Highs| high| highs)( temperature)* around ).+?\.(?!\d))|)"
        uR"((((\. High|\. Highs| high| highs) (in|near) the (lower|mid|upper)).+?\.(?!\d)))"_s);
    static const QRegularExpression lowPhrase(
        uR"((((\. Low|\. Lows| low| lows)( temperature)* around ).+?\.(?!\d))|)"
        uR"((((\. Low|\. Lows| low| lows) (in|near) the (lower|mid|upper)).+?\.(?!\d)))"_s);
    static const QRegularExpression fahrenheit(uR"( ([01234567890]+)F( |\.))"_s);
    QString result = text;
    result.replace(u"mph"_s, u" mph"_s).replace(u"  mph"_s, u" mph"_s).remove(u"\r\n"_s);
    if (isNumeric(high))
        result = applyChosen(result, highPhrase, u"high"_s, high);
    else if (isNumeric(low))
        result = applyChosen(result, lowPhrase, u"low"_s, low);
    return result.replace(fahrenheit, u" \\1"_s + kDegree + u"F\\2"_s);
}

void ReadDailyForecast(const QString &documentPath, bool force)
{
    const char *routine = "ReadDailyForecast";
    const QString document = ReadForecastDocument(documentPath);
    const std::optional<QStringList> list = CutPeriods(document, u"\"dailyForecastPeriods\": ["_s);
    if (!list) return ForecastNotRead(ForecastDocument::Daily, u"no daily periods"_s, routine);
    const QList<DailyPeriod> periods = readPeriods(*list);
    if (periods.isEmpty())
        return ForecastNotRead(ForecastDocument::Daily, u"no dated daily period"_s, routine);
    setForecastFailed(ForecastDocument::Daily, false);
    const QString stamp = PeriodValue(document, "forecastCreatedUtcStr");
    const bool seen = stamp != kNotAvailable && stamp == GetCache(kLastUpdatedSection, kStampKey);
    if (seen && !force) return;
    writeDaily(periods, stamp == kNotAvailable ? QString() : stamp);
}

void ProcessDetailedDownload(const QString &documentPath, bool newData, bool force)
{
    ReadDailyForecast(documentPath, newData || force);
}

} // namespace Tarnby
