// Sun and moon commands: sun, moon.

#include "app/cli/command.h"
#include "derive/sunmoon.h"

#include <cmath>

namespace Tarnby::Cli
{

namespace
{

std::optional<QDate> isoDate(const QString &text)
{
    const QDate date = QDate::fromString(text, Qt::ISODate);
    return date.isValid() ? std::optional(date) : std::nullopt;
}

std::optional<double> coordinate(const QString &text, double limit)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value) && std::fabs(value) <= limit ? std::optional(value)
                                                                   : std::nullopt;
}

// Hours after 0h UTC as the time of day, or "none".
QString utcClock(const std::optional<double> &hours)
{
    if (!hours) return QStringLiteral("none");
    const int minutes = int(std::lround(*hours * 60.0)) % 1440;
    const int ofDay = minutes < 0 ? minutes + 1440 : minutes;
    return QStringLiteral("%1:%2")
        .arg(ofDay / 60, 2, 10, QLatin1Char('0'))
        .arg(ofDay % 60, 2, 10, QLatin1Char('0'));
}

// Sunrise, sunset and the three dawns and dusks in UTC, one a line.
int sun(const QStringList &args, Io &io)
{
    const Command &self = *findCommand(QStringLiteral("sun"));
    if (args.size() != 3) return usageError(self, io);
    const std::optional<double> lat = coordinate(args.at(0), 90.0);
    const std::optional<double> lon = coordinate(args.at(1), 180.0);
    const std::optional<QDate> date = isoDate(args.at(2));
    if (!lat || !lon || !date)
        return usageError(
            self, io,
            QStringLiteral("LAT, LON in degrees (north, east positive), a date as YYYY-MM-DD"));
    const SunTimes t = GetSunTimes(*lat, *lon, *date, 0);
    const std::pair<const char *, const std::optional<double> &> lines[] = {
        {"sunrise", t.sun.rise},
        {"sunset", t.sun.set},
        {"civil-dawn", t.civil.rise},
        {"civil-dusk", t.civil.set},
        {"nautical-dawn", t.nautical.rise},
        {"nautical-dusk", t.nautical.set},
        {"astronomical-dawn", t.astronomical.rise},
        {"astronomical-dusk", t.astronomical.set},
    };
    for (const auto &[name, hours] : lines)
        io.out << name << ' ' << utcClock(hours) << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"sun", "LAT LON YYYY-MM-DD", "sunrise, sunset, dawns and dusks in UTC", &sun,
                    false});

// The moon on a local date: phase, lit percentage, age in days, image, and the four
// phases of its lunation in UTC.
int moon(const QStringList &args, Io &io)
{
    const Command &self = *findCommand(QStringLiteral("moon"));
    const std::optional<QDate> date = args.size() == 1 ? isoDate(args.first()) : std::nullopt;
    if (!date)
        return usageError(self, io,
                          args.size() == 1 ? QStringLiteral("a date as YYYY-MM-DD") : QString());
    const std::optional<double> age = GetMoonAge(*date);
    const std::optional<float> lit = GetMoonIllumination(*date);
    const auto phases = MoonPhasesOfLunation(*date);
    if (!age || !lit || !phases) {
        io.err << "tarnby-cli moon: the date lies outside the range of the moon tables" << Qt::endl;
        return 1;
    }
    io.out << "phase " << GetMoonPhaseName(*date) << Qt::endl;
    io.out << "illumination " << QString::number(*lit, 'f', 1) << Qt::endl;
    io.out << "age " << QString::number(*age, 'f', 2) << Qt::endl;
    io.out << "image " << GetMoonPhaseImage(*date) << Qt::endl;
    const char *const names[] = {"new-moon", "first-quarter", "full-moon", "last-quarter"};
    for (int phase = 0; phase < 4; ++phase)
        io.out << names[phase] << ' '
               << (*phases)[phase].addSecs(30).toString(QStringLiteral("yyyy-MM-dd HH:mm"))
               << Qt::endl;
    return 0;
}
TARNBY_CLI_COMMAND({"moon", "YYYY-MM-DD",
                    "moon phase, illumination, age, image and the lunation's phases (UTC)", &moon,
                    false});

} // namespace

} // namespace Tarnby::Cli
