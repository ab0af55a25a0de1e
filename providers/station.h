#pragma once
// A weather station as discovery finds it and the station windows show it, and the
// classification of station types into the four service families.
//
// Every value is text. Writes clean the text (trimmed, "\/" unescaped, runs of blanks
// squeezed) and apply the field's own rule; a value a field does not accept leaves the
// field empty or, for Distance, unchanged. Reads give the field's placeholder ("N/A",
// "NA", "WeatherBug", ...) where the stored text is empty. Nothing here throws.

#include <QString>

namespace Tarnby
{

class clsWxStation
{
public:
    // "N/A" when empty.
    QString StationModel() const;
    void setStationModel(const QString &value);
    // "N/A" when empty. Discovery stores the family word ("WUnderground", "CWOP") here.
    QString DataSource() const;
    void setDataSource(const QString &value);
    // Kilometres as text; "9999999999" when unknown, so such a station sorts last.
    QString Distance() const;
    // A value that is not numeric is ignored and the former distance stays.
    void setDistance(const QString &value);
    QString State() const;
    // "WORLD" is no state and is stored as empty.
    void setState(const QString &value);
    QString Neighborhood() const;
    // Cut at the first run of three blanks, parentheses removed, " s" made "'s".
    void setNeighborhood(const QString &value);
    // "NA" when empty.
    QString Id() const;
    void setId(const QString &value);
    // "NA" when empty.
    QString CwopId() const;
    void setCwopId(const QString &value);
    QString Country() const;
    // "USA" and "United States" are stored as "US".
    void setCountry(const QString &value);
    QString City() const;
    void setCity(const QString &value);
    QString Code() const;
    void setCode(const QString &value);
    QString latitude() const;
    QString longitude() const;
    // Kept only if numeric once every "." is removed ("-12.5" stays); otherwise empty.
    void setLatitude(const QString &value);
    void setLongitude(const QString &value);
    // "WeatherBug" when empty; the stored text stays empty.
    QString StationType() const;
    // Also fills DataSource from the type and, while it is still empty, StationModel.
    void setStationType(const QString &value);
    // "0" for a station outside the US (Country set and not "US"); otherwise "N/A"
    // when empty.
    QString ZipCode() const;
    // Kept only if numeric, otherwise empty.
    void setZipCode(const QString &value);
    // Name, else Neighborhood, else Id.
    QString Name() const;
    // " s" becomes "'s", also inside ordinary words: it repairs names whose apostrophe
    // was lost upstream.
    void setName(const QString &value);
    QString ProviderId() const { return m_providerId; }
    void setProviderId(const QString &value) { m_providerId = value; }

    // Name, with " (Id)" behind unless the name already holds the id.
    QString NameAndId() const;
    // "City, State", "City, Country" or, for a CWOP station, "Neighborhood, State".
    QString Location() const;
    // The display name discovery gives a station when it becomes the selection.
    QString NameAndLocation() const;

private:
    QString m_city;
    QString m_code;
    QString m_country;
    QString m_dataSource;
    QString m_distance;
    QString m_id;
    QString m_cwopId;
    QString m_latitude;
    QString m_longitude;
    QString m_name;
    QString m_neighborhood;
    QString m_providerId;
    QString m_state;
    QString m_stationModel;
    QString m_stationType;
    QString m_zipCode;
};

// The family of a station type: "WeatherBug", "WUnderground", "NWS" or "CWOP". Types
// the program does not know, and the empty type, belong to WeatherBug.
QString StationGroup(const QString &stationType);
// The family's number (1 WeatherBug, 2 WUnderground, 3 NWS, 4 CWOP), also the
// observation database's station type column.
int StationGroupNumber(const QString &stationType);
// True when a postal code places the station outside the United States: a numeric code
// of six or more characters, "0" or "00000", or any text but "N/A" that is no number.
bool IsInternational(const QString &zipCode);

} // namespace Tarnby
