#pragma once
// An observation database that exists, answers the day's extremes it is given and keeps
// the rows queued for it. Installed for the life of the object.

#include "providers/observationdatabase.h"

#include <QList>
#include <QPair>

namespace Tarnby::Test
{

class FakeDatabase : public ObservationDatabase
{
public:
    FakeDatabase() { setObservationDatabase(this); }
    ~FakeDatabase() override { setObservationDatabase(nullptr); }

    bool exists() override { return present; }
    QString GetHighTempFromDatabase(const QDate &day) override
    {
        askedDays.append(day);
        return high;
    }
    QString GetLowTempFromDatabase(const QDate &day) override
    {
        askedDays.append(day);
        return low;
    }
    void QueueCurrentInsert(CurrentObservationRow &row, int stationType) override
    {
        rows.append({row, stationType});
    }

    bool present = true;
    QString high, low;
    QList<QDate> askedDays;
    QList<QPair<CurrentObservationRow, int>> rows;
};

} // namespace Tarnby::Test
