#include "providers/forecastdocument.h"

#include "core/files.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"

#include <array>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

std::array<bool, 4> g_failed{};

bool &failedFlag(ForecastDocument document)
{
    return g_failed[static_cast<size_t>(document)];
}

} // namespace

bool ForecastFailed(ForecastDocument document)
{
    return failedFlag(document);
}

void setForecastFailed(ForecastDocument document, bool failed)
{
    failedFlag(document) = failed;
}

QString ReadForecastDocument(const QString &documentPath)
{
    QString document = ReadFile(documentPath);
    if (document.contains(u'\n') && !document.contains(u"\r\n"_s))
        document.replace(u'\n', u"\r\n"_s);
    return document;
}

std::optional<QStringList> CutPeriods(const QString &document, const QString &listMark)
{
    const std::optional<QString> list = CutBetweenMarks(document, listMark, u"]"_s);
    if (!list) return std::nullopt;
    if (list->trimmed().isEmpty()) return QStringList();
    return list->split(u"},\r\n"_s);
}

QString PeriodValue(const QString &period, const char *key)
{
    const QString value = ReadJsonValue(period, QLatin1String(key));
    // "NA" is the cutters' word for a key the period lacks or leaves empty.
    return value == u"NA" ? kNotAvailable : value;
}

QString NumberOrNotAvailable(const QString &value)
{
    return isNumeric(value) ? value : kNotAvailable;
}

std::optional<QDateTime> ServiceTime(const QString &text)
{
    if (text.size() < 10 || text == kNotAvailable) return std::nullopt;
    QString reading = text;
    reading.remove(u'Z');
    // The service's own form is read directly, anything else as the system reads dates.
    // Its date and time are read apart: a QDateTime would pass through the machine's
    // time zone for every period of a document.
    const QStringView view(reading);
    if (view.size() >= 19 && view.at(10) == u'T') {
        const QDate date = QDate::fromString(view.left(10), Qt::ISODate);
        const QTime time = QTime::fromString(view.mid(11), Qt::ISODate);
        if (date.isValid() && time.isValid()) return wallClock(date, time);
    }
    const QDateTime iso = QDateTime::fromString(reading, Qt::ISODate);
    if (iso.isValid()) return wallClock(iso.date(), iso.time());
    return readDate(reading.replace(u'T', u' '));
}

QDate ServiceDate(const QString &text)
{
    const std::optional<QDateTime> time = ServiceTime(text.left(text.indexOf(u'T')));
    return time ? time->date() : QDate();
}

QString ShortDateText(const QDate &date)
{
    return generalDateText(wallClock(date));
}

void ForecastNotRead(ForecastDocument document, const QString &why, const char *routine)
{
    setForecastFailed(document, true);
    Log(u"Forecast not read: "_s + why + u" ("_s + QLatin1String(routine) + u')');
}

ForecastWriting::ForecastWriting() : m_wasProcessing(process().ProcessingForecasts)
{
    process().ProcessingForecasts = true;
}

ForecastWriting::~ForecastWriting()
{
    process().ProcessingForecasts = m_wasProcessing;
}

} // namespace Tarnby
