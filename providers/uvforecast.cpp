// The ultraviolet forecast into the UV branch: the Pulse forecast and Weather
// Underground's single index.

#include "providers/forecasts.h"

#include "core/files.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "providers/forecastdocument.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"

#include <QList>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kUv = u"UV"_s;

struct UvRow {
    QString date;
    QString index;
};

// A period without a date is not stored.
std::optional<UvRow> readPeriod(const QString &period)
{
    const QDate date = ServiceDate(PeriodValue(period, "DateUtcString"));
    if (!date.isValid()) return std::nullopt;
    return UvRow{ShortDateText(date), PeriodValue(period, "UvIndex")};
}

QList<UvRow> readPeriods(const QStringList &periods)
{
    QList<UvRow> rows;
    for (const QString &period : periods) {
        if (std::optional<UvRow> row = readPeriod(period)) rows.append(*row);
    }
    return rows;
}

// The rows and their count, then the time of the reading as a local ISO stamp, the form
// of the run's own stamps. Without rows, row 1 holds today and "N/A" for the readers that
// show a first day whatever the count says.
void writeUv(const QList<UvRow> &rows)
{
    const ForecastWriting writing;
    DelCache(kUv);
    const QList<UvRow> written =
        rows.isEmpty() ? QList<UvRow>{{ShortDateText(localNow().date()), kNotAvailable}} : rows;
    for (qsizetype i = 0; i < written.size(); ++i) {
        const QString index = QString::number(i + 1);
        SaveCache(kUv, u"date"_s + index, written.at(i).date);
        SaveCache(kUv, u"index"_s + index, written.at(i).index);
    }
    SaveCache(kUv, u"count"_s, QString::number(rows.size()));
    SaveCache(kLastUpdatedSection, u"UV"_s, localNow().toString(u"yyyy-MM-dd'T'HH:mm:ss"_s));
    setForecastFailed(ForecastDocument::Uv, rows.isEmpty());
}

} // namespace

void ReadUvForecast(const QString &documentPath)
{
    const char *routine = "ReadUvForecast";
    const std::optional<QStringList> list =
        CutPeriods(ReadForecastDocument(documentPath), u"\"UvPeriods\": ["_s);
    if (!list) return ForecastNotRead(ForecastDocument::Uv, u"no UV periods"_s, routine);
    const QList<UvRow> rows = readPeriods(*list);
    if (rows.isEmpty() && !list->isEmpty())
        return ForecastNotRead(ForecastDocument::Uv, u"no dated UV period"_s, routine);
    writeUv(rows);
}

void ReadWeatherUndergroundUv(const QString &documentPath)
{
    const std::optional<QString> index =
        CutBetweenMarks(ReadFile(documentPath), u"<UV val=\""_s, u"\""_s);
    if (!index || index->trimmed().isEmpty())
        return ForecastNotRead(ForecastDocument::Uv, u"no UV index"_s, "ReadWeatherUndergroundUv");
    writeUv({{ShortDateText(localNow().date()), index->trimmed()}});
}

void ProcessUvDownload(const QString &documentPath, bool, bool)
{
    ReadUvForecast(documentPath);
}

void ProcessWuUvDownload(const QString &documentPath, bool, bool)
{
    ReadWeatherUndergroundUv(documentPath);
}

} // namespace Tarnby
