#include "template/rowtokens.h"

#include "derive/comfort.h"
#include "template/formatters.h"

namespace Tarnby
{

QString GivenTemperature(const QString &value, const QString &suffix)
{
    if (suffix == u"PLAIN NOT CONVERTED") return value;
    if (suffix == u"COLOR") return TemperatureColour(value);
    return FormatTemperature(QStringLiteral("Hourly"), value, TemperatureDress::fromSuffix(suffix),
                             true);
}

} // namespace Tarnby
