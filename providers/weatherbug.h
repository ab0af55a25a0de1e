#pragma once
// Current conditions of WeatherBug stations, from the observations of the Earth
// Networks Pulse service, and the station's links.
//
// The observation is asked for with units=english and verbose=true: the document is in
// °F, mph, inches and inches of mercury, printed one value a line, and is read with the
// text cutters. A reading with holes never blanks the screen: every key of the Current
// branch keeps its last good value where the document has none.

#include <QString>

#include <array>

namespace Tarnby
{

// One observation, every value as text so that a missing one can stay "NA". Lives for
// one reading.
class clsWeatherBugStation
{
public:
    QString DewPoint() const { return value(Slot::DewPoint); }
    QString FeelsLike() const { return value(Slot::FeelsLike); }
    QString Humidity() const { return value(Slot::Humidity); }
    QString HumidityLow() const { return value(Slot::HumidityLow); }
    QString HumidityHigh() const { return value(Slot::HumidityHigh); }
    QString HumidityRate() const { return value(Slot::HumidityRate); }
    QString IconCode() const { return value(Slot::IconCode); }
    QString IconDescription() const { return value(Slot::IconDescription); }
    QString ObservationTimeLocal() const { return value(Slot::ObservationTimeLocal); }
    QString ObservationTimeUtc() const { return value(Slot::ObservationTimeUtc); }
    QString Pressure() const { return value(Slot::Pressure); }
    QString PressureLow() const { return value(Slot::PressureLow); }
    QString PressureHigh() const { return value(Slot::PressureHigh); }
    QString PressureRate() const { return value(Slot::PressureRate); }
    QString RainDaily() const { return value(Slot::RainDaily); }
    QString RainMonthly() const { return value(Slot::RainMonthly); }
    QString RainRate() const { return value(Slot::RainRate); }
    QString RainRateMax() const { return value(Slot::RainRateMax); }
    QString RainYearly() const { return value(Slot::RainYearly); }
    QString StationId() const { return value(Slot::StationId); }
    QString StationKey() const { return value(Slot::StationKey); }
    QString StationName() const { return value(Slot::StationName); }
    QString StationProviderId() const { return value(Slot::StationProviderId); }
    QString Temperature() const { return value(Slot::Temperature); }
    QString TemperatureLow() const { return value(Slot::TemperatureLow); }
    QString TemperatureHigh() const { return value(Slot::TemperatureHigh); }
    QString TemperatureRate() const { return value(Slot::TemperatureRate); }
    QString WetBulbTemperature() const { return value(Slot::WetBulbTemperature); }
    QString WindDirection() const { return value(Slot::WindDirection); }
    QString WindGustDirectionDaily() const { return value(Slot::WindGustDirectionDaily); }
    QString WindGustDirectionHourly() const { return value(Slot::WindGustDirectionHourly); }
    QString WindGustSpeedDaily() const { return value(Slot::WindGustSpeedDaily); }
    QString WindGustSpeedHourly() const { return value(Slot::WindGustSpeedHourly); }
    QString WindDirectionAvg() const { return value(Slot::WindDirectionAvg); }
    QString WindSpeed() const { return value(Slot::WindSpeed); }
    QString WindSpeedAvg() const { return value(Slot::WindSpeedAvg); }

    // Fetches the observation nearest to the position (30 seconds at most) and reads it.
    // found stays false when a coordinate is empty, the fetch fails or the answer holds
    // no "observation"; the values are then left as they were.
    void GetObservationsByLocation(const QString &latitude, const QString &longitude, bool &found);

    // The request for a position, token included.
    static QString ObservationsUrl(const QString &latitude, const QString &longitude);

    // The slots of the values, in the order of the accessors above.
    enum class Slot {
        DewPoint,
        FeelsLike,
        Humidity,
        HumidityLow,
        HumidityHigh,
        HumidityRate,
        IconCode,
        IconDescription,
        ObservationTimeLocal,
        ObservationTimeUtc,
        Pressure,
        PressureLow,
        PressureHigh,
        PressureRate,
        RainDaily,
        RainMonthly,
        RainRate,
        RainRateMax,
        RainYearly,
        StationId,
        StationKey,
        StationName,
        StationProviderId,
        Temperature,
        TemperatureLow,
        TemperatureHigh,
        TemperatureRate,
        WetBulbTemperature,
        WindDirection,
        WindGustDirectionDaily,
        WindGustDirectionHourly,
        WindGustSpeedDaily,
        WindGustSpeedHourly,
        WindDirectionAvg,
        WindSpeed,
        WindSpeedAvg,
        Count
    };

    QString value(Slot slot) const { return m_values[static_cast<size_t>(slot)]; }

private:
    void ParseObservation(const QString &document);
    void setValue(Slot slot, const QString &text) { m_values[static_cast<size_t>(slot)] = text; }

    std::array<QString, static_cast<size_t>(Slot::Count)> m_values;
};

// The live step of a full run and of the realtime tick for a WeatherBug station:
// fetches the observation of the selection's position and writes it into Current.
// Returns the argument list for the skin's refreshRealtimeData, empty when nothing was
// written (no observation, or one older than the cached one). Counts failures for the
// realtime tick.
QString UpdateWeatherBugConditions();

// The step "LiveConditions": the older reader of a downloaded observation document,
// which maps the document's keys straight onto cache keys and pops the change balloon.
// A document without an observation changes nothing. newData and force are the
// retrieval run's flags: without force an observation already cached is not read again.
void ReadWeatherBugConditions(const QString &documentPath, bool newData, bool force);

// The step "Links": rewrites the Links branch for the selected station (forecast pages,
// maps, the older single links). It needs nothing of the downloaded document, so it
// runs even when the download failed.
void BuildWeatherBugLinks(const QString &documentPath, bool newData, bool force);

// The map links of the station's position (radar, satellite, temperature, lightning),
// numbered for the tray's map menu; the links step of every family writes them.
void BuildMapLinks();

} // namespace Tarnby
