#pragma once
// The time source for everything where time decides behaviour, so tests can set it.

#include <QDateTime>

namespace Tarnby
{

class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const;      // local time
    virtual QDateTime utcNow() const;   // UTC
    virtual qint64 monotonicMs() const; // for time-outs
};

// The clock in force; tests install their own with setClock (nullptr restores the system clock).
const Clock &clock();
void setClock(const Clock *clock);

// A clock that stands still until moved; for tests.
class FixedClock : public Clock
{
public:
    explicit FixedClock(const QDateTime &utc) : m_utc(utc.toUTC()) {}
    QDateTime now() const override { return m_utc.toLocalTime(); }
    QDateTime utcNow() const override { return m_utc; }
    qint64 monotonicMs() const override { return m_utc.toMSecsSinceEpoch(); }
    void advanceSeconds(qint64 s) { m_utc = m_utc.addSecs(s); }
    void set(const QDateTime &utc) { m_utc = utc.toUTC(); }

private:
    QDateTime m_utc;
};

} // namespace Tarnby
