// The readers of a decoded observation and the MesoWest XML form.

#include "providers/metar.h"

#include "core/clock.h"
#include "core/log.h"
#include "core/processvalues.h"
#include "providers/feelslike.h"
#include "providers/numerictest.h"

#include <QDateTime>

#include <cmath>

namespace Tarnby
{

namespace
{

constexpr double kMphPerKnot = 1.15078;

// A number in the platform's picture form: `decimals` fixed decimals, and with
// `leadingZero` false no "0" in front of the decimal mark ("###.0" prints 0.5 as ".5").
// A value that rounds to zero loses its sign; a value that is no finite number gives
// the empty text.
QString pictureText(double value, int decimals, bool leadingZero)
{
    if (!std::isfinite(value)) return {};
    if (std::round(value * std::pow(10.0, decimals)) == 0) value = 0;
    QString text = QString::number(value, 'f', decimals);
    if (!leadingZero) {
        const qsizetype zero = text.startsWith(u'-') ? 1 : 0;
        if (text.mid(zero, 2) == QLatin1String("0.")) text.remove(zero, 1);
    }
    return text.replace(u'.', process().DecimalSymbol);
}

// The Fahrenheit reading: the stored value, else the Celsius one converted, else the
// Celsius text as it stands.
QString fahrenheitReading(const QString &fahrenheit, const QString &celsius)
{
    if (!fahrenheit.isEmpty()) return fahrenheit;
    const std::optional<double> value = numericValue(celsius);
    return value ? pictureText(*value * 1.8 + 32, 1, false) : celsius;
}

// The Celsius reading of a value stored in Fahrenheit goes through the rate conversion:
// times 1.8 for a user who sees Celsius, unchanged otherwise. That multiplication is
// how the program has always read these values, and skins expect it.
QString celsiusReading(const QString &fahrenheit, const QString &celsius)
{
    if (fahrenheit.isEmpty()) return celsius;
    const std::optional<double> value = numericValue(fahrenheit);
    if (!value) return {};
    return process().UnitTemp == QLatin1String("C") ? pictureText(*value * 1.8, 1, false)
                                                    : fahrenheit;
}

QString mphReading(const QString &mph, const QString &knots)
{
    if (!mph.isEmpty()) return mph;
    const std::optional<double> value = numericValue(knots);
    return value ? pictureText(*value * kMphPerKnot, 0, true) : QString();
}

QString knotsReading(const QString &mph, const QString &knots)
{
    if (mph.isEmpty()) return knots;
    const std::optional<double> value = numericValue(mph);
    return value ? pictureText(*value / kMphPerKnot, 2, true) : QString();
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
    const std::optional<int> day = wholeNumberValue(m_day);
    if (!day) return {};
    const QDate today = clock().utcNow().date();
    // A day later than today's was reported in the month before.
    const QDate month = *day > today.day() ? today.addDays(-1) : today;
    const QLatin1Char zero('0');
    return QStringLiteral("%1-%2-%3T%4")
        .arg(month.year(), 4, 10, zero)
        .arg(month.month(), 2, 10, zero)
        .arg(*day, 2, 10, zero)
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
    const std::optional<double> dewPoint = numericValue(m_dewPointC);
    const std::optional<double> temperature = numericValue(m_temperatureC);
    if (!dewPoint || !temperature) return {};
    const std::optional<float> humidity = relativeHumidity(float(*dewPoint), float(*temperature));
    if (!humidity) return {};
    return QString::number(*humidity, 'g', 7).replace(u'.', process().DecimalSymbol);
}

// The dew point takes no part in the formula, but a reading without one gets no
// feels-like, as with every other station family.
QString clsMetar::FeelsLikeF() const
{
    const std::optional<double> dewPoint = numericValue(DewPointF());
    const std::optional<double> humidity = numericValue(Humidity());
    const std::optional<double> temperature = numericValue(TemperatureF());
    const std::optional<double> wind = numericValue(WindSpeedMph());
    if (!dewPoint || !humidity || !temperature || !wind) return {};
    return pictureText(feelsLikeF(*temperature, *humidity, *wind), 0, true);
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

bool clsMetar::ParseXmlData(QStringView text)
{
    if (text.isEmpty()) return false;
    m_isAuto = false;
    m_gustKts = QStringLiteral("0");
    m_gustMph = QStringLiteral("0");
    const QStringView id = ExtractBetween(text, u"<station id=\"", u"\"", true);
    if (id.size() == 4 && id.startsWith(u'K')) m_stationId = id.toString();
    readUnixTime(ExtractBetween(text, u"utime=\"", u"\"", true));
    if (!text.contains(u"<ob "))
        Log(QStringLiteral(
            "MesoWest document without an observation block (clsMetar.ParseXmlData)"));
    const QStringView observation = ExtractBetween(text, u"<ob ", u"</ob>", false);
    for (const QStringView piece : observation.tokenize(u"<variable ")) {
        if (!piece.startsWith(u"var=")) continue;
        applyXmlVariable(ExtractBetween(piece, u"var='", u"'", true),
                         ExtractBetween(piece, u"value='", u"'", true));
    }
    return true;
}

// The observation time as seconds since 1970 in UTC.
void clsMetar::readUnixTime(QStringView text)
{
    const std::optional<double> seconds = numericValue(text);
    // Beyond a few thousand years the number is no time of an observation.
    if (!seconds || std::abs(*seconds) > 1e11) return;
    const QDateTime time = QDateTime::fromSecsSinceEpoch(std::llround(*seconds), Qt::UTC);
    if (!time.isValid()) return;
    m_day = time.toString(QStringLiteral("dd"));
    m_time = time.toString(QStringLiteral("hh:mm"));
}

void clsMetar::applyXmlVariable(QStringView name, QStringView value)
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
            this->*plain.field = value.toString();
            return;
        }
    }
    if (name == u"SKY") ParseSkyCondition(value);
    if (name == u"FFGUST") m_gustMph = wholeNumberOrText(value);
    if (name == u"FF") m_windMph = wholeNumberOrText(value);
}

// The program's text cutter: what lies between the marks. A missing start mark gives
// the empty text when it must exist and the whole text otherwise; a missing end mark
// gives the whole text.
QStringView clsMetar::ExtractBetween(QStringView text, QStringView startMark, QStringView endMark,
                                     bool mustExist)
{
    const qsizetype start = text.indexOf(startMark);
    if (start < 0) return mustExist ? QStringView() : text;
    const qsizetype begin = start + startMark.size();
    const qsizetype end = text.indexOf(endMark, begin);
    if (end < 0) return text;
    return text.sliced(begin, end - begin);
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
