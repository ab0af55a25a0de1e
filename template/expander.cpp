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

QString withEntities(const QString &text)
{
    return ReplaceAll(ReplaceAll(text, u"\u00B0", u"&deg;"), u"&ndash;",
                      u"<SPAN STYLE='color:#BBBBBB;'>&ndash;</SPAN>");
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
