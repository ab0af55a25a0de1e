#include "template/expander.h"

#include "template/cachereads.h"
#include "template/currenttokens.h"
#include "template/loops.h"
#include "template/misctokens.h"
#include "template/tokentext.h"

namespace Tarnby
{

namespace
{

// Every degree sign becomes "&deg;", then every "&ndash;" is greyed. Neither replacement
// can make or break a match of the other, so one walk does both.
QString withEntities(const QString &text)
{
    const QChar degree(0xB0);
    const QStringView dash = u"&ndash;";
    QString out;
    out.reserve(text.size() + text.size() / 8);
    qsizetype copied = 0;
    qsizetype nextDegree = text.indexOf(degree), nextDash = text.indexOf(dash);
    while (nextDegree >= 0 || nextDash >= 0) {
        const bool isDegree = nextDash < 0 || (nextDegree >= 0 && nextDegree < nextDash);
        const qsizetype at = isDegree ? nextDegree : nextDash;
        out.append(QStringView(text).mid(copied, at - copied));
        if (isDegree) {
            out.append(u"&deg;");
            copied = at + 1;
            nextDegree = text.indexOf(degree, copied);
        } else {
            out.append(u"<SPAN STYLE='color:#BBBBBB;'>&ndash;</SPAN>");
            copied = at + dash.size();
            nextDash = text.indexOf(dash, copied);
        }
    }
    return out.append(QStringView(text).mid(copied));
}

} // namespace

QString ExpandTemplate(const QString &text, bool useEntities, bool forceLoops)
{
    const ExpansionCache cache;
    TokenText flat(text);
    ExpandMiscTokens(flat);
    ExpandCurrentTokens(flat);
    QString out = ExpandPeriodLoops(flat.take(), forceLoops);
    out = ExpandDailySequenceLoops(std::move(out), forceLoops);
    out = ExpandDailyLoops(std::move(out), forceLoops);
    out = ExpandMoonLoops(std::move(out), forceLoops);
    out = ExpandHourlyLoops(std::move(out), forceLoops);
    return useEntities ? withEntities(std::move(out)) : out;
}

} // namespace Tarnby
