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
    } rows[] = {{"DDDD", kEvening, "Monday"},
                {"mmmm d, yyyy", kEvening, "March 4, 2024"},
                {"mm/dd hh", kEvening, "03/04 19"},
                {"h:mm:ss am/pm", kEvening, "7:05:09 pm"},
                {"yyyyMMddhmmss AM/PM", kEvening, "2024030470509 PM"},
                {"h a/p", at(2024, 3, 4, 0, 30), "12 a"},
                {"h AM/PM", at(2024, 3, 4, 12), "12 PM"},
                {"q y", kEvening, "1 64"},
                {"w ww", kEvening, "2 10"},
                {"w", at(2024, 3, 3), "1"},
                {"\"Day\" \\d\\a\\y d", kEvening, "Day day 4"},
                {"dd", QDateTime(), ""}};
    for (const auto &r : rows)
        EXPECT_EQ(formatDateTime(r.when, QString::fromUtf8(r.picture), kEnglish), r.expected)
            << r.picture;
}

TEST(PictureNamesTest, ComeFromTheLocale)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(formatDateTime(kEvening, "dddd, d. mmmm", german), "Montag, 4. März");
    EXPECT_EQ(formatDateTime(kEvening, "AMPM", kEnglish), kEnglish.pmText());
}

} // namespace
