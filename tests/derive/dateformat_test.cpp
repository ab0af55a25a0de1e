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

struct PictureCase {
    const char *picture;
    QDateTime when;
    const char *expected;
};

class PictureTest : public ::testing::TestWithParam<PictureCase>
{
};

TEST_P(PictureTest, PrintsAsTheLettersSay)
{
    const PictureCase &c = GetParam();
    EXPECT_EQ(formatDateTime(c.when, QString::fromUtf8(c.picture), kEnglish), c.expected)
        << c.picture;
}

// Monday 4 March 2024, 19:05:09.
const QDateTime kEvening = at(2024, 3, 4, 19, 5, 9);

INSTANTIATE_TEST_SUITE_P(
    Pictures, PictureTest,
    ::testing::Values(
        // Weekdays and months, in either case.
        PictureCase{"dddd", kEvening, "Monday"}, PictureCase{"DDDD", kEvening, "Monday"},
        PictureCase{"ddd", kEvening, "Mon"}, PictureCase{"MMM D", kEvening, "Mar 4"},
        PictureCase{"mmmm d, yyyy", kEvening, "March 4, 2024"},
        // m is the month unless it follows an hour.
        PictureCase{"yyyy-mm-dd", kEvening, "2024-03-04"},
        PictureCase{"mmddyy", kEvening, "030424"}, PictureCase{"d/m/yyyy", kEvening, "4/3/2024"},
        PictureCase{"hh:mm", kEvening, "19:05"}, PictureCase{"mm/dd hh", kEvening, "03/04 19"},
        PictureCase{"ddMMyyHHnnss", kEvening, "040324190509"},
        PictureCase{"yyyyMMddhmmss", kEvening,
                    "2024030419"
                    "0509"},
        // The half-day makes the clock a 12-hour one.
        PictureCase{"h AM/PM", kEvening, "7 PM"}, PictureCase{"h:nn AM/PM", kEvening, "7:05 PM"},
        PictureCase{"h:mm:ss am/pm", kEvening, "7:05:09 pm"},
        PictureCase{"yyyyMMddhmmss AM/PM", kEvening,
                    "202403047"
                    "0509 PM"},
        PictureCase{"hA/P", kEvening, "7P"}, PictureCase{"h a/p", at(2024, 3, 4, 0, 30), "12 a"},
        PictureCase{"h AM/PM", at(2024, 3, 4, 12), "12 PM"},
        PictureCase{"hh:nn:ss", at(2024, 3, 4, 0, 5, 9), "00:05:09"},
        PictureCase{"h:n:s", at(2024, 3, 4, 7, 5, 9), "7:5:9"},
        // The rarer fields.
        PictureCase{"q", kEvening, "1"}, PictureCase{"y", kEvening, "64"},
        PictureCase{"w ww", kEvening, "2 10"}, PictureCase{"w", at(2024, 3, 3), "1"},
        PictureCase{"yy", at(2007, 1, 1), "07"},
        // Literals.
        PictureCase{"\"Day\" d", kEvening, "Day 4"}, PictureCase{"\\d\\a\\y d", kEvening, "day 4"},
        PictureCase{"yyyy-mm-ddThh:nn", kEvening, "2024-03-04T19:05"},
        PictureCase{"", kEvening, ""}, PictureCase{"dd", QDateTime(), ""}));

TEST(PictureNamesTest, ComeFromTheLocale)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(formatDateTime(kEvening, QStringLiteral("dddd, d. mmmm"), german), "Montag, 4. März");
    EXPECT_EQ(formatDateTime(kEvening, QStringLiteral("AMPM"), kEnglish), kEnglish.pmText());
}

} // namespace
