// Text that is no report: named bad documents, then a randomized run over mutated real
// reports and random bytes. The decoder must neither crash nor throw, and whatever it
// reads must keep the shape of its field.

#include "providers/metar.h"
#include "providers/textcutters.h"
#include "tests/providers/metarcorpus.h"
#include "tests/support/testprofile.h"

#include <QSet>

#include <gtest/gtest.h>

#include <random>

namespace
{

using namespace Tarnby;

bool isWholeNumber(const QString &text)
{
    bool ok = false;
    text.toLongLong(&ok);
    return ok;
}

bool isNumber(const QString &text)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && std::isfinite(value);
}

// Every word a decoded condition can hold; "" stands between doubled blanks.
const QSet<QString> &conditionWords()
{
    static const QStringList words =
        QStringLiteral("Light Heavy & Shallow Partial Patchy Low Drifting Blowing Freezing Showers "
                       "Thunderstorm Rain Snow Ice Crystals Hail Unknown Precipitation Fog Mist "
                       "Widespread Dust Sand Squall Duststorm Funnel Cloud Drizzle Grains Pellets "
                       "Small Volcanic Ash Haze Smoke Spray Sandstorm ")
            .split(u' ');
    static const QSet<QString> set(words.begin(), words.end());
    return set;
}

const QSet<QString> kCloudWords{
    "", "Clear", "Mostly Clear", "Partly Cloudy", "Mostly Cloudy", "Overcast", "Indefinite"};

// The shape every reading keeps after a report decode, whatever the input was.
void expectReportShape(const clsMetar &metar, const QString &input)
{
    const auto where = [&] { return input.left(200).toStdString(); };
    EXPECT_TRUE(kCloudWords.contains(metar.Clouds())) << where();
    EXPECT_TRUE(metar.CloudsHeight().isEmpty() || isWholeNumber(metar.CloudsHeight())) << where();
    if (metar.Condition() != metar.Clouds()) {
        for (const QString &item : metar.Condition().split(QStringLiteral(", ")))
            for (const QString &word : item.split(u' '))
                EXPECT_TRUE(conditionWords().contains(word))
                    << where() << " word " << word.toStdString();
    }
    EXPECT_TRUE(metar.Time().isEmpty() || (metar.Time().size() == 5 && metar.Time()[2] == u':'))
        << where();
    EXPECT_TRUE(metar.Pressure().isEmpty() ||
                (metar.Pressure().size() == 5 && metar.Pressure()[2] == u'.'))
        << where();
    EXPECT_TRUE(metar.StationId().isEmpty() ||
                (metar.StationId().size() == 4 && metar.StationId().startsWith(u'K')))
        << where();
    for (const QString &mph : {metar.WindSpeedMph(), metar.WindGustSpeedMph()})
        EXPECT_TRUE(mph.isEmpty() || isWholeNumber(mph)) << where();
    EXPECT_TRUE(metar.WindSpeedKts().size() <= 2 || isWholeNumber(metar.WindSpeedKts())) << where();
    EXPECT_TRUE(metar.Humidity().isEmpty() || isNumber(metar.Humidity())) << where();
    EXPECT_TRUE(metar.FeelsLikeF().isEmpty() || isWholeNumber(metar.FeelsLikeF()) ||
                isNumber(metar.FeelsLikeF()))
        << where();
    const QString date = metar.DateTimeUtc();
    EXPECT_TRUE(date.isEmpty() || (date[4] == u'-' && date[7] == u'-' && date.contains(u'T')))
        << where();
    // A Celsius number always has a Fahrenheit number beside it ("N/A" on overflow).
    for (const auto &[celsius, fahrenheit] : {std::pair{metar.TemperatureC(), metar.TemperatureF()},
                                              std::pair{metar.DewPointC(), metar.DewPointF()}})
        EXPECT_TRUE(!NumberInText(celsius) || NumberInText(fahrenheit) || fahrenheit == u"N/A")
            << where();
}

void expectSafeEverywhere(const QString &input)
{
    clsMetar metar;
    EXPECT_EQ(metar.ParseMetarData(input), !input.isEmpty());
    expectReportShape(metar, input);
    if (clsMetar::IsValidMetar(input)) {
        EXPECT_TRUE(input.startsWith(QLatin1String("METAR ")));
        EXPECT_FALSE(input.contains(u'<') || input.contains(u'>'));
    }
    clsMetar xml;
    EXPECT_EQ(xml.ParseXmlData(input), !input.isEmpty());
    for (const auto &reading : MetarReadings(xml))
        EXPECT_FALSE(reading.second.contains(QLatin1String("nan"))) << reading.first.toStdString();
}

// ---- Named bad documents ----------------------------------------------------------

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
    const QString nwsDocument =
        Tarnby::Test::readDataFile(QStringLiteral("metar/nws-obs-latest-KPWM-2019.json"));
    const QString xml =
        Tarnby::Test::readDataFile(QStringLiteral("metar/mesowest-MADE-UP-KSLC.xml"));
    const QString cases[] = {
        QStringLiteral("KLAX 201553Z VRB0"),
        QStringLiteral("METAR KLAX 201553Z VRB04KT 10SM SCT021 BKN140 17/1"),
        QStringLiteral("<html><head><title>503 Service Unavailable</title></head><body><h1>Service "
                       "Unavailable</h1><p>Try again at 12/20 A few minutes</p></body></html>"),
        QStringLiteral("METAR EGLL 201150Z 24010KT 9999 FEW040 15/09 Q1015 NOSIG"),
        QStringLiteral("     "),
        QStringLiteral("\r\n"),
        QString(2048, u'/'),
        QString(2048, u'R') + QStringLiteral("A"),
        nwsDocument,
        xml,
    };
    for (const QString &text : cases) {
        EXPECT_FALSE(clsMetar::IsValidMetar(text)) << text.left(80).toStdString();
        expectSafeEverywhere(text);
    }
}

// ---- Randomized run ---------------------------------------------------------------

class Mutator
{
public:
    explicit Mutator(std::uint32_t seed) : m_random(seed) {}

    QString mutated(QString text)
    {
        const int edits = pick(1, 4);
        for (int i = 0; i < edits; ++i)
            edit(text);
        return text;
    }

    QString randomText()
    {
        QString text(pick(0, 2048), Qt::Uninitialized);
        for (QChar &c : text)
            c = QChar(char16_t(pick(0, 3) == 0 ? pick(0, 0xFFFF) : pick(0, 127)));
        return text;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_random); }

    QChar reportChar()
    {
        static const QString alphabet = QStringLiteral("0123456789KTSMZAVRBGCLEWFNOPQUXY/ +-.,");
        return alphabet.at(pick(0, int(alphabet.size()) - 1));
    }

    void edit(QString &text)
    {
        const int at = pick(0, int(text.size()));
        switch (pick(0, 5)) {
        case 0:
            if (at < text.size()) text[at] = reportChar();
            break;
        case 1:
            text.insert(at, reportChar());
            break;
        case 2:
            text.remove(at, pick(1, 6));
            break;
        case 3:
            text.truncate(at);
            break;
        case 4:
            text.insert(at, text.mid(pick(0, int(text.size())), pick(1, 12)));
            break;
        default:
            text.insert(at, QChar(char16_t(pick(0, 0xFFFF))));
            break;
        }
    }

    std::mt19937 m_random;
};

TEST(MetarFuzz, MutatedReportsAndRandomBytesKeepEveryReadingInShape)
{
    const QStringList corpus =
        Tarnby::Test::metarCorpus(Tarnby::Test::dataFile(QStringLiteral("metar")), true);
    ASSERT_GT(corpus.size(), 250);
    const std::uint32_t seed = std::random_device{}();
    SCOPED_TRACE(::testing::Message() << "seed " << seed);
    Mutator mutator(seed);
    const int rounds = 300000;
    for (int i = 0; i < rounds && !HasFailure(); ++i) {
        const QString &report = corpus.at(i % corpus.size());
        expectSafeEverywhere(i % 8 == 7 ? mutator.randomText() : mutator.mutated(report));
        if (i % 16 == 0) expectSafeEverywhere(QStringLiteral("METAR ") + mutator.mutated(report));
    }
}

} // namespace
