// Random and mutated texts through the routines that take any text from the network.
#include "tests/derive/localecase.h"
#include "tests/derive/textinvariants.h"

#include <QRandomGenerator>

#include <array>

using namespace Tarnby;
using Tarnby::Test::LocaleCase;

namespace
{

constexpr int kRounds = 150000; // per locale: some 300 000 texts in all

const std::array<QString, 12> kSeeds = {
    "HIGHS IN THE LOW 50S. WINDS 5 TO 10 MPH.",
    "Lows in the upper teens. Chance of rain near 50%.",
    "Dew point will be around 55°F. Rain totals of 0.25 inches.",
    "Snow. 2 to 4 inches of snow possible. Gusts up to 25 mph.",
    "Around a quarter of an inch. Temperatures falling to around 40.",
    "-.5",
    "1,234.5",
    "1e400",
    "N/A",
    "29,92",
    "IN THE MID  S F. F  MPH 0. 0F. 7:00 PM",
    "",
};

// Digits, number marks, the letters of the phrases, a no-break space, a lone surrogate and
// a non-Latin digit.
const QString kAlphabet = QString::fromUtf8("0123456789.,-+eE %°FSsINTHELOWMPDUR/AC:") +
                          QChar(0x00A0) + QChar(0xD800) + QChar(0x0660);

class Mutator
{
public:
    explicit Mutator(quint32 seed) : m_random(seed) {}

    QString next()
    {
        QString text = pick(4) == 0 ? randomText() : kSeeds[pick(kSeeds.size())];
        for (int edits = pick(6); edits > 0; --edits)
            mutate(text);
        return text;
    }

private:
    int pick(qsizetype bound)
    {
        return static_cast<int>(m_random.bounded(static_cast<quint32>(bound)));
    }
    QChar randomChar() { return kAlphabet[pick(kAlphabet.size())]; }

    QString randomText()
    {
        QString text;
        for (int length = pick(40); length > 0; --length)
            text += randomChar();
        return text;
    }

    void mutate(QString &text)
    {
        const int at = pick(text.size() + 1);
        switch (pick(4)) {
        case 0:
            text.insert(at, randomChar());
            break;
        case 1:
            text.remove(at, 1 + pick(3));
            break;
        case 2:
            text.insert(at, kSeeds[pick(kSeeds.size())].left(pick(20)));
            break;
        default: // long digit runs reach the overflow paths
            text.insert(at, QString(pick(400), QLatin1Char('9')));
        }
    }

    QRandomGenerator m_random;
};

class FuzzTest : public ::testing::TestWithParam<LocaleCase>
{
protected:
    void SetUp() override
    {
        process() = ProcessValues{};
        process().DecimalSymbol = GetParam().decimal;
        process().GroupSymbol = GetParam().group;
        process().NonUsNumberFormat = GetParam().decimal != ".";
    }
    void TearDown() override
    {
        process() = ProcessValues{};
        conversionOptions() = {};
    }
};

TEST_P(FuzzTest, TextRoutinesKeepTheirPromisesOnAnyText)
{
    Mutator mutator(20240415);
    for (unsigned round = 0; round < kRounds; ++round) {
        const QString text = mutator.next();
        const QString broken = Tarnby::Test::brokenTextPromise(text, round);
        ASSERT_TRUE(broken.isEmpty())
            << broken.toStdString() << " for \"" << text.toStdString() << '"';
    }
}

INSTANTIATE_TEST_SUITE_P(Locales, FuzzTest,
                         ::testing::Values(Tarnby::Test::kDotMonthFirst,
                                           Tarnby::Test::kCommaDayFirst),
                         Tarnby::Test::localeName);

} // namespace
