// Random and mutated date texts through NormaliseDate and FixDateFormat, in a day-first and a
// month-first locale: nothing may crash, and what comes out must be either the text
// itself or a date in the system's form.

#include "derive/dates.h"

#include "core/clock.h"
#include "tests/support/mutator.h"
#include "tests/support/printers.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

const char *const kSeeds[] = {
    "4/3/2024",      "2024-04-03 10:30",
    "March 4, 2024", "Mon, 4 Mar 2024 7:05 PM",
    "03.04.2024",    "13/4/24",
    "5:43 PM EDT",   "2024-04-03T10:00:00Z",
    "N/A",           "",
    "31/02/2024",    "12:00 AM",
    "4 Sept 1999",   "1/2/3/4",
    "2024. 04. 03.", "10:61",
};

// A random text of date characters, or a seed with a few edits.
QString nextText(Tarnby::Test::Mutator &mutator)
{
    if (mutator.pick(3) == 0) return mutator.randomText(23);
    return mutator.mutated(QString::fromUtf8(kSeeds[mutator.pick(std::size(kSeeds) - 1)]));
}

Tarnby::Test::Mutator dateMutator(std::uint32_t seed)
{
    return {seed, Tarnby::Test::characters(QStringLiteral("0123456789/-.:, AaPpMmTZNn éü年\t"))};
}

class DateFuzzTest : public ::testing::TestWithParam<QLocale>
{
protected:
    DateFuzzTest()
    {
        setClock(&m_clock);
        LoadDatePatterns(GetParam());
    }
    ~DateFuzzTest() override
    {
        setClock(nullptr);
        LoadDatePatterns();
    }
    FixedClock m_clock{QDateTime(QDate(2024, 3, 4), QTime(12, 0), Qt::UTC)};
};

constexpr int kRounds = 75000; // per routine and locale: 300,000 texts in all

TEST_P(DateFuzzTest, NormaliseDateGivesTheTextOrASystemDate)
{
    Tarnby::Test::Mutator mutator = dateMutator(20240304);
    const char *const orders[] = {"", "DMY", "MDY", "YMD", "xyz"};
    for (int i = 0; i < kRounds; ++i) {
        const QString text = nextText(mutator);
        const QString order = QLatin1String(orders[i % std::size(orders)]);
        const QString out = NormaliseDate(text, order);
        if (out == text) continue;
        ASSERT_TRUE(readDate(out).has_value())
            << "in " << text.toStdString() << " out " << out.toStdString();
        ASSERT_EQ(NormaliseDate(out, QString()), out) << "in " << text.toStdString();
    }
}

TEST_P(DateFuzzTest, FixDateFormatKeepsOnlyNumbersAndFormatTimeOnlyTimes)
{
    Tarnby::Test::Mutator mutator = dateMutator(19991231);
    const QRegularExpression dateOnly(QStringLiteral("^[0-9]*(%1[0-9]*)*$")
                                          .arg(QRegularExpression::escape(systemDateSeparator())));
    const QRegularExpression clockTime(QStringLiteral("^\\d{1,2}:\\d\\d:\\d\\d [AP]M$"));
    for (int i = 0; i < kRounds; ++i) {
        const QString text = nextText(mutator);
        const QString out = FixDateFormat(text, false);
        if (out != text) {
            ASSERT_TRUE(dateOnly.match(out).hasMatch())
                << "in " << text.toStdString() << " out " << out.toStdString();
        }
        ASSERT_LE(FixDateFormat(text, true).size(), text.size() + 8) << text.toStdString();
        const QString time = FormatTime(text);
        if (time != text) {
            ASSERT_TRUE(clockTime.match(time).hasMatch())
                << "in " << text.toStdString() << " out " << time.toStdString();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Locales, DateFuzzTest,
                         ::testing::Values(QLocale(QLocale::English, QLocale::UnitedKingdom),
                                           QLocale(QLocale::English, QLocale::UnitedStates)),
                         [](const auto &info) { return info.param.name().toStdString(); });

} // namespace
