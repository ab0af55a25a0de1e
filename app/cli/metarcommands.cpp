// METAR command: metar.

#include "app/cli/command.h"
#include "providers/metar.h"

namespace Tarnby::Cli
{

namespace
{

// The words of the report may come as one argument or as many. The station services
// deliver reports without the leading "METAR ", and the program puts it in front
// before the validity test; so does this command.
int metar(const QStringList &args, Io &io)
{
    if (args.isEmpty()) return usageError(*findCommand(QStringLiteral("metar")), io);
    QString report = args.join(u' ').trimmed();
    if (!report.startsWith(QLatin1String("METAR "))) report.prepend(QLatin1String("METAR "));
    if (!clsMetar::IsValidMetar(report)) {
        io.err << "tarnby-cli metar: not a METAR report of the US form "
                  "(visibility in SM, altimeter A....)"
               << Qt::endl;
        return 1;
    }
    clsMetar decoded;
    decoded.ParseMetarData(report);
    for (const auto &[name, value] : MetarReadings(decoded))
        io.out << name << '=' << value << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND(
    {"metar", "\"REPORT\"",
     "decode a US METAR report (\"METAR \" optional) into Name=value lines: Clouds, "
     "CloudsHeight, Condition, DateTimeUtc, DewPointC, DewPointF, Humidity, IsAuto, "
     "FeelsLikeF, Pressure, StationId, TemperatureC, TemperatureF, Time, Visibility, "
     "WindDirection, WindGustSpeedMph, WindGustSpeedKts, WindSpeedMph, WindSpeedKts; "
     "exit 1 when it is no valid report",
     &metar, false});

} // namespace

} // namespace Tarnby::Cli
