// The NWS text forecast laid over the Daily branch: its rain and snow amounts.

#include "providers/forecasts.h"

#include "core/files.h"
#include "core/weathercache.h"
#include "derive/forecasttext.h"
#include "providers/forecastdocument.h"
#include "providers/textcutters.h"

#include <QDomDocument>
#include <QDomElement>
#include <QList>

namespace Tarnby
{

using namespace Qt::Literals::StringLiterals;

namespace
{

const QString kDaily = u"Daily"_s;

struct NwsPeriod {
    bool night = false;
    QString text;
};

// The element's name without its namespace prefix.
QString baseName(const QDomElement &element)
{
    const QString name = element.tagName();
    return name.mid(name.indexOf(u':') + 1);
}

NwsPeriod readPeriod(const QDomElement &period)
{
    NwsPeriod read;
    for (QDomElement child = period.firstChildElement(); !child.isNull();
         child = child.nextSiblingElement()) {
        const QString name = baseName(child);
        if (name == u"valid")
            read.night = child.text().trimmed().left(1).toUpper() == u"N";
        else if (name == u"text")
            read.text = child.text();
    }
    return read;
}

// The periods of Forecast/period; nothing when the document is not such a forecast.
std::optional<QList<NwsPeriod>> readPeriods(const QString &document)
{
    QDomDocument dom;
    if (!dom.setContent(document)) return std::nullopt;
    const QDomElement root = dom.documentElement();
    if (baseName(root) != u"Forecast") return std::nullopt;
    QList<NwsPeriod> periods;
    for (QDomElement period = root.firstChildElement(); !period.isNull();
         period = period.nextSiblingElement()) {
        if (baseName(period) == u"period") periods.append(readPeriod(period));
    }
    if (periods.isEmpty()) return std::nullopt;
    return periods;
}

// "New rainfall amounts less than a tenth of an inch possible." out of a period's text.
QString amountSentence(const QString &text, const QString &opening)
{
    const std::optional<QString> rest = CutBetweenMarks(text, opening, u"."_s);
    return rest ? opening + *rest + u'.' : QString();
}

QString withAmounts(QString prediction, const QString &nwsText)
{
    struct Fall {
        QString opening;
        QString named; // a text that holds it has amounts of its own
    };
    static const Fall falls[] = {{u"New rainfall "_s, u"rainfall amounts"_s},
                                 {u"New snowfall "_s, u"snowfall amounts"_s}};
    for (const Fall &fall : falls) {
        const QString sentence = amountSentence(nwsText, fall.opening);
        if (sentence.isEmpty() || prediction.contains(fall.named, Qt::CaseInsensitive)) continue;
        prediction = prediction.isEmpty() ? sentence : prediction.trimmed() + u' ' + sentence;
    }
    return prediction;
}

void layOver(const QString &half, int day, const QString &nwsText)
{
    const QString key = u"prediction"_s + half + QString::number(day);
    const QString prediction = GetCache(kDaily, key);
    const QString amended = withAmounts(prediction, nwsText);
    if (amended == prediction) return;
    SaveCache(kDaily, key, amended);
    SaveCache(kDaily, u"predictionC"_s + half + QString::number(day), RewriteForecast(amended));
}

// The periods are numbered into days as the daily reader numbers its own: the first
// period is day 1 and a night ends its day.
void layOverDaily(const QList<NwsPeriod> &periods)
{
    const ForecastWriting writing;
    const int days = CacheCount(kDaily);
    int day = 1;
    for (const NwsPeriod &period : periods) {
        if (day > days) break;
        layOver(period.night ? u"2"_s : u"1"_s, day, period.text);
        if (period.night) ++day;
    }
}

} // namespace

void ReadNwsForecastText(const QString &documentPath)
{
    const std::optional<QList<NwsPeriod>> periods = readPeriods(ReadFile(documentPath));
    if (!periods)
        return ForecastNotRead(ForecastDocument::NwsText, u"no forecast periods"_s,
                               "ReadNwsForecastText");
    setForecastFailed(ForecastDocument::NwsText, false);
    layOverDaily(*periods);
}

void ProcessNwsDetailedDownload(const QString &documentPath, bool, bool)
{
    ReadNwsForecastText(documentPath);
}

} // namespace Tarnby
