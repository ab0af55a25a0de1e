#pragma once
// One airport observation decoded into the words and numbers the program shows.
//
// clsMetar reads a METAR report of the United States form (visibility in statute
// miles, altimeter in inches of mercury), or the same observation in the XML form of
// the MesoWest service. A report fills the Celsius and knot fields, the XML form the
// Fahrenheit and mile-per-hour fields; the readers convert between them. Every value
// is text; a reader whose source is empty or no number gives the empty text.
//
// Nothing here throws or fails loudly: text that is no report leaves the fields empty,
// and the parsers still say true for any non-empty text. A parse adds to what the
// object already holds (the lowest cloud layer so far wins, conditions are appended),
// so decode each observation into a fresh object.

#include <QList>
#include <QString>
#include <QStringView>

#include <utility>

namespace Tarnby
{

class clsMetar
{
public:
    // "Clear", "Mostly Clear", "Partly Cloudy", "Mostly Cloudy", "Overcast",
    // "Indefinite" or empty.
    QString Clouds() const { return m_clouds; }
    // Height of the lowest layer in feet, as a whole number's text.
    QString CloudsHeight() const { return m_cloudsHeight; }
    // The weather words ("Light Rain Showers, Mist"); Clouds when the report has none.
    QString Condition() const;
    // "yyyy-mm-ddThh:mm" in UTC. The report names only the day of the month; year and
    // month are today's, or last month's for a day later than today's.
    QString DateTimeUtc() const;
    QString DewPointC() const;
    QString DewPointF() const;
    // Relative humidity in percent: the stored value, or worked out from temperature
    // and dew point.
    QString Humidity() const;
    bool IsAuto() const { return m_isAuto; }
    // Whole degrees Fahrenheit; empty unless dew point, humidity, temperature and
    // wind speed are all known.
    QString FeelsLikeF() const;
    // Inches of mercury, "29.92".
    QString Pressure() const { return m_pressure; }
    // Only identifiers of four characters beginning with "K" are taken.
    QString StationId() const { return m_stationId; }
    QString TemperatureC() const;
    QString TemperatureF() const;
    // "hh:mm" in UTC.
    QString Time() const { return m_time; }
    // Statute miles as the report gives them; fractions stay text ("1/2").
    QString Visibility() const { return m_visibility; }
    // Degrees as three characters, or "VRB".
    QString WindDirection() const { return m_windDirection; }
    QString WindGustSpeedMph() const;
    QString WindGustSpeedKts() const;
    QString WindSpeedMph() const;
    QString WindSpeedKts() const;

    // True for a report of the US form as the station services deliver it: it begins
    // with "METAR ", holds "Z ", "/", "SM " and " A" in any case, and no "<" or ">".
    // A report with visibility in metres, or an HTML page, does not pass.
    static bool IsValidMetar(QStringView text);
    // Decodes the groups of a report up to its altimeter group; remarks are never read.
    // False only for the empty text.
    bool ParseMetarData(QStringView text);
    // Decodes a MesoWest observation document. False only for the empty text.
    bool ParseXmlData(const QString &text);

private:
    // Applies the sky rules (vertical visibility, cloud layer, clear sky) to one group;
    // false when none fits.
    bool ParseSkyCondition(QStringView sky);
    // A present-weather group in words ("-SHRA" is "Light Rain Showers"); empty for a
    // group that is no weather.
    static QString DecodeWeatherGroup(QStringView group);

    void applyReportGroup(QStringView group);
    bool applyIdentityGroup(QStringView group);
    bool applyWindGroup(QStringView group);
    bool applyVisibilityGroup(QStringView group);
    bool applyTemperatureGroup(QStringView group);
    bool applyAltimeterGroup(QStringView group);
    void keepLowestLayer(const QString &word, int height);
    void appendCondition(const QString &words);
    void applyXmlVariable(const QString &name, const QString &value);
    void readUnixTime(const QString &text);

    bool m_isAuto = false;
    QString m_condition;
    QString m_day;
    QString m_dewPointC;
    QString m_dewPointF;
    QString m_pressure;
    QString m_clouds;
    QString m_cloudsHeight;
    QString m_humidity;
    QString m_stationId;
    QString m_temperatureC;
    QString m_temperatureF;
    QString m_time;
    QString m_windDirection;
    QString m_gustKts;
    QString m_gustMph;
    QString m_windKts;
    QString m_windMph;
    QString m_visibility;
};

// Every reading by its accessor's name, in slot order ("Clouds", "CloudsHeight", ...,
// "WindSpeedKts"); IsAuto reads "True" or "False".
QList<std::pair<QString, QString>> MetarReadings(const clsMetar &metar);

} // namespace Tarnby
