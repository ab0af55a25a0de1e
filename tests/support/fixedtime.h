#pragma once
// The time a test runs in: the local time zone, the date conventions of a locale and, when
// given, a fixed clock. Everything is put back when the object goes. Header only: the test
// links Tarnby::Derive for the date routines.

#include "core/clock.h"
#include "derive/dates.h"

#include <QLocale>
#include <QTimeZone>

namespace Tarnby::Test
{

class FixedTime
{
public:
    explicit FixedTime(const QTimeZone &zone, const QDateTime &utcNow = {},
                       const QLocale &locale = QLocale(QLocale::English, QLocale::UnitedStates))
        : clock(utcNow)
    {
        if (utcNow.isValid()) setClock(&clock);
        setLocalTimeZone(zone);
        LoadDatePatterns(locale);
    }
    ~FixedTime()
    {
        setClock(nullptr);
        setLocalTimeZone(QTimeZone());
        LoadDatePatterns();
    }
    FixedTime(const FixedTime &) = delete;
    FixedTime &operator=(const FixedTime &) = delete;

    FixedClock clock;
};

} // namespace Tarnby::Test
