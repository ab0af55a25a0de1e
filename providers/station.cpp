#include "providers/station.h"

#include "derive/numberformat.h"

#include <array>

namespace Tarnby
{

namespace
{

// Trims, turns the JSON escape "\/" into "/" and squeezes every run of blanks to one.
QString CleanStationText(const QString &text)
{
    QString clean = text.trimmed();
    clean.replace(QStringLiteral("\\/"), QStringLiteral("/"));
    while (clean.contains(QStringLiteral("  ")))
        clean.replace(QStringLiteral("  "), QStringLiteral(" "));
    return clean;
}

QString orPlaceholder(const QString &value, const QString &placeholder)
{
    return value.isEmpty() ? placeholder : value;
}

// Upstream names lost their apostrophes ("Joe s Farm"); the repair is blind and also
// turns "Lake shore" into "Lake'shore", which is accepted.
QString restoreApostrophes(QString text)
{
    return text.replace(QStringLiteral(" s"), QStringLiteral("'s"));
}

QString coordinateOrEmpty(const QString &value)
{
    const QString clean = CleanStationText(value);
    return isNumeric(QString(clean).remove(QLatin1Char('.'))) ? clean : QString();
}

bool containsText(const QString &text, const char *word)
{
    return text.contains(QLatin1String(word));
}

QString withParenthesised(const QString &text, const QString &inParentheses)
{
    return text + QStringLiteral(" (") + inParentheses + QLatin1Char(')');
}

QString joinedWhenBoth(const QString &first, const QString &second)
{
    return first.isEmpty() || second.isEmpty() ? first : first + QStringLiteral(", ") + second;
}

struct StationFamily {
    const char *type;
    const char *family;
    int number;
};

// Types that are not listed belong to WeatherBug, the family of the oldest selections.
constexpr std::array<StationFamily, 9> kFamilies{{
    {"WeatherBug", "WeatherBug", 1},
    {"PWS (WeatherBug)", "WeatherBug", 1},
    {"NWS (WeatherBug)", "WeatherBug", 1},
    {"WUnderground", "WUnderground", 2},
    {"PWS (WUnderground)", "WUnderground", 2},
    {"NWS (WUnderground)", "WUnderground", 2},
    {"ICAO (WUnderground)", "WUnderground", 2},
    {"NWS", "NWS", 3},
    {"CWOP", "CWOP", 4},
}};

const StationFamily &familyOf(const QString &stationType)
{
    for (const StationFamily &family : kFamilies) {
        if (stationType == QLatin1String(family.type)) return family;
    }
    return kFamilies.front();
}

} // namespace

QString clsWxStation::StationModel() const
{
    return orPlaceholder(m_stationModel, QStringLiteral("N/A"));
}

void clsWxStation::setStationModel(const QString &value)
{
    m_stationModel = CleanStationText(value);
}

QString clsWxStation::DataSource() const
{
    return orPlaceholder(m_dataSource, QStringLiteral("N/A"));
}

void clsWxStation::setDataSource(const QString &value)
{
    m_dataSource = CleanStationText(value);
}

QString clsWxStation::Distance() const
{
    return orPlaceholder(m_distance, QStringLiteral("9999999999"));
}

void clsWxStation::setDistance(const QString &value)
{
    if (isNumeric(value)) m_distance = value;
}

QString clsWxStation::State() const
{
    return m_state;
}

void clsWxStation::setState(const QString &value)
{
    m_state = CleanStationText(value);
    if (m_state == QLatin1String("WORLD")) m_state.clear();
}

QString clsWxStation::Neighborhood() const
{
    return m_neighborhood;
}

void clsWxStation::setNeighborhood(const QString &value)
{
    QString text = value.left(value.indexOf(QStringLiteral("   ")));
    text.remove(QLatin1Char('(')).remove(QLatin1Char(')'));
    m_neighborhood = CleanStationText(restoreApostrophes(text));
}

QString clsWxStation::Id() const
{
    return orPlaceholder(m_id, QStringLiteral("NA"));
}

void clsWxStation::setId(const QString &value)
{
    m_id = CleanStationText(value);
}

QString clsWxStation::CwopId() const
{
    return orPlaceholder(m_cwopId, QStringLiteral("NA"));
}

void clsWxStation::setCwopId(const QString &value)
{
    m_cwopId = CleanStationText(value);
}

QString clsWxStation::Country() const
{
    return m_country;
}

void clsWxStation::setCountry(const QString &value)
{
    m_country = CleanStationText(value);
    if (m_country == QLatin1String("USA") || m_country == QLatin1String("United States"))
        m_country = QStringLiteral("US");
}

QString clsWxStation::City() const
{
    return m_city;
}

void clsWxStation::setCity(const QString &value)
{
    m_city = CleanStationText(value);
}

QString clsWxStation::Code() const
{
    return m_code;
}

void clsWxStation::setCode(const QString &value)
{
    m_code = CleanStationText(value);
}

QString clsWxStation::latitude() const
{
    return m_latitude;
}

QString clsWxStation::longitude() const
{
    return m_longitude;
}

void clsWxStation::setLatitude(const QString &value)
{
    m_latitude = coordinateOrEmpty(value);
}

void clsWxStation::setLongitude(const QString &value)
{
    m_longitude = coordinateOrEmpty(value);
}

QString clsWxStation::StationType() const
{
    return orPlaceholder(m_stationType, QStringLiteral("WeatherBug"));
}

void clsWxStation::setStationType(const QString &value)
{
    m_stationType = CleanStationText(value);
    if (m_stationType.isEmpty()) return;
    const QString lower = m_stationType.toLower();
    if (containsText(lower, "underground"))
        m_dataSource = QStringLiteral("Weather Underground");
    else if (containsText(lower, "weatherbug"))
        m_dataSource = QStringLiteral("WeatherBug");
    if (!m_stationModel.isEmpty()) return;
    if (containsText(lower, "cwop"))
        m_stationModel = QStringLiteral("Personal Weather Station");
    else if (containsText(lower, "nws"))
        m_stationModel = QStringLiteral("National Weather Service");
    else if (containsText(lower, "pws"))
        m_stationModel = QStringLiteral("Personal Weather Station");
    else if (m_dataSource == QLatin1String("WeatherBug"))
        m_stationModel = QStringLiteral("WeatherBug Station");
    else
        m_stationModel = m_stationType;
}

QString clsWxStation::ZipCode() const
{
    if (!m_country.isEmpty() && m_country != QLatin1String("US")) return QStringLiteral("0");
    return orPlaceholder(m_zipCode, QStringLiteral("N/A"));
}

void clsWxStation::setZipCode(const QString &value)
{
    const QString clean = CleanStationText(value);
    m_zipCode = isNumeric(clean) ? clean : QString();
}

QString clsWxStation::Name() const
{
    if (!m_name.isEmpty()) return m_name;
    return m_neighborhood.isEmpty() ? Id() : m_neighborhood;
}

void clsWxStation::setName(const QString &value)
{
    m_name = CleanStationText(restoreApostrophes(value));
}

QString clsWxStation::NameAndId() const
{
    const QString name = Name();
    const QString id = Id();
    return name.toUpper().contains(id.toUpper()) ? name : withParenthesised(name, id);
}

QString clsWxStation::Location() const
{
    if (m_dataSource == QLatin1String("CWOP")) {
        return m_state.isEmpty() ? m_neighborhood : m_neighborhood + QStringLiteral(", ") + m_state;
    }
    if (m_country == QLatin1String("US")) return joinedWhenBoth(m_city, m_state);
    return joinedWhenBoth(m_city, m_country);
}

QString clsWxStation::NameAndLocation() const
{
    if (!m_name.isEmpty()) {
        return m_dataSource == QLatin1String("WUnderground") ? withParenthesised(m_name, Location())
                                                             : m_name;
    }
    if (m_dataSource != QLatin1String("CWOP") && !m_neighborhood.isEmpty())
        return withParenthesised(m_neighborhood, Location());
    return withParenthesised(Id(), Location());
}

QString StationGroup(const QString &stationType)
{
    return QLatin1String(familyOf(stationType).family);
}

int StationGroupNumber(const QString &stationType)
{
    return familyOf(stationType).number;
}

bool IsInternational(const QString &zipCode)
{
    if (!isNumeric(zipCode)) return zipCode != QLatin1String("N/A");
    return zipCode.size() >= 6 || zipCode == QLatin1String("0") ||
           zipCode == QLatin1String("00000");
}

} // namespace Tarnby
