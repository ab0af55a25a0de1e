#include "derive/dateformat.h"

#include "tests/support/printers.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

QDateTime at(int y, int mo, int d, int h = 0, int mi = 0, int s = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi, s), Qt::UTC);
}

// Monday 4 March 2024, 19:05:09.
const QDateTime kEvening = at(2024, 3, 4, 19, 5, 9);

// Weekdays and months in either case; m is the month unless it follows an hour; the half-day
// makes the clock a 12-hour one; the rarer fields; literals.
TEST(PictureTest, PrintsAsTheLettersSay)
{
    const struct {
        const char *picture;
        QDateTime when;
        const char *expected;
    } rows[] = {{"dddd", kEvening, "Monday"},
                {"DDDD", kEvening, "Monday"},
                {"ddd", kEvening, "Mon"},
                {"MMM D", kEvening, "Mar 4"},
                {"mmmm d, yyyy", kEvening, "March 4, 2024"},
                {"yyyy-mm-dd", kEvening, "2024-03-04"},
                {"mmddyy", kEvening, "030424"},
                {"d/m/yyyy", kEvening, "4/3/2024"},
                {"hh:mm", kEvening, "19:05"},
                {"mm/dd hh", kEvening, "03/04 19"},
                {"ddMMyyHHnnss", kEvening, "040324190509"},
                {"yyyyMMddhmmss", kEvening, "20240304190509"},
                {"h AM/PM", kEvening, "7 PM"},
                {"h:nn AM/PM", kEvening, "7:05 PM"},
                {"h:mm:ss am/pm", kEvening, "7:05:09 pm"},
                {"yyyyMMddhmmss AM/PM", kEvening, "2024030470509 PM"},
                {"hA/P", kEvening, "7P"},
                {"h a/p", at(2024, 3, 4, 0, 30), "12 a"},
                {"h AM/PM", at(2024, 3, 4, 12), "12 PM"},
                {"hh:nn:ss", at(2024, 3, 4, 0, 5, 9), "00:05:09"},
                {"h:n:s", at(2024, 3, 4, 7, 5, 9), "7:5:9"},
                {"q", kEvening, "1"},
                {"y", kEvening, "64"},
                {"w ww", kEvening, "2 10"},
                {"w", at(2024, 3, 3), "1"},
                {"yy", at(2007, 1, 1), "07"},
                {"\"Day\" d", kEvening, "Day 4"},
                {"\\d\\a\\y d", kEvening, "day 4"},
                {"yyyy-mm-ddThh:nn", kEvening, "2024-03-04T19:05"},
                {"", kEvening, ""},
                {"dd", QDateTime(), ""}};
    for (const auto &r : rows)
        EXPECT_EQ(formatDateTime(r.when, QString::fromUtf8(r.picture), kEnglish), r.expected)
            << r.picture;
}

TEST(PictureNamesTest, ComeFromTheLocale)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(formatDateTime(kEvening, QStringLiteral("dddd, d. mmmm"), german), "Montag, 4. März");
    EXPECT_EQ(formatDateTime(kEvening, QStringLiteral("AMPM"), kEnglish), kEnglish.pmText());
}

} // namespace
