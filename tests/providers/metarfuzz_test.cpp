// Text that is no report: named bad documents, then a randomized run over mutated real
// reports and random text. The decoder must neither crash nor throw, never call a
// document a report that is none, and never read a number out of nothing.

#include "providers/metar.h"
#include "providers/textcutters.h"
#include "tests/providers/metarcorpus.h"
#include "tests/support/mutator.h"
#include "tests/support/testprofile.h"

#include <gtest/gtest.h>

namespace
{

using namespace Tarnby;

void expectSafeEverywhere(const QString &input)
{
    const auto where = [&] { return input.left(200).toStdString(); };
    clsMetar metar;
    EXPECT_EQ(metar.ParseMetarData(input), !input.isEmpty()) << where();
    if (clsMetar::IsValidMetar(input)) {
        EXPECT_TRUE(input.startsWith(QLatin1String("METAR "))) << where();
        EXPECT_FALSE(input.contains(u'<') || input.contains(u'>')) << where();
    }
    // A Celsius number always has a Fahrenheit number beside it ("N/A" on overflow).
    for (const auto &[celsius, fahrenheit] : {std::pair{metar.TemperatureC(), metar.TemperatureF()},
                                              std::pair{metar.DewPointC(), metar.DewPointF()}})
        EXPECT_TRUE(!NumberInText(celsius) || NumberInText(fahrenheit) || fahrenheit == u"N/A")
            << where();
    clsMetar xml;
    EXPECT_EQ(xml.ParseXmlData(input), !input.isEmpty());
    for (const auto &reading : MetarReadings(xml))
        EXPECT_FALSE(reading.second.contains(QLatin1String("nan"))) << reading.first.toStdString();
}

TEST(MetarBadInput, EmptyTextIsRefusedAndLeavesEveryReadingEmpty)
{
    clsMetar metar;
    EXPECT_FALSE(metar.ParseMetarData(QString()));
    EXPECT_FALSE(metar.ParseXmlData(QString()));
    EXPECT_FALSE(clsMetar::IsValidMetar(QString()));
    for (const auto &[name, value] : MetarReadings(metar))
        EXPECT_EQ(value, name == QLatin1String("IsAuto") ? QStringLiteral("False") : QString())
            << name.toStdString();
}

TEST(MetarBadInput, DocumentsOfOtherKindsPassSafely)
{
    const QString cases[] = {
        QStringLiteral("METAR KLAX 201553Z VRB04KT 10SM SCT021 BKN140 17/1"),
        QStringLiteral("<html><head><title>503 Service Unavailable</title></head><body><h1>Service "
                       "Unavailable</h1><p>Try again at 12/20 A few minutes</p></body></html>"),
        QStringLiteral("METAR EGLL 201150Z 24010KT 9999 FEW040 15/09 Q1015 NOSIG"),
        QString(2048, u'/'),
        QString(2048, u'R') + QStringLiteral("A"),
        Tarnby::Test::readDataFile(QStringLiteral("metar/nws-obs-latest-KPWM-2019.json")),
        Tarnby::Test::readDataFile(QStringLiteral("metar/mesowest-MADE-UP-KSLC.xml")),
    };
    for (const QString &text : cases) {
        EXPECT_FALSE(clsMetar::IsValidMetar(text)) << text.left(80).toStdString();
        expectSafeEverywhere(text);
    }
}

TEST(MetarFuzz, MutatedReportsAndRandomTextPassSafely)
{
    const QStringList corpus =
        Tarnby::Test::metarCorpus(Tarnby::Test::dataFile(QStringLiteral("metar")), true);
    ASSERT_GT(corpus.size(), 250);
    const std::uint32_t seed = std::random_device{}();
    SCOPED_TRACE(::testing::Message() << "seed " << seed);
    Tarnby::Test::Mutator mutator(
        seed, Tarnby::Test::characters(QStringLiteral("0123456789KTSMZAVRBGCLEWFNOPQUXY/ +-.,")));
    for (int i = 0; i < 300000 && !HasFailure(); ++i) {
        const QString &report = corpus.at(i % corpus.size());
        expectSafeEverywhere(i % 8 == 7 ? mutator.randomText(2048) : mutator.mutated(report));
        if (i % 16 == 0) expectSafeEverywhere(QStringLiteral("METAR ") + mutator.mutated(report));
    }
}

} // namespace
