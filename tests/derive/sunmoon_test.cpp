#include "derive/sunmoon.h"

#include "core/processvalues.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "tests/support/fixedtime.h"
#include "tests/support/testprofile.h"

#include <QRegularExpression>

#include <cmath>

using namespace Tarnby;

namespace
{

// Crossings from a full ephemeris (apparent place with nutation and aberration, the true
// altitude bisected), in minutes after 0h UTC of the date: each depth, both hemispheres, both
// sides of the date line, three decades.
TEST(SunTimesTest, MatchAFullEphemeris)
{
    const struct {
        QDate date;
        double lat, lon;
        SunCrossing SunTimes::*depth;
        double rise, set;
    } rows[] = {{{2024, 3, 20}, 52.5, 13.4, &SunTimes::sun, 308.0, 1040.5},
                {{1995, 7, 4}, 60.0, 116.4, &SunTimes::sun, -301.2, 817.7},
                {{2024, 6, 21}, 41.53, -93.65, &SunTimes::civil, 606.8, 1586.3},
                {{1995, 12, 21}, -36.85, 174.76, &SunTimes::nautical, -491.3, 528.6},
                {{2040, 9, 1}, 21.3, -157.8, &SunTimes::astronomical, 899.4, 1801.9}};
    for (const auto &r : rows) {
        const SunCrossing c = GetSunTimes(r.lat, r.lon, r.date, 0).*r.depth;
        ASSERT_TRUE(c.rise && c.set) << r.lat << ' ' << r.lon;
        EXPECT_NEAR(*c.rise * 60, r.rise, 2.0) << r.lat << ' ' << r.lon;
        EXPECT_NEAR(*c.set * 60, r.set, 2.0) << r.lat << ' ' << r.lon;
    }
}

TEST(SunTimesTest, PolarDayAndNightGiveNoTimes)
{
    const SunTimes summer = GetSunTimes(78.2, 15.6, QDate(2024, 6, 21), 0);
    EXPECT_FALSE(summer.sun.rise || summer.sun.set || summer.civil.rise || summer.astronomical.set);
    const SunTimes winter = GetSunTimes(78.2, 15.6, QDate(2024, 12, 21), 0);
    EXPECT_FALSE(winter.sun.rise || winter.sun.set);
    EXPECT_FALSE(winter.astronomical.rise.has_value() && !winter.nautical.rise.has_value());
    // White nights: at 60 degrees the sun sets in June but it never gets darker than -12.
    const SunTimes whiteNight = GetSunTimes(60.0, 25.0, QDate(2024, 6, 21), 0);
    EXPECT_TRUE(whiteNight.sun.rise && whiteNight.sun.set);
    EXPECT_FALSE(whiteNight.nautical.rise || whiteNight.astronomical.set);
}

TEST(SunTimesTest, BiasAndDateLineKeepTheLocalDay)
{
    const QDate date(2024, 3, 20);
    const SunTimes utc = GetSunTimes(52.5, 13.4, date, 0);
    const SunTimes berlin = GetSunTimes(52.5, 13.4, date, -60);
    EXPECT_NEAR(*berlin.sun.rise - *utc.sun.rise, 1.0, 1e-9);
    // Auckland at UTC+13 and Honolulu at UTC-10: both days' crossings lie on their own day.
    for (const auto &[lat, lon, bias] : {std::tuple{-36.85, 174.76, -780}, {21.3, -157.8, 600}}) {
        const SunTimes t = GetSunTimes(lat, lon, date, bias);
        ASSERT_TRUE(t.sun.rise && t.sun.set);
        EXPECT_GT(*t.sun.rise, 5.0);
        EXPECT_LT(*t.sun.set, 21.0);
    }
}

TEST(SunTimesTest, TextPositionsThatAreNoNumbersGiveNoTimes)
{
    const QDate date(2024, 5, 1);
    for (const auto &[lat, lon] : {std::pair{"N/A", "10"}, {"95", "0"}, {"45", "200"}}) {
        const SunTimes t = GetSunTimes(QString::fromLatin1(lat), QString::fromLatin1(lon), date, 0);
        EXPECT_FALSE(t.sun.rise || t.sun.set || t.civil.rise) << lat << ' ' << lon;
    }
    EXPECT_TRUE(GetSunTimes("41,6", "-93.6", date, 0).sun.rise);
    EXPECT_FALSE(GetSunTimes(41.6, -93.6, QDate(), 0).sun.rise);
}

// ---- the sun step -------------------------------------------------------------------------------

class SunCacheTest : public Tarnby::Test::ProfileTest
{
protected:
    SunCacheTest() { process().CityCode = QStringLiteral("KDSM"); }
    static QString sun(const QString &key) { return GetCache("Sun", key); }
    Tarnby::Test::FixedTime time{QTimeZone(-5 * 3600), // 20 June, local
                                 QDateTime(QDate(2024, 6, 21), QTime(3, 0), Qt::UTC)};
};

TEST_F(SunCacheTest, WritesRowsFromTheLocalToday)
{
    process().Latitude = QStringLiteral("41.53");
    process().Longitude = QStringLiteral("-93.65");
    WriteSunCache(3);
    EXPECT_EQ(sun("count"), "3");
    EXPECT_EQ(sun("sunrise-date1"), "6/20/2024");
    EXPECT_EQ(sun("dusk-date3"), "6/22/2024");
    EXPECT_EQ(sun("sunrise-time1"), "5:41 AM"); // 10:41 UTC
    EXPECT_TRUE(sun("sunset-time1").endsWith(" PM"));
}

TEST_F(SunCacheTest, MissingCrossingsAndPositions)
{
    process().Latitude = QStringLiteral("78.2");
    process().Longitude = QStringLiteral("15.6");
    WriteSunCache(1);
    EXPECT_EQ(sun("sunrise-time1"), "N/A");
    EXPECT_EQ(sun("sunrise-date1"), "6/20/2024");
    process().Latitude = QStringLiteral("N/A");
    WriteSunCache(2);
    EXPECT_EQ(sun("count"), "");
    EXPECT_EQ(sun("sunrise-time1"), "");
}

// ---- day numbers --------------------------------------------------------------------------------

TEST(DayNumberTest, JulianDaysBothWays)
{
    const struct {
        double dateNumber, julianDay;
    } rows[] = {
        {-1.25, 2415017.75},    // 29 December 1899, 06:00: the time counts forward
        {45383.5, 2460402.0},   // 1 April 2024, noon
        {-115858.0, 2299160.5}, // 15 October 1582, the first Gregorian day
        {-115859.5, 2299170.0}  // the day before, read in the Julian calendar
    };
    for (const auto &r : rows) {
        EXPECT_DOUBLE_EQ(JulianDayFromDateNumber(r.dateNumber), r.julianDay) << r.dateNumber;
        if (r.dateNumber >= -115858.0) { // Julian-calendar days read back as Gregorian ones
            EXPECT_NEAR(DateNumberFromJulianDay(r.julianDay), r.dateNumber, 1e-9) << r.julianDay;
        }
    }
}

TEST(DayNumberTest, ValidRangesAndTheirEnds)
{
    EXPECT_FALSE(IsValidJulianDay(1757593.5));
    EXPECT_FALSE(IsValidJulianDay(5373484.4999885));
    EXPECT_EQ(DateNumberFromJulianDay(5373484.5), 0.0);
    EXPECT_FALSE(IsValidDateNumber(2958466.0));
    EXPECT_FALSE(IsValidDateNumber(-657418.2));
    EXPECT_TRUE(IsValidDateNumber(-115859.5));
    EXPECT_EQ(JulianDayFromDateNumber(-200000.0), 0.0);
    EXPECT_EQ(JulianDayFromDateNumber(std::nan("")), 0.0);
}

// ---- moon ---------------------------------------------------------------------------------------

TEST(MoonTest, PhaseDatesOfTheBook)
{
    // Meeus, Astronomical Algorithms, example 49.a: the new moon of February 1977.
    EXPECT_NEAR(GetMoonPhaseDate(-283, 0), 2443192.65118, 1e-5);
    // Example 49.b: the first last quarter of 2044. The book's second edition, which that
    // example uses, has slightly different constants of the mean phase: 1.3 seconds here.
    EXPECT_NEAR(GetMoonPhaseDate(544, 3), 2467636.49186, 2e-5);
}

class LocalZoneTest : public ::testing::Test
{
protected:
    Tarnby::Test::FixedTime time{QTimeZone::utc()};
};

// The published phases of 2024 (tests/data/derive/moonphases2024.txt, whole minutes UTC).
TEST_F(LocalZoneTest, PhaseInstantsMatchPublishedTables)
{
    const char *const names[] = {"New Moon", "First Quarter", "Full Moon", "Last Quarter"};
    const QStringList lines = Tarnby::Test::readDataFile("derive/moonphases2024.txt")
                                  .split(u'\n', Qt::SkipEmptyParts)
                                  .filter(QRegularExpression("^\\d "));
    ASSERT_EQ(lines.size(), 50);
    for (const QString &line : lines) {
        const int phase = line.left(1).toInt();
        const QDateTime published = QDateTime::fromString(line.mid(2), "yyyy-MM-dd HH:mm");
        const auto instants = MoonPhasesOfLunation(published.date());
        ASSERT_TRUE(instants.has_value()) << line.toStdString();
        const qint64 seconds =
            wallClock(published.date(), published.time()).secsTo((*instants)[phase]);
        EXPECT_LE(std::abs(seconds), 120) << line.toStdString();
        EXPECT_EQ(GetMoonPhaseName(published.date()), names[phase]) << line.toStdString();
    }
}

TEST_F(LocalZoneTest, NamesBetweenThePhasesByTheLocalDay)
{
    EXPECT_EQ(GetMoonPhaseName(QDate(2024, 4, 7)), "Waning Crescent");
    // The full moon of 23 April 2024 at 23:49 UTC falls on the 24th two hours east.
    setLocalTimeZone(QTimeZone(2 * 3600));
    EXPECT_EQ(GetMoonPhaseName(QDate(2024, 4, 23)), "Waxing Gibbous");
    EXPECT_EQ(GetMoonPhaseName(QDate(2024, 4, 24)), "Full Moon");
}

TEST(MoonTest, AgeAndIllumination)
{
    // The end of 8 April 2024 lies 5 h 38 min after that day's new moon (18:21 UTC).
    EXPECT_NEAR(*GetMoonAge(QDate(2024, 4, 8)), 0.2356, 0.002);
    EXPECT_LT(*GetMoonIllumination(QDate(2024, 4, 8)), 1.0f);
    EXPECT_GT(*GetMoonIllumination(QDate(2024, 4, 23)), 99.0f);
}

TEST(MoonTest, ImagesByNameAndLight)
{
    const struct {
        const char *name;
        double lit;
        const char *image;
    } rows[] = {{"Full Moon", 99.8, "mphase14"},
                {"Waxing Crescent", 8.3, "mphase02"},
                {"Waxing Crescent", 8.4, "mphase03"},
                {"Waning Crescent", 45, "mphase21"},
                {"N/A", 50, ""}};
    for (const auto &r : rows)
        EXPECT_EQ(moonImageFor(QLatin1String(r.name), r.lit), r.image) << r.name << ' ' << r.lit;
}

TEST(MoonTest, DatesThatCannotBeUsed)
{
    for (const QDate &d : {QDate(), QDate(10000, 1, 1), QDate(1200, 5, 5)}) {
        EXPECT_EQ(GetMoonPhaseName(d), "N/A");
        EXPECT_EQ(GetMoonPhaseImage(d), "");
        EXPECT_FALSE(GetMoonAge(d).has_value());
        EXPECT_FALSE(MoonPhasesOfLunation(d).has_value());
    }
    EXPECT_EQ(GetMoonPhaseName(QDate(9999, 12, 31)).isEmpty(), false);
}

} // namespace
