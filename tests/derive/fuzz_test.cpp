// Random and mutated texts through the routines that take any text from the network.
#include "tests/derive/localecase.h"
#include "tests/derive/textinvariants.h"

#include <QRandomGenerator>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr unsigned kRounds = 150000; // per locale: some 300 000 texts in all

const QStringList kSeeds = {"HIGHS IN THE LOW 50S. WINDS 5 TO 10 MPH.",
                            "Lows in the upper teens. Chance of rain near 50%.",
                            "Dew point will be around 55°F. Rain totals of 0.25 inches.",
                            "Snow. 2 to 4 inches of snow possible. Gusts up to 25 mph.",
                            "Around a quarter of an inch. Falling to around 40. 7:00 PM",
                            "-.5",
                            "1,234.5",
                            "1e400",
                            "N/A",
                            "29,92",
                            "IN THE MID  S F. F  MPH 0. 0F.",
                            ""};

// Digits, number marks, the letters of the phrases, a no-break space, a lone surrogate and
// a non-Latin digit.
const QString kAlphabet = QString::fromUtf8("0123456789.,-+eE %°FSsINTHELOWMPDUR/AC:") +
                          QChar(0x00A0) + QChar(0xD800) + QChar(0x0660);

// A seed or a random text, then up to five edits: a character, a cut, a piece of a seed,
// or a long run of digits that reaches the overflow paths.
QString mutatedText(QRandomGenerator &random)
{
    const auto pick = [&](qsizetype bound) {
        return static_cast<int>(random.bounded(quint32(bound)));
    };
    QString text;
    if (pick(4) == 0)
        for (int length = pick(40); length > 0; --length)
            text += kAlphabet[pick(kAlphabet.size())];
    else
        text = kSeeds[pick(kSeeds.size())];
    for (int edits = pick(6); edits > 0; --edits) {
        const int at = pick(text.size() + 1);
        switch (pick(4)) {
        case 0:
            text.insert(at, kAlphabet[pick(kAlphabet.size())]);
            break;
        case 1:
            text.remove(at, 1 + pick(3));
            break;
        case 2:
            text.insert(at, kSeeds[pick(kSeeds.size())].left(pick(20)));
            break;
        default:
            text.insert(at, QString(pick(400), QLatin1Char('9')));
        }
    }
    return text;
}

class FuzzTest : public LocaleTest
{
};

TEST_P(FuzzTest, TextRoutinesKeepTheirPromisesOnAnyText)
{
    QRandomGenerator random(20240415);
    for (unsigned round = 0; round < kRounds; ++round) {
        const QString text = mutatedText(random);
        const QString broken = brokenTextPromise(text, round);
        ASSERT_TRUE(broken.isEmpty())
            << broken.toStdString() << " for \"" << text.toStdString() << '"';
    }
}

TARNBY_BOTH_LOCALES(FuzzTest);

} // namespace
