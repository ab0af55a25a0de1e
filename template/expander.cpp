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

QString withEntities(QString text)
{
    text.replace(QChar(0xB0), QStringLiteral("&deg;"));
    text.replace(QStringLiteral("&ndash;"),
                 QStringLiteral("<SPAN STYLE='color:#BBBBBB;'>&ndash;</SPAN>"));
    return text;
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
