#pragma once
// Stations of the National Weather Service: airports and other stations whose
// observation arrives as a METAR report (decoded by clsMetar), from the NWS API, from
// MesoWest or from the NOAA station files; the stations around a point; the icon of a
// condition; the number reader of the NWS API's value objects.
//
// Every fetch goes through the fetch layer with a time limit of 15 seconds unless told
// otherwise, and every operation gives the empty text (or an empty list) when anything
// fails.

#include "providers/station.h"

#include <QList>
#include <QString>

#include <functional>

namespace Tarnby
{

class clsNwsStation
{
public:
    // The MesoWest XML observation, up to its "</ob>".
    QString GetXml(const QString &id) const;
    // The raw report of the NWS API's current observation.
    QString GetNwsMetar(const QString &id) const;
    // The latest report of the MesoWest time series.
    QString GetMesowestMetar(const QString &id) const;
    // The report of the NOAA station file: its second line.
    QString GetNoaaMetar(const QString &id) const;
    // The report of the western region's observation page, "METAR <id> " in front; empty
    // unless it is a valid report of the US form.
    QString GetMetar(const QString &id) const;
    // Up to 501 stations the NWS API lists for a point.
    QList<clsWxStation> GetWeatherStations(const QString &latitude, const QString &longitude) const;
    // The stations of a point that lie within the box and name their forecast zone
    // (30 seconds).
    QList<clsWxStation> GetWeatherStationsNearPoint(const QString &latitude,
                                                    const QString &longitude, const QString &top,
                                                    const QString &left, const QString &bottom,
                                                    const QString &right) const;

private:
    static QString CleanCoordinate(const QString &text);
    // The stations of a station list that the filter keeps, up to 501.
    using StationFilter = std::function<bool(const QString &piece, const clsWxStation &station)>;
    static QList<clsWxStation> StationsOf(const QString &document, const StationFilter &keep);
};

// The MesoWest API token: `Misc`/`MesoWestToken`, given by the program's operator.
QString MesoWestToken();

// A value object of the NWS API ({"value": 13.9, "unitCode": "wmoUnit:degC"}) as text in
// wantedUnit: "degC" to "F", "Pa" to "in", "m_s-1" to "mph", "m" to "mi". A value that is
// no number, or a pair of units without a rule, stays as the document has it.
QString ReadJsonQuantity(const QString &document, const QString &key, const QString &wantedUnit);

// The NWS API's icon for a condition in words, by day or by night at the station.
QString GetNwsIconAddress(const QString &condition);

// The live step of a full run and of the realtime tick for an NWS station: fetches the
// report from the source the service settings name ("mesowest" or "nws"), decodes it and
// writes it into Current. Returns the argument list for the skin's refreshRealtimeData,
// empty when no reading came. Only codes beginning with "K" are asked for.
QString UpdateNwsConditions();

} // namespace Tarnby
