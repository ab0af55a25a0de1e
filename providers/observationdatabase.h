#pragma once
// What the live readers need of the observation database: whether it exists, the day's
// highest and lowest temperature for stations that report none, and the write queue for
// a finished reading. The history library installs the real database; until it does,
// the database does not exist and nothing is queued.

#include <QDate>
#include <QString>

namespace Tarnby
{

// One row of the table Current, every field as text with "." as the decimal mark.
// The database decides what it writes of a field that is no number or no date.
struct CurrentObservationRow {
    QString Condition;
    QString DewPoint;
    QString Feels;
    QString Humidity;
    QString HumidityRate;
    QString Image;
    QString Pressure;
    QString PressureRate;
    QString Rain;
    QString RainRate;
    QString Temp;
    QString TempRate;
    QString WindDirection;
    QString WindSpeed;
    QString Visibility;
    QString SunRise;
    QString SunSet;
    QString DateObserved;

    bool operator==(const CurrentObservationRow &) const = default;
};

class ObservationDatabase
{
public:
    virtual ~ObservationDatabase() = default;
    // True when the database file exists; nothing is asked of a database that does not.
    virtual bool exists() { return false; }
    // The highest or lowest temperature (°F) of the current station on that day, empty
    // when there is none.
    virtual QString GetHighTempFromDatabase(const QDate &) { return {}; }
    virtual QString GetLowTempFromDatabase(const QDate &) { return {}; }
    // Queues the row for the station family's number (1 WeatherBug ... 4 CWOP); the
    // database may normalise the row in place.
    virtual void QueueCurrentInsert(CurrentObservationRow &, int) {}
};

// The database in force; nullptr restores the one that does not exist. Not owned.
void setObservationDatabase(ObservationDatabase *database);
ObservationDatabase &observationDatabase();

} // namespace Tarnby
