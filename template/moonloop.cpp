// The moon loop: one row a day from the first forecast day, with the moon of that day.

#include "template/loops.h"

#include "derive/dateformat.h"
#include "derive/dates.h"
#include "derive/icons.h"
#include "derive/numberformat.h"
#include "derive/sunmoon.h"
#include "template/cachereads.h"
#include "template/loopdriver.h"
#include "template/rowtokens.h"

namespace Tarnby
{

namespace
{

void expandMoonRow(TokenText &row, const QDateTime &date)
{
    const auto picture = [&date](const QString &picture) {
        return date.isValid() ? formatDateTime(date, picture, dateLocale()) : QStringLiteral("N/A");
    };
    const QString weekday = picture(QStringLiteral("dddd"));
    expandToken(row, QStringLiteral("[MOON DATE]"),
                [&] { return NormaliseDate(picture(GetShortDatePattern()), systemDateOrder()); });
    expandToken(row, QStringLiteral("[MOON DATE DAY]"),
                [&] { return picture(QStringLiteral("d")); });
    expandToken(row, QStringLiteral("[MOON DATE SHORT]"),
                [&] { return picture(QStringLiteral("mmm d")); });
    expandToken(row, QStringLiteral("[MOON DAY]"), [&] { return weekday; });
    expandToken(row, QStringLiteral("[MOON DAY ABBREV]"),
                [&] { return AbbreviateDayName(weekday, false, false); });
    expandToken(row, QStringLiteral("[MOON DAY ABBREV SHORT]"),
                [&] { return AbbreviateDayName(weekday, true, false); });
    expandToken(row, QStringLiteral("[MOON ICON]"),
                [&] { return MoonIconOf(GetMoonPhaseImage(date.date())); });
    expandToken(row, QStringLiteral("[MOON ILLUMINATION]"), [&] {
        const std::optional<float> lit = GetMoonIllumination(date.date());
        const std::optional<qint16> whole = lit ? roundToInt16(*lit) : std::nullopt;
        return whole ? QString::number(*whole) : QStringLiteral("N/A");
    });
    expandToken(row, QStringLiteral("[MOON PHASE]"), [&] { return GetMoonPhaseName(date.date()); });
}

bool moonRows(const QString &head, const QStringList &pieces, LoopOutput &out)
{
    const int count = HeadNumber(head, u"COUNT=").value_or(14);
    const int start = HeadNumber(head, u"START=").value_or(1);
    const std::optional<QDateTime> base =
        readDate(CacheValue(QStringLiteral("Daily"), QStringLiteral("date")));
    return SequenceRows(pieces, count, out, [&](TokenText &row, int i) {
        expandMoonRow(row, base ? wallClock(base->date().addDays(i + start - 2), QTime(18, 0))
                                : QDateTime());
    });
}

} // namespace

QString ExpandMoonLoops(QString text, bool forceLoops)
{
    // The two characters behind the closing token go with it.
    static const LoopKind kind{QStringLiteral("[MOON "), QStringLiteral("[MOON LOOP "),
                               QStringLiteral("[/MOON LOOP]"), 14};
    return ExpandLoopConstructs(std::move(text), forceLoops, kind, moonRows);
}

} // namespace Tarnby
