// The readers of a decoded observation and the MesoWest XML form.

#include "providers/metar.h"

#include "core/clock.h"
#include "core/log.h"
#include "derive/numberformat.h"
#include "derive/units.h"
#include "providers/readingrules.h"
#include "providers/textcutters.h"

#include <QDateTime>

#include <cmath>

namespace Tarnby
{

namespace
{

// The Fahrenheit reading: the stored value, else the Celsius one converted, else the
// Celsius text as it stands.
QString fahrenheitReading(const QString &fahrenheit, const QString &celsius)
{
    if (!fahrenheit.isEmpty()) return fahrenheit;
    return isNumeric(celsius) ? FahrenheitFromCelsius(celsius) : celsius;
}

// The Celsius reading of a value stored in Fahrenheit goes through the rate conversion:
// times 1.8 for a user who sees Celsius, unchanged otherwise. That multiplication is
// how the program has always read these values, and skins expect it.
QString celsiusReading(const QString &fahrenheit, const QString &celsius)
{
    if (fahrenheit.isEmpty()) return celsius;
    return isNumeric(fahrenheit) ? RateToFahrenheit(fahrenheit) : QString();
}

QString mphReading(const QString &mph, const QString &knots)
{
    if (!mph.isEmpty()) return mph;
    return isNumeric(knots) ? MilesPerHourFromKnots(knots) : QString();
}

QString knotsReading(const QString &mph, const QString &knots)
{
    if (mph.isEmpty()) return knots;
    return isNumeric(mph) ? KnotsFromMilesPerHour(mph) : QString();
}

// Vapour pressure over water at a temperature in degrees Celsius; nothing at the pole
// of the formula.
std::optional<float> vapourPressure(float celsius)
{
    const float denominator = 237.7f + celsius;
    if (denominator == 0) return std::nullopt;
    return 6.11f * std::pow(10.0f, 7.5f * celsius / denominator);
}

// In single precision, as the program has always computed it, so that the values shown
// agree to the last digit.
std::optional<float> relativeHumidity(float dewPointC, float temperatureC)
{
    const std::optional<float> actual = vapourPressure(dewPointC);
    const std::optional<float> saturated = vapourPressure(temperatureC);
    if (!actual || !saturated) return std::nullopt;
    const float humidity = 100.0f * *actual / *saturated;
    return std::isfinite(humidity) ? std::optional<float>(humidity) : std::nullopt;
}

} // namespace

QString clsMetar::Condition() const
{
    return m_condition.isEmpty() ? m_clouds : m_condition;
}

QString clsMetar::DateTimeUtc() const
{
    // The day is a whole number of our own making.
    const std::optional<double> value = NumberInText(m_day);
    if (!value) return {};
    const int day = int(*value);
    const QDate today = clock().utcNow().date();
    // A day later than today's was reported in the month before.
    const QDate month = day > today.day() ? today.addDays(-1) : today;
    const QLatin1Char zero('0');
    return QStringLiteral("%1-%2-%3T%4")
        .arg(month.year(), 4, 10, zero)
        .arg(month.month(), 2, 10, zero)
        .arg(day, 2, 10, zero)
        .arg(m_time);
}

QString clsMetar::DewPointC() const
{
    return celsiusReading(m_dewPointF, m_dewPointC);
}

QString clsMetar::DewPointF() const
{
    return fahrenheitReading(m_dewPointF, m_dewPointC);
}

QString clsMetar::Humidity() const
{
    if (!m_humidity.isEmpty()) return m_humidity;
    const std::optional<double> dewPoint = NumberInText(m_dewPointC);
    const std::optional<double> temperature = NumberInText(m_temperatureC);
    if (!dewPoint || !temperature) return {};
    const std::optional<float> humidity = relativeHumidity(float(*dewPoint), float(*temperature));
    if (!humidity) return {};
    return QString::number(*humidity, 'g', 7).replace(u'.', localeSymbols().decimal);
}

// The dew point takes no part in the formula, but a reading without one gets no
// feels-like.
QString clsMetar::FeelsLikeF() const
{
    if (!isNumeric(DewPointF())) return {};
    return FeelsLikeText(Humidity(), TemperatureF(), WindSpeedMph());
}

QString clsMetar::TemperatureC() const
{
    return celsiusReading(m_temperatureF, m_temperatureC);
}

QString clsMetar::TemperatureF() const
{
    return fahrenheitReading(m_temperatureF, m_temperatureC);
}

QString clsMetar::WindGustSpeedMph() const
{
    return mphReading(m_gustMph, m_gustKts);
}

QString clsMetar::WindGustSpeedKts() const
{
    return knotsReading(m_gustMph, m_gustKts);
}

QString clsMetar::WindSpeedMph() const
{
    return mphReading(m_windMph, m_windKts);
}

QString clsMetar::WindSpeedKts() const
{
    return knotsReading(m_windMph, m_windKts);
}

namespace
{

// The text between the marks, or empty when the start mark is missing.
QString cutBetween(const QString &text, const char *startMark, const char *endMark)
{
    return ExtractBetween(text, QLatin1String(startMark), QLatin1String(endMark), QString(), 0,
                          true);
}

} // namespace

bool clsMetar::ParseXmlData(const QString &text)
{
    if (text.isEmpty()) return false;
    m_isAuto = false;
    m_gustKts = QStringLiteral("0");
    m_gustMph = QStringLiteral("0");
    const QString id = cutBetween(text, "<station id=\"", "\"");
    if (id.size() == 4 && id.startsWith(u'K')) m_stationId = id;
    readUnixTime(cutBetween(text, "utime=\"", "\""));
    const QString observationMark = QStringLiteral("<ob ");
    if (!text.contains(observationMark))
        Log(QStringLiteral(
            "MesoWest document without an observation block (clsMetar.ParseXmlData)"));
    // Without the block marks the variables of the whole text are read.
    const QString observation = ExtractBetween(text, observationMark, QStringLiteral("</ob>"));
    for (const QString &piece : observation.split(QStringLiteral("<variable "))) {
        if (!piece.startsWith(QLatin1String("var="))) continue;
        applyXmlVariable(cutBetween(piece, "var='", "'"), cutBetween(piece, "value='", "'"));
    }
    return true;
}

// The observation time as seconds since 1970 in UTC.
void clsMetar::readUnixTime(const QString &text)
{
    const std::optional<double> seconds = NumberInText(text);
    // Beyond a few thousand years the number is no time of an observation.
    if (!seconds || std::abs(*seconds) > 1e11) return;
    const QDateTime time = QDateTime::fromSecsSinceEpoch(std::llround(*seconds), Qt::UTC);
    if (!time.isValid()) return;
    m_day = time.toString(QStringLiteral("dd"));
    m_time = time.toString(QStringLiteral("hh:mm"));
}

void clsMetar::applyXmlVariable(const QString &name, const QString &value)
{
    static const struct {
        QStringView name;
        QString clsMetar::*field;
    } plainFields[] = {
        {u"T", &clsMetar::m_temperatureF},   {u"TD", &clsMetar::m_dewPointF},
        {u"RH", &clsMetar::m_humidity},      {u"VV", &clsMetar::m_visibility},
        {u"ALTSE", &clsMetar::m_pressure},   {u"WEA", &clsMetar::m_condition},
        {u"DD", &clsMetar::m_windDirection},
    };
    for (const auto &plain : plainFields) {
        if (name == plain.name) {
            this->*plain.field = value;
            return;
        }
    }
    if (name == u"SKY") ParseSkyCondition(value);
    if (name == u"FFGUST") m_gustMph = WholeNumberText(value);
    if (name == u"FF") m_windMph = WholeNumberText(value);
}

QList<std::pair<QString, QString>> MetarReadings(const clsMetar &metar)
{
    const auto reading = [](const char *name, const QString &value) {
        return std::pair<QString, QString>{QLatin1String(name), value};
    };
    return {reading("Clouds", metar.Clouds()),
            reading("CloudsHeight", metar.CloudsHeight()),
            reading("Condition", metar.Condition()),
            reading("DateTimeUtc", metar.DateTimeUtc()),
            reading("DewPointC", metar.DewPointC()),
            reading("DewPointF", metar.DewPointF()),
            reading("Humidity", metar.Humidity()),
            reading("IsAuto", metar.IsAuto() ? QStringLiteral("True") : QStringLiteral("False")),
            reading("FeelsLikeF", metar.FeelsLikeF()),
            reading("Pressure", metar.Pressure()),
            reading("StationId", metar.StationId()),
            reading("TemperatureC", metar.TemperatureC()),
            reading("TemperatureF", metar.TemperatureF()),
            reading("Time", metar.Time()),
            reading("Visibility", metar.Visibility()),
            reading("WindDirection", metar.WindDirection()),
            reading("WindGustSpeedMph", metar.WindGustSpeedMph()),
            reading("WindGustSpeedKts", metar.WindGustSpeedKts()),
            reading("WindSpeedMph", metar.WindSpeedMph()),
            reading("WindSpeedKts", metar.WindSpeedKts())};
}

} // namespace Tarnby
