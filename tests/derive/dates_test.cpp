#include "derive/dates.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/support/cachetext.h"
#include "tests/support/fixedtime.h"
#include "tests/support/testprofile.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

const QLocale kUs(QLocale::English, QLocale::UnitedStates);       // M/d/yyyy
const QLocale kBritish(QLocale::English, QLocale::UnitedKingdom); // dd/MM/yyyy
const QLocale kGerman(QLocale::German, QLocale::Germany);         // dd.MM.yyyy

// A profile, a fixed clock (Monday 4 March 2024, 12:00 UTC) and a fixed zone (UTC-5).
class DatesTest : public ProfileTest
{
protected:
    DatesTest() { process().CityCode = QStringLiteral("KDSM"); }
    static void use24(bool on)
    {
        SavePref("OnDownload", "Use24", on ? QStringLiteral("True") : QStringLiteral("False"));
    }
    FixedTime time{QTimeZone(-5 * 3600), QDateTime(QDate(2024, 3, 4), QTime(12, 0), Qt::UTC)};
};

// ---- patterns ------------------------------------------------------------------------------

TEST_F(DatesTest, PatternsComeFromTheLocale)
{
    const struct {
        QLocale locale;
        const char *date, *order, *separator, *time;
    } rows[] = {
        {kUs, "M/d/yyyy", "MDY", "/", "h:mm:ss AM/PM"}, // a two-digit year is widened
        {kBritish, "dd/MM/yyyy", "DMY", "/", "HH:mm:ss"},
        {QLocale(QLocale::Hungarian, QLocale::Hungary), "yyyy. MM. dd.", "YMD", ". ", "H:mm:ss"},
        {QLocale::c(), "d MM yyyy", "DMY", " ", "HH:mm:ss"}};
    for (const auto &r : rows) {
        LoadDatePatterns(r.locale);
        EXPECT_EQ(GetShortDatePattern(), r.date) << r.locale.name().toStdString();
        EXPECT_EQ(systemDateOrder(), r.order);
        EXPECT_EQ(systemDateSeparator(), r.separator);
        EXPECT_EQ(GetTimePattern(), QString::fromUtf8(r.time)) << r.locale.name().toStdString();
    }
}

TEST_F(DatesTest, CleaningShortDatePatterns)
{
    LoadDatePatterns(kUs);
    const struct {
        const char *pattern, *cleaned;
    } rows[] = {
        {"dd-MMM-yyyy", "dd-MM-yyyy"},      {"d MMMM yyyy", "d MM yyyy"},
        {"ddd/MMM/yyyy", "dd/MMM/yyyy"},    {"MMMM dd yyyy", "M/d/yyyy"}, // never used for reading
        {"dddd, MMMM d, yyyy", "M/d/yyyy"},                               // four parts
        {"dd/dd/yyyy", "M/d/yyyy"}};                                      // June does not read back
    for (const auto &r : rows)
        EXPECT_EQ(CleanShortDatePattern(QLatin1String(r.pattern)), r.cleaned) << r.pattern;
}

// ---- normalising and fixing -----------------------------------------------------------------

struct DateCase {
    const char *text;
    const char *order; // for NormaliseDate
    const char *onMdy;
    const char *onDmy;
};

TEST_F(DatesTest, NormaliseDateUnderBothOrders)
{
    const DateCase rows[] = {
        {"4/3/2024", "MDY", "4/3/2024", "03/04/2024"},
        {"2024-04-03 10:30", "YMD", "4/3/2024 10:30", "03/04/2024 10:30"},
        {"13/4/2024", "", "4/13/2024", "13/04/2024"}, // above 12: not the month
        {"2024/4/13", "", "4/13/2024", "13/04/2024"}, // above 31: the year
        {"4/3/2024", "", "4/3/2024", "04/03/2024"},   // unknown: the system's order
        {"4/3/85", "MDY", "4/3/1985", "03/04/1985"},
        {"4 mar 2024 7:00 PM", "", "3/4/2024 7:00 PM", "04/03/2024 7:00 PM"},
        // What is no date comes back as it was.
        {"31/02/2024", "DMY", "31/02/2024", "31/02/2024"},
        {"4/3", "MDY", "4/3", "4/3"}};
    for (const auto &r : rows) {
        LoadDatePatterns(kUs);
        EXPECT_EQ(NormaliseDate(QString::fromUtf8(r.text), QLatin1String(r.order)), r.onMdy)
            << r.text;
        LoadDatePatterns(kBritish);
        EXPECT_EQ(NormaliseDate(QString::fromUtf8(r.text), QLatin1String(r.order)), r.onDmy)
            << r.text;
    }
}

TEST_F(DatesTest, FixDateFormatUnderBothOrders)
{
    const DateCase rows[] = {{"March 4, 2024", "", "3/4/2024", "4/3/2024"},
                             {"2024-04-03", "", "04/03/2024", "03/04/2024"},
                             {"4-3-2024", "", "4/3/2024", "4/3/2024"}, // order unknown: kept
                             {"abc", "", "abc", "abc"}};
    for (const auto &r : rows) {
        LoadDatePatterns(kUs);
        EXPECT_EQ(FixDateFormat(QString::fromUtf8(r.text)), r.onMdy) << r.text;
        LoadDatePatterns(kBritish);
        EXPECT_EQ(FixDateFormat(QString::fromUtf8(r.text)), r.onDmy) << r.text;
    }
    LoadDatePatterns(kGerman);
    EXPECT_EQ(FixDateFormat("2024-04-03"), "03.04.2024");
}

TEST_F(DatesTest, FixDateFormatKeepsTheTimeWhenAsked)
{
    LoadDatePatterns(kUs);
    const QString text = QStringLiteral("April 3, 2024 10:00 AM EDT");
    EXPECT_EQ(FixDateFormat(text), "4/3/2024");
    EXPECT_EQ(FixDateFormat(text, true), "4/3/2024 10:00 AM");
    EXPECT_EQ(FixDateFormat(text, true, false), "10:00 AM 4/3/2024");
    EXPECT_EQ(FixDateFormat("5:43 PM EDT", true), "5:43 PM");
}

// ---- reading ---------------------------------------------------------------------------------

TEST_F(DatesTest, ReadDateAsTheSystemReadsIt)
{
    LoadDatePatterns(kUs);
    const auto wall = [](int y, int m, int d, int h = 0, int mi = 0, int s = 0) {
        return std::optional(wallClock(QDate(y, m, d), QTime(h, mi, s)));
    };
    EXPECT_EQ(readDate("13/4/2024"), wall(2024, 4, 13)); // turned round
    EXPECT_EQ(readDate("2024-04-03 19:05:09"), wall(2024, 4, 3, 19, 5, 9));
    EXPECT_EQ(readDate("Monday, March 4, 2024 7:05 PM"), wall(2024, 3, 4, 19, 5));
    EXPECT_EQ(readDate("7 PM"), wall(1899, 12, 30, 19));
    EXPECT_EQ(readDate("12:30 p.m."), wall(1899, 12, 30, 12, 30));
    EXPECT_EQ(readDate("4/3"), wall(2024, 4, 3));  // this year, by the clock
    EXPECT_EQ(readDate("3/45"), wall(1945, 3, 1)); // above 31: month and year
    for (const char *bad : {"", "31/02/2024", "13:00 PM", "4/3/2024 EDT", "1/2/3/4", "10:61"})
        EXPECT_FALSE(readDate(QLatin1String(bad)).has_value()) << bad;
    LoadDatePatterns(kBritish);
    EXPECT_EQ(readDate("3/4/2024"), wall(2024, 4, 3));
}

// ---- times -------------------------------------------------------------------------------------

TEST_F(DatesTest, FormatTimeByTheClockSetting)
{
    LoadDatePatterns(kUs);
    const struct {
        const char *text;
        bool use24, noAmPm, trimMinutes, noSeconds, keepMinutes;
        const char *expected;
    } rows[] = {
        {"7:00 PM", true, false, false, true, false, "19:00"},
        {"7:00 PM", false, false, true, false, false, "7 PM"},
        {"7:00 PM", true, false, true, false, true, "19:00"},
        {"7:00 PM", true, false, true, false, false, "19"},
        {"3/4/2024 7:05 AM", true, false, false, false, false, "07:05:00"},
        {"5:43 PM EDT", false, false, false, true, false, "5:43 PM"}, // through FixDateFormat
        {"25:00", true, false, false, false, false, "25:00"}};
    for (const auto &r : rows) {
        use24(r.use24);
        EXPECT_EQ(
            FormatTime(QLatin1String(r.text), r.noAmPm, r.trimMinutes, r.noSeconds, r.keepMinutes),
            r.expected)
            << r.text << " use24 " << r.use24;
    }
}

// ---- UTC and local ---------------------------------------------------------------------------

TEST_F(DatesTest, UtcAndLocalByTheZone)
{
    LoadDatePatterns(kUs);
    EXPECT_EQ(UtcNow(), wallClock(QDate(2024, 3, 4), QTime(12, 0)));
    EXPECT_EQ(UtcOffsetMinutes(), 300);
    EXPECT_EQ(localNow(), wallClock(QDate(2024, 3, 4), QTime(7, 0)));
    const QDateTime utc = wallClock(QDate(2024, 3, 4), QTime(2, 30));
    EXPECT_EQ(utcToLocal(utc), wallClock(QDate(2024, 3, 3), QTime(21, 30)));
    EXPECT_EQ(localToUtc(utcToLocal(utc)), utc);
    EXPECT_EQ(utcTextToLocal("2024-03-04 02:30:00"), "3/3/2024 9:30:00 PM");
    EXPECT_FALSE(utcToLocal(QDateTime()).isValid());

    const QTimeZone berlin("Europe/Berlin");
    if (!berlin.isValid()) GTEST_SKIP() << "no time zone data";
    setLocalTimeZone(berlin);
    EXPECT_EQ(biasMinutesOn(QDate(2024, 7, 1)), -120);
    EXPECT_EQ(utcToLocal(wallClock(QDate(2024, 7, 1), QTime(12, 0))),
              wallClock(QDate(2024, 7, 1), QTime(14, 0)));
}

// ---- the station's light ---------------------------------------------------------------------

class StationLightTest : public DatesTest
{
protected:
    StationLightTest()
    {
        LoadDatePatterns(kUs);
        saveCache("Sun", "sunrise-time1=6:00 AM|sunset-time1=8:30 PM|dawn-time1=5:30 AM|"
                         "dusk-time1=9:00 PM|sunrise-time2=6:01 AM|dawn-time2=5:29 AM");
        setStationDate("3", "4", "2024");
    }
    static void setStationClock(const char *hour, const char *minute, const char *half)
    {
        saveCache("Current", QString("now-date-hour-number=%1|now-date-minute-number=%2|"
                                     "now-date-am-pm-abbrv=%3")
                                 .arg(hour, minute, half));
    }
    static void setStationDate(const char *m, const char *d, const char *y)
    {
        saveCache("Current",
                  QString("now-date-month-number=%1|now-date-day-number=%2|now-date-year-number=%3")
                      .arg(m, d, y));
    }
};

TEST_F(StationLightTest, TimeLeftOfTheLight)
{
    const struct {
        const char *hour, *minute, *half;
        int kind;
        bool withDate;
        const char *expected;
    } rows[] = {{"7", "5", "PM", 1, false, "1:55"},
                {"6", "0", "AM", 0, false, "14:30"}, // the start counts as light
                {"8", "30", "PM", 0, false, "0:00"},
                {"9", "05", "PM", 1, true, "8:24"},
                {"19", "05", "", 0, false, "1:25"}};
    for (const auto &r : rows) {
        setStationClock(r.hour, r.minute, r.half);
        EXPECT_EQ(StationLocalNow(r.kind, r.withDate), r.expected)
            << r.hour << ':' << r.minute << ' ' << r.half << " kind " << r.kind;
    }
}

TEST_F(StationLightTest, FallsBackOnObservedThenTheStamp)
{
    setStationClock("N/A", "N/A", "");
    SaveCache("Current", "observed", "3/4/2024 7:05:59 PM");
    EXPECT_EQ(StationLocalNow(0), "1:25");
    SaveCache("Current", "observed", "N/A");
    SaveCache("LastUpdated", "CurrentTimeStamp", "2024-03-04 20:00:00");
    EXPECT_EQ(StationLocalNow(0), "0:30");
    SaveCache("LastUpdated", "CurrentTimeStamp", "");
    EXPECT_EQ(StationLocalNow(0), "0:00");
    // No sun data, or a station date that is no date: the light is over, or counted by the day.
    setStationClock("7", "5", "PM");
    setStationDate("2", "31", "2024");
    EXPECT_EQ(StationLocalNow(0, true), "1:25");
    SaveCache("Sun", "sunset-time1", "N/A");
    EXPECT_EQ(StationLocalNow(0), "0:00");
}

} // namespace
