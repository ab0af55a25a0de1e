#pragma once
// Forecasts into the Weather cache. Every station family takes its forecasts from the
// Pulse service, asked for by position with units=english and verbose=true: the daily
// forecast goes to the Daily branch, the hourly forecast to Hourly, the ultraviolet
// forecast to UV. Forecast text of the NWS adds its rain and snow amounts to Daily.
//
// The documents are read with the text cutters: the list of periods is cut out by its
// mark and parted at "}," CR LF, and each period is read key by key.
//
// A reader replaces its branch whole: the branch is deleted, the rows written, "count"
// written last and then the LastUpdated stamp, all in one batch of the settings store.
// A document that cannot be read (empty, truncated, an HTML error page, a document of
// another service, a list without one usable period) leaves the branch exactly as it was
// and sets the reader's failure flag. ProcessingForecasts is raised while a branch is
// being written. No reader throws.

#include <QDate>
#include <QList>
#include <QString>

#include <optional>

namespace Tarnby
{

// ---- failure flags -----------------------------------------------------------------------

// The documents, each with its own failure flag for the retrieval run.
enum class ForecastDocument { Daily, Hourly, Uv, NwsText };

// Set by a reader that could not use its document; cleared by one that could, and by one
// that skipped a document it has already read. A UV answer without periods counts as a
// failed retrieval of ultraviolet data.
bool ForecastFailed(ForecastDocument document);
void setForecastFailed(ForecastDocument document, bool failed);

// ---- the hourly tables the daily reader picks from ---------------------------------------

// The lowest and highest of a run of values.
struct HourlyExtremes {
    std::optional<double> lowest;
    std::optional<double> highest;
    void add(double value);
};

// One date of the Hourly branch: its hours as a whole, its day hours (6 AM to 6 PM), its
// night, and how many hours of the branch carry the date. The night of a date is its
// hours 12 AM and 7 PM to 11 PM, and 1 AM to 5 AM of the date after: midnight counts with
// the date it opens, an old rule that the tables keep.
struct HourlyDateRow {
    QDate date;
    HourlyExtremes whole;
    HourlyExtremes day;
    HourlyExtremes night;
    int hours = 0;
};
using HourlyTable = QList<HourlyDateRow>;

// The temperatures and the chances of precipitation of the Hourly branch (up to its
// count), by date. Dates with fewer than 6 hours are left out.
HourlyTable BuildHourlyHighLowTable();
HourlyTable BuildHourlyPrecipitationTable();

enum class PickKind {
    Low,       // the lowest of the date; trusted with 24 hours
    LowNight,  // the lowest of the night; trusted with 24 hours
    High,      // the highest of the date; trusted with 12 hours or more
    HighDay,   // the highest of the day hours; trusted with 12 hours or more
    HighNight, // the highest of the night (chances of precipitation only)
};

// The table's value for the date, when the date's row is trusted for the kind or period
// is 1 (the first period of a document); otherwise defaultValue. The value is printed in
// the user's locale.
QString PickHighLow(const HourlyTable &table, const QDate &date, const QString &defaultValue,
                    PickKind kind, int period);
// The same on the precipitation table: the largest chance of the day hours (HighDay) or
// of the night (HighNight); a row is trusted with 24 hours.
QString PickPrecipitation(const HourlyTable &table, const QDate &date, const QString &defaultValue,
                          PickKind kind, int period);

// Puts the chosen temperature into a period's wording, so that text and table agree: the
// first "Highs in the lower 70s." (or "high around 75.", ...) becomes ". High temperature
// near <high>F." (or " high temperature near <high>F."); without a numeric high the same
// for the low. The phrases are found case-sensitively ("HIGHS" is none) and run to the
// first "." that is not a decimal point. Every " 72F" then reads " 72°F". "mph" gets its
// blank, CR LF goes.
QString ApplyHighLowToText(const QString &text, const QString &high, const QString &low);

// ---- readers -------------------------------------------------------------------------------

// The daily forecast into Daily: per day the date and weekday, the titles, short titles,
// icons and chances of the day and night halves, the high, low and night low (picked
// from the hourly tables, so the hourly forecast must be read first) with their twins,
// and the texts with their rewritten forms. A document that opens on the night of the
// date the station last observed keeps that night only until the next one: its first
// day is tomorrow. A document whose forecastCreatedUtcStr is
// that of the document last read (LastUpdated/DetailedTimeStamp) is skipped unless force
// is set; a new hourly forecast makes the next daily document count as new.
void ReadDailyForecast(const QString &documentPath, bool force = false);

// The hourly forecast into Hourly, with twins and humidex. The first period's time
// becomes LastUpdated/HourlyTimeStamp; unless force is set, a document whose first
// period is not later than that stamp is skipped, so an older document never overwrites
// a newer one.
void ReadHourlyForecast(const QString &documentPath, bool force);

// The ultraviolet forecast into UV: date<n> and index<n>; without periods row 1 holds
// today's date and "N/A" and count is 0. LastUpdated/UV gets the time of the reading.
void ReadUvForecast(const QString &documentPath);

// The ultraviolet index of Weather Underground's XML answer (<UV val="5">) as row 1 of UV
// with today's date.
void ReadWeatherUndergroundUv(const QString &documentPath);

// The NWS text forecast (MapClick TextType=3: <Forecast><period><valid>, <image>, <text>)
// laid over Daily. The periods are numbered into days as the daily reader numbers its
// own (the first period is day 1, a night ends its day; the first letter of <valid>,
// "N" or "n", tells a night). A period's sentence "New rainfall ... ." or "New snowfall
// ... ." is added to its half's prediction unless that already speaks of "rainfall
// amounts" or "snowfall amounts" (in any case), and the rewritten predictionC follows.
// Days beyond the branch's count are left alone.
void ReadNwsForecastText(const QString &documentPath);

// ---- entry points of the retrieval run -----------------------------------------------------

// The kinds "Detailed", "NDFD", "UV", "WuUV" and "NwsDetailed". newData (the station
// changed during the run) and force both make a document count as new.
void ProcessDetailedDownload(const QString &documentPath, bool newData, bool force);
void ProcessNdfdDownload(const QString &documentPath, bool newData, bool force);
void ProcessUvDownload(const QString &documentPath, bool newData, bool force);
void ProcessWuUvDownload(const QString &documentPath, bool newData, bool force);
void ProcessNwsDetailedDownload(const QString &documentPath, bool newData, bool force);

} // namespace Tarnby
