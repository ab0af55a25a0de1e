// Derivation commands: rewrite, convert. Both work under the units stored in the
// settings ("Conversion") and the locale's number symbols.

#include "app/cli/command.h"
#include "derive/forecasttext.h"
#include "derive/units.h"

#include <QByteArray>

#include <functional>

namespace Tarnby::Cli
{

namespace
{

int rewrite(const QStringList &args, Io &io)
{
    if (args.size() != 1) return usageError(*findCommand(QStringLiteral("rewrite")), io);
    LoadConversionSettings();
    io.out << RewriteForecast(args.first()) << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"rewrite", "\"TEXT\"", "a forecast text in the stored units", &rewrite});

struct Conversion {
    const char *kind;
    std::function<QString(const QString &)> convert;
};

auto inUserUnits(Quantity quantity)
{
    return [quantity](const QString &value) { return ToUserUnits(quantity, value); };
}

// The display conversions take the stored unit; the others have theirs in their name.
const Conversion kConversions[] = {
    {"temp", inUserUnits(Quantity::Temperature)},
    {"rate", inUserUnits(Quantity::TemperatureRate)},
    {"pressure", inUserUnits(Quantity::Pressure)},
    {"rain", inUserUnits(Quantity::Rain)},
    {"visibility", inUserUnits(Quantity::Visibility)},
    {"wind", inUserUnits(Quantity::Wind)},
    {"fahrenheit", FahrenheitFromCelsius},
    {"inches-from-mm", InchesFromMillimetres},
    {"inches-from-cm", InchesFromCentimetres},
    {"inches-from-pa", InchesFromPascals},
    {"miles-from-m", MilesFromMetres},
    {"mph-from-ms", MilesPerHourFromMetresPerSecond},
    {"mph-from-knots", MilesPerHourFromKnots},
    {"knots-from-mph", KnotsFromMilesPerHour},
    {"tidy", TidyNumberText},
    {"invariant", ToInvariantNumber},
    {"locale", ToLocaleNumber},
};

const char *convertHelp()
{
    static const QByteArray help = [] {
        QByteArray text = "a value from US units to the stored ones, or as KIND says:";
        for (const Conversion &conversion : kConversions)
            text += QByteArray(" ") + conversion.kind;
        return text;
    }();
    return help.constData();
}

int convert(const QStringList &args, Io &io)
{
    const Command &command = *findCommand(QStringLiteral("convert"));
    if (args.size() != 2) return usageError(command, io);
    for (const Conversion &conversion : kConversions) {
        if (args.first() != QLatin1String(conversion.kind)) continue;
        LoadConversionSettings();
        io.out << conversion.convert(args.at(1)) << Qt::endl;
        return 0;
    }
    return usageError(command, io, QStringLiteral("unknown kind %1").arg(args.first()));
}
TARNBY_CLI_COMMAND({"convert", "KIND VALUE", convertHelp(), &convert});

} // namespace

} // namespace Tarnby::Cli
