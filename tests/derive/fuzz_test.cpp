// Random and mutated texts through the routines that take any text from the network.
#include "tests/derive/localecase.h"
#include "tests/derive/textinvariants.h"
#include "tests/support/mutator.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr unsigned kRounds = 60000; // per locale: some 120 000 texts in all

// Forecast phrases, number forms and dates as the services write them.
const QStringList kSeeds =
    QString::fromUtf8("HIGHS IN THE LOW 50S. WINDS 5 TO 10 MPH.|Chance of rain near 50%.|Dew "
                      "point will be around 55°F. 2 to 4 inches of snow.|-.5|1,234.5|1e400|N/A|"
                      "IN THE MID  S F. F  MPH 0. 0F.||2024-04-03T10:00:00Z|Mon, 4 Mar 2024 7:05 "
                      "PM|5:43 PM EDT|31/02/2024|2024. 04. 03.")
        .split(u'|');

// Digits, number and date marks, the letters of the phrases and dates, a no-break space, a
// lone surrogate, a non-Latin digit, the seeds themselves and a long run of digits for the
// overflow paths.
QStringList pieces()
{
    return Tarnby::Test::characters(
               QString::fromUtf8("0123456789.,-+eE %°FSsINTHELOWMPDUR/AC:apmTZné年\t") +
               QChar(0x00A0) + QChar(0xD800) + QChar(0x0660)) +
           kSeeds + QStringList{QString(400, QLatin1Char('9'))};
}

using FuzzTest = LocaleTest;

TEST_P(FuzzTest, TextRoutinesKeepTheirPromisesOnAnyText)
{
    Tarnby::Test::Mutator mutator(20240415, pieces());
    for (unsigned round = 0; round < kRounds; ++round) {
        const QString text = mutator.next(kSeeds, 40, 6);
        const QString broken = brokenTextPromise(text, round);
        ASSERT_TRUE(broken.isEmpty())
            << broken.toStdString() << " for \"" << text.toStdString() << '"';
    }
}

TARNBY_BOTH_LOCALES(FuzzTest);

} // namespace
