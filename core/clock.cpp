#include "core/clock.h"

#include <QElapsedTimer>

namespace Tarnby
{

namespace
{
const Clock systemClock;
const Clock *current = &systemClock;
} // namespace

QDateTime Clock::now() const
{
    return QDateTime::currentDateTime();
}

QDateTime Clock::utcNow() const
{
    return QDateTime::currentDateTimeUtc();
}

qint64 Clock::monotonicMs() const
{
    static QElapsedTimer since;
    if (!since.isValid()) since.start();
    return since.elapsed();
}

const Clock &clock()
{
    return *current;
}

void setClock(const Clock *clock)
{
    current = clock ? clock : &systemClock;
}

} // namespace Tarnby
