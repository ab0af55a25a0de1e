// The daily sequence loop (alternating day and night rows) and the daily loop (one group
// of rows a day), with the tokens of the "Daily" and "Sun" branches.

#include "template/loops.h"

#include "core/clock.h"
#include "core/weathercache.h"
#include "derive/dateformat.h"
#include "derive/dates.h"
#include "derive/numberformat.h"
#include "derive/sunmoon.h"
#include "template/cachereads.h"
#include "template/formatters.h"
#include "template/loopdriver.h"
#include "template/rowtokens.h"

#include <array>

namespace Tarnby
{

namespace
{

const QString kDaily = QStringLiteral("Daily");

// Where a row stands: the half (1 day, 2 night), the day index and the row number.
struct DailyRow {
    int half = 1;
    int day = 1;
    int row = 1;
    QString dayName;      // the label or title that [DAILY DAY] shows
    bool isLabel = false; // a fixed label stands in all forms, unabbreviated
};

QString indexed(const char *key, int index)
{
    return QLatin1StringView(key) + QString::number(index);
}

QString halfKey(const char *key, const DailyRow &r)
{
    return QLatin1StringView(key) + QString::number(r.half) + QString::number(r.day);
}

QString dailyValue(const QString &key, bool afterBlank = false)
{
    return ReadCacheValue(kDaily, key, afterBlank, true);
}

QString sunTime(const QString &key, bool ampm)
{
    const QString time = CacheValue(QStringLiteral("Sun"), key);
    return time.isEmpty() ? QStringLiteral("N/A") : TimeText(time, !ampm, false, true);
}

const TokenFamily kDayNames("DAILY DAY", {"", "ABBREV", "ABBREV DN", "ABBREV SHORT"});
const TokenFamily kNightNames("DAILY NIGHT", {"", "ABBREV", "ABBREV DN", "ABBREV SHORT"});
const TokenFamily kHigh("DAILY HI", {"", "PARENS", "PLAIN", "RETURN", "RETURN DEGREE",
                                     "SINGLE PLAIN", "SINGLE PLAIN WHOLE"});
const TokenFamily kLowNight("DAILY LO NIGHT", {"", "PLAIN", "RETURN", "RETURN DEGREE", "PARENS",
                                               "SINGLE PLAIN", "SINGLE PLAIN WHOLE"});
const TokenFamily kLow("DAILY LO",
                       {"", "PLAIN", "RETURN", "PARENS", "SINGLE PLAIN", "SINGLE PLAIN WHOLE"});
const TokenFamily kTemp("DAILY TEMP", {"", "DEGREE", "PARENS", "PLAIN", "RETURN", "SINGLE PLAIN"});
const TokenFamily kSunTimes("DAILY", {"DAWN", "DAWN AMPM", "DUSK", "DUSK AMPM", "SUNRISE",
                                      "SUNRISE AMPM", "SUNSET", "SUNSET AMPM"});

void expandDayNames(TokenText &row, const TokenFamily &family, const DailyRow &r,
                    const QString &behind)
{
    expandFamily(row, family, [&](const QString &suffix) {
        if (suffix.isEmpty() || r.isLabel) return r.dayName + behind;
        return AbbreviateDayName(r.dayName, suffix.endsWith(u"SHORT"), suffix.endsWith(u"DN")) +
               behind;
    });
}

// A temperature of "Daily" (key + index, twin key + index + "C") dressed by its suffix.
void expandDailyTemperatures(TokenText &row, const TokenFamily &family, const QString &key)
{
    expandFamily(row, family, [&](const QString &suffix) {
        return FormatTemperature(kDaily, key, TemperatureDress::fromSuffix(suffix));
    });
}

void expandSunTimes(TokenText &row, int index)
{
    // "SUNRISE AMPM": the key "sunrise-time<index>", with the AM/PM letters kept.
    expandFamily(row, kSunTimes, [&](const QString &suffix) {
        const QString name = suffix.section(u' ', 0, 0).toLower();
        return sunTime(name + QStringLiteral("-time") + QString::number(index),
                       suffix.endsWith(u"AMPM"));
    });
    const auto at = [index](const char *key) { return sunTime(indexed(key, index), true); };
    expandToken(row, QStringLiteral("[DAILY SUNRISEDAWN AMPM]"), [&] {
        return at("dawn-time") +
               QStringLiteral("<SPAN STYLE='color:gray'> &ndash;dawn</SPAN><BR><STRONG>") +
               at("sunrise-time") +
               QStringLiteral("</STRONG><SPAN STYLE='color:gray'> &ndash;sunrise</SPAN>");
    });
    expandToken(row, QStringLiteral("[DAILY SUNSETDUSK AMPM]"), [&] {
        return QStringLiteral("<STRONG>") + at("sunset-time") +
               QStringLiteral("</STRONG><SPAN STYLE='color:gray'> &ndash;sunset</SPAN><BR>") +
               at("dusk-time") + QStringLiteral("<SPAN STYLE='color:gray'> &ndash;dusk</SPAN>");
    });
}

// The tokens both daily loops know. The temperatures of [DAILY HI] and [DAILY LO] use
// the row number as their index, not the day: a deliberate part of the sequence row.
void expandCommonTokens(TokenText &row, const DailyRow &r, bool withHalf)
{
    if (withHalf)
        expandToken(row, QStringLiteral("[DAILY CONDITION]"),
                    [&] { return dailyValue(halfKey("short-title", r)); });
    expandToken(row, QStringLiteral("[DAILY DATE]"),
                [&] { return dailyValue(indexed("date", r.day)); });
    expandToken(row, QStringLiteral("[DAILY DATE DAY]"),
                [&] { return dailyValue(indexed("date", r.day), true); });
    gated(row, u"[DAILY DAY", [&] { expandDayNames(row, kDayNames, r, QString()); });
    expandToken(row, QStringLiteral("[DAILY ID]"), [&] { return QString::number(r.row); });
    gated(row, u"[DAILY HI", [&] { expandDailyTemperatures(row, kHigh, indexed("high", r.row)); });
    gated(row, u"[DAILY LO NIGHT",
          [&] { expandDailyTemperatures(row, kLowNight, indexed("lown", r.row)); });
    gated(row, u"[DAILY LO", [&] { expandDailyTemperatures(row, kLow, indexed("low", r.row)); });
    if (withHalf) {
        gated(row, u"[DAILY TEMP", [&] {
            expandDailyTemperatures(row, kTemp, indexed(r.half == 1 ? "high" : "low", r.day));
            expandToken(row, QStringLiteral("[DAILY TEMP LABEL]"), [&] {
                return r.half == 1 ? QStringLiteral("High") : QStringLiteral("Low");
            });
        });
        expandToken(row, QStringLiteral("[DAILY ICON]"),
                    [&] { return IconPathOfCode(CacheValue(kDaily, halfKey("image", r))); });
    }
    expandToken(row, QStringLiteral("[DAILY NUM]"), [&] { return QString::number(r.day); });
    if (withHalf) {
        gated(row, u"[DAILY PRECIPITATION", [&] {
            expandToken(row, QStringLiteral("[DAILY PRECIPITATION]"),
                        [&] { return FormatChance(kDaily, halfKey("pre", r), true); });
        });
        expandToken(row, QStringLiteral("[DAILY PREDICTION]"),
                    [&] { return dailyValue(halfKey("predictionC", r)); });
    }
    // [DAILY DAWN] and its siblings stand behind this gate too.
    gated(row, u"[DAILY SUN", [&] {
        if (withHalf) {
            const QString key = indexed(r.half == 1 ? "sunrise-time" : "sunset-time", r.day);
            expandToken(row, QStringLiteral("[DAILY SUN]"), [&] { return sunTime(key, false); });
            expandToken(row, QStringLiteral("[DAILY SUN AMPM]"),
                        [&] { return sunTime(key, true); });
            expandToken(row, QStringLiteral("[DAILY SUN LABEL]"), [&] {
                return r.half == 1 ? QStringLiteral("Sunrise") : QStringLiteral("Sunset");
            });
        }
        expandSunTimes(row, r.row);
    });
}

void expandDayOnlyTokens(TokenText &row, const DailyRow &r)
{
    const DailyRow day{1, r.day, r.row, {}, false}, night{2, r.day, r.row, {}, false};
    expandToken(row, QStringLiteral("[DAILY CONDITION DAY]"),
                [&] { return dailyValue(halfKey("short-title", day)); });
    expandToken(row, QStringLiteral("[DAILY CONDITION NIGHT]"),
                [&] { return dailyValue(halfKey("short-title", night)); });
    expandToken(row, QStringLiteral("[DAILY ICON DAY]"),
                [&] { return IconPathOfCode(CacheValue(kDaily, halfKey("image", day))); });
    expandToken(row, QStringLiteral("[DAILY ICON NIGHT]"),
                [&] { return IconPathOfCode(CacheValue(kDaily, halfKey("image", night))); });
    gated(row, u"[DAILY NIGHT",
          [&] { expandDayNames(row, kNightNames, r, QStringLiteral(" Night")); });
    gated(row, u"[DAILY PRECIPITATION", [&] {
        const QString dayKey = halfKey("pre", day), nightKey = halfKey("pre", night);
        expandToken(row, QStringLiteral("[DAILY PRECIPITATION DAY]"),
                    [&] { return FormatChance(kDaily, dayKey, true); });
        expandToken(row, QStringLiteral("[DAILY PRECIPITATION DAY LIKELY]"),
                    [&] { return ChanceLevel(kDaily, dayKey); });
        expandToken(row, QStringLiteral("[DAILY PRECIPITATION NIGHT]"),
                    [&] { return FormatChance(kDaily, nightKey, true); });
        expandToken(row, QStringLiteral("[DAILY PRECIPITATION NIGHT LIKELY]"),
                    [&] { return ChanceLevel(kDaily, nightKey); });
    });
    expandToken(row, QStringLiteral("[DAILY PREDICTION DAY]"),
                [&] { return dailyValue(halfKey("predictionC", day)); });
    expandToken(row, QStringLiteral("[DAILY PREDICTION NIGHT]"),
                [&] { return dailyValue(halfKey("predictionC", night)); });
    const auto moonDate = [&r] {
        const std::optional<QDateTime> date = readDate(CacheValue(kDaily, indexed("date", r.day)));
        return date ? date->date() : QDate();
    };
    expandToken(row, QStringLiteral("[DAILY MOON ILLUMINATION]"), [&] {
        const std::optional<float> lit = GetMoonIllumination(moonDate());
        const std::optional<qint16> whole = lit ? roundToInt16(*lit) : std::nullopt;
        return whole ? QString::number(*whole) : QStringLiteral("N/A");
    });
    expandToken(row, QStringLiteral("[DAILY MOON PHASE]"),
                [&] { return GetMoonPhaseName(moonDate()); });
}

// The fixed label of one of the first rows of a daily sequence, or none.
QString sequenceLabel(const DailyRow &r, bool stale)
{
    if (r.day == 1 && r.half == 1)
        return stale ? QStringLiteral("Tomorrow") : QStringLiteral("Today");
    if (r.day == 1) return stale ? QStringLiteral("Tomorrow Tonight") : QStringLiteral("Tonight");
    if (r.day == 2 && !stale)
        return r.half == 1 ? QStringLiteral("Tomorrow") : QStringLiteral("Tomorrow Night");
    return {};
}

// The forecast is a day behind when its first date's day of the month is below that of
// the last conditions: the day numbers alone are compared, also across a month's end.
bool forecastIsStale()
{
    const std::optional<QDateTime> conditions =
        readDate(CacheValue(QStringLiteral("LastUpdated"), QStringLiteral("CurrentTimeStamp")));
    const std::optional<QDateTime> forecast = readDate(CacheValue(kDaily, QStringLiteral("Date")));
    return conditions && forecast && forecast->date().day() < conditions->date().day();
}

bool beginsAtNight()
{
    return CacheValue(kDaily, QStringLiteral("image11")).isEmpty();
}

bool sequenceRows(const QString &head, const QStringList &pieces, LoopOutput &out)
{
    const int cached = CacheCount(kDaily);
    const int count = std::min(HeadNumber(head, u"COUNT=").value_or(cached), cached);
    const bool stale = forecastIsStale();
    DailyRow r{beginsAtNight() ? 2 : 1, 1, 1, {}, false};
    return SequenceRows(pieces, count, out, [&](TokenText &row, int i) {
        r.row = i;
        const QString label = sequenceLabel(r, stale);
        r.isLabel = !label.isEmpty();
        r.dayName = r.isLabel ? label : CacheValue(kDaily, halfKey("title", r));
        expandCommonTokens(row, r, true);
        // A day row is followed by its night, a night by the next day.
        if (r.half == 2) ++r.day;
        r.half = r.half == 1 ? 2 : 1;
    });
}

bool pieceWanted(const QString &piece, int day)
{
    if (!piece.contains(QStringLiteral("NIGHT]")))
        return !CacheValue(kDaily, indexed("high", day)).isEmpty();
    if (CacheValue(kDaily, indexed("low", day)).isEmpty()) return false;
    return !(CacheValue(kDaily, indexed("prediction2", day)).isEmpty() &&
             !CacheValue(kDaily, indexed("prediction", day)).isEmpty());
}

bool dailyRows(const QString &head, const QStringList &pieces, LoopOutput &out)
{
    const int count = HeadNumber(head, u"COUNT=").value_or(CacheCount(kDaily));
    const int start = HeadNumber(head, u"START=").value_or(1);
    // The last entry is the empty one behind the last tag; a body without tags has no piece.
    const qsizetype usable = pieces.size() - 1;
    // A forecast that begins at night starts with the second piece, when the first is a day row.
    const qsizetype firstPiece =
        usable > 1 && beginsAtNight() && pieces.first().contains(QStringLiteral(" DAY]")) ? 1 : 0;
    const QList<TokenText> prototypes = PiecePrototypes(pieces);
    for (int i = 1; i <= count; ++i) {
        const int day = i + start - 1;
        const DailyRow r{1, day, day, CacheValue(kDaily, indexed("day", day)), false};
        for (qsizetype p = i == 1 ? firstPiece : 0; p < usable; ++p) {
            if (!pieceWanted(pieces[p], day)) continue;
            TokenText row = prototypes[p];
            expandCommonTokens(row, r, false);
            expandDayOnlyTokens(row, r);
            if (!out.append(row.take())) return false;
        }
    }
    return true;
}

// The names ("dddd", "ddd") of today and the six days after, made once a day and locale.
const std::array<std::pair<QString, QString>, 7> &weekdaysAhead()
{
    struct Week {
        QDate today;
        QString locale;
        std::array<std::pair<QString, QString>, 7> names;
    };
    thread_local Week week;
    const QDate today = clock().now().date();
    if (week.today != today || week.locale != dateLocale().name()) {
        week.today = today;
        week.locale = dateLocale().name();
        for (int ahead = 0; ahead < 7; ++ahead) {
            const QDateTime day = wallClock(today.addDays(ahead));
            week.names[ahead] = {formatDateTime(day, QStringLiteral("dddd"), dateLocale()),
                                 formatDateTime(day, QStringLiteral("ddd"), dateLocale())};
        }
    }
    return week.names;
}

} // namespace

QString AbbreviateDayName(const QString &text, bool shortName, bool keepSecondWord)
{
    if (text == u"Overnight") return text;
    if (shortName) return text.left(1).toUpper();
    const qsizetype blank = text.indexOf(u' ');
    const QString word = blank < 0 ? text : text.left(blank);
    QString name = word.left(3);
    for (const auto &[full, abbreviated] : weekdaysAhead()) {
        if (word.compare(full, Qt::CaseInsensitive) == 0) {
            name = abbreviated;
            break;
        }
    }
    return keepSecondWord && blank >= 0 ? name + u' ' + text.mid(blank + 1) : name;
}

QString ExpandDailySequenceLoops(QString text, bool forceLoops)
{
    static const LoopKind kind{QStringLiteral("[DAILY SEQUENCE "),
                               QStringLiteral("[DAILY SEQUENCE LOOP "),
                               QStringLiteral("[/DAILY SEQUENCE LOOP]"), 22};
    return ExpandLoopConstructs(std::move(text), forceLoops, kind, sequenceRows);
}

QString ExpandDailyLoops(QString text, bool forceLoops)
{
    static const LoopKind kind{QStringLiteral("[DAILY "), QStringLiteral("[DAILY LOOP "),
                               QStringLiteral("[/DAILY LOOP]"), 13};
    return ExpandLoopConstructs(std::move(text), forceLoops, kind, dailyRows);
}

} // namespace Tarnby
