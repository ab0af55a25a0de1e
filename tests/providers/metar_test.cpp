// The METAR decoder against the expectations of tests/data/metar/*.expected (real
// reports, then one rule a case), and the checks that do not fit that form.

#include "core/clock.h"
#include "core/processvalues.h"
#include "providers/metar.h"
#include "tests/providers/metarcorpus.h"
#include "tests/support/testprofile.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace Tarnby;

const QDateTime kDefaultNow(QDate(2023, 1, 21), QTime(0, 0), Qt::UTC);

// One block of an expectations file.
struct Expectation {
    QString source; // "file: ...", "report: ...", "xmlfile: ..." or "xml: ..."
    QDateTime now = kDefaultNow;
    QString unit = QStringLiteral("F");
    QList<std::pair<QString, QString>> readings;
};

QString unquoted(const QString &value)
{
    const bool quoted = value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

QList<Expectation> readExpectations(const QString &name)
{
    QList<Expectation> blocks;
    bool inBlock = false;
    for (const QString &line :
         Tarnby::Test::readDataFile(QStringLiteral("metar/") + name).split(u'\n')) {
        if (line.startsWith(u'#')) continue;
        if (line.isEmpty()) {
            inBlock = false;
        } else if (!inBlock) {
            blocks.append(Expectation{line, kDefaultNow, QStringLiteral("F"), {}});
            inBlock = true;
        } else if (line.startsWith(QLatin1String("now: "))) {
            blocks.last().now = QDateTime::fromString(line.mid(5), Qt::ISODate);
        } else if (line.startsWith(QLatin1String("unit: "))) {
            blocks.last().unit = line.mid(6);
        } else {
            const qsizetype equals = line.indexOf(u'=');
            blocks.last().readings.append({line.left(equals), unquoted(line.mid(equals + 1))});
        }
    }
    return blocks;
}

// "station=PANC utime=1 T=28" made into a MesoWest document.
QString xmlDocument(const QString &variables)
{
    QString station = QStringLiteral("KSLC"), utime = QStringLiteral("1673628780"), body;
    for (const QString &pair : variables.split(u' ', Qt::SkipEmptyParts)) {
        const QString var = pair.section(u'=', 0, 0), value = pair.section(u'=', 1);
        if (var == QLatin1String("station"))
            station = value;
        else if (var == QLatin1String("utime"))
            utime = value;
        else
            body += QStringLiteral("<variable var='%1' unit='u' value='%2'/>\n").arg(var, value);
    }
    return QStringLiteral("<station id=\"%1\">\n<ob time=\"t\" utime=\"%2\">\n%3</ob>\n</station>")
        .arg(station, utime, body);
}

// The report of a data file whose line begins with the given start; the raw message of
// a JSON observation.
QString realReport(const QString &reference)
{
    const QString file = reference.section(u' ', 0, 0), start = reference.section(u' ', 1);
    const QString text = Tarnby::Test::readDataFile(QStringLiteral("metar/") + file);
    if (file.endsWith(QLatin1String(".json"))) return Tarnby::Test::rawMessage(text);
    for (const QString &line : text.split(u'\n'))
        if (line.startsWith(start)) return line.trimmed();
    return {};
}

clsMetar decode(const QString &source)
{
    clsMetar metar;
    const QString kind = source.section(u' ', 0, 0), text = source.section(u' ', 1);
    if (kind == u"file:")
        metar.ParseMetarData(realReport(text));
    else if (kind == u"report:")
        metar.ParseMetarData(text);
    else if (kind == u"xmlfile:")
        metar.ParseXmlData(Tarnby::Test::readDataFile(QStringLiteral("metar/") + text));
    else if (kind == u"xml:")
        metar.ParseXmlData(xmlDocument(text));
    else
        ADD_FAILURE() << "unknown source " << source.toStdString();
    return metar;
}

// Decoding reads the clock (DateTimeUtc) and the user's units and decimal mark.
class MetarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        process() = ProcessValues{};
        setClock(&m_clock);
    }
    void TearDown() override
    {
        setClock(nullptr);
        process() = ProcessValues{};
    }
    void expectFile(const char *name)
    {
        const QList<Expectation> blocks = readExpectations(QLatin1String(name));
        ASSERT_FALSE(blocks.isEmpty());
        for (const Expectation &block : blocks) {
            SCOPED_TRACE(block.source.toStdString());
            m_clock.set(block.now);
            process().UnitTemp = block.unit;
            const QList<std::pair<QString, QString>> got = MetarReadings(decode(block.source));
            for (const auto &[name, value] : block.readings) {
                const auto found = std::find_if(got.begin(), got.end(),
                                                [&](const auto &r) { return r.first == name; });
                ASSERT_NE(found, got.end()) << name.toStdString();
                EXPECT_EQ(found->second, value) << name.toStdString();
            }
        }
    }

    FixedClock m_clock{kDefaultNow};
};

TEST_F(MetarTest, RealReportsReadAsExpected)
{
    expectFile("reports.expected");
}

TEST_F(MetarTest, EachRuleReadsAsExpected)
{
    expectFile("rules.expected");
}

TEST_F(MetarTest, HumidityInSinglePrecision)
{
    clsMetar metar;
    metar.ParseMetarData(QStringLiteral("M03/M08"));
    const QString humidity = metar.Humidity();
    EXPECT_LE(
        std::count_if(humidity.begin(), humidity.end(), [](QChar ch) { return ch.isDigit(); }), 7);
    EXPECT_NEAR(humidity.toDouble(), 68.337139, 2e-4); // worked out in double precision
}

TEST_F(MetarTest, NumbersFollowTheUsersDecimalMark)
{
    process().DecimalSymbol = QStringLiteral(",");
    process().GroupSymbol = QStringLiteral(".");
    clsMetar metar;
    metar.ParseMetarData(QStringLiteral("27012KT 17/11"));
    EXPECT_EQ(metar.Humidity(), QStringLiteral("67,78538"));
    EXPECT_EQ(metar.TemperatureF(), QStringLiteral("62,6"));
    EXPECT_EQ(metar.FeelsLikeF(), QStringLiteral("63"));
}

TEST(MetarValidity, OnlyUsReportsOfTheStationServicesPass)
{
    const struct {
        const char *text;
        bool valid;
    } cases[] = {{"METAR KLAX 201553Z VRB04KT 10SM SCT021 BKN140 17/11 A2999", true},
                 {"metar KLAX 201553Z 10SM 17/11 A2999", false},
                 {"METAR AGGH 201100Z 00000KT 9999 -DZ FEW005 24/24 Q1012", false},
                 {"METAR KLAX 201553Z 10SM 17/11 <b>A2999</b>", false},
                 {"METAR KLAX 201553Z 10SM 1711 A2999", false},
                 {"METAR ", false}};
    for (const auto &c : cases)
        EXPECT_EQ(clsMetar::IsValidMetar(QString::fromLatin1(c.text)), c.valid) << c.text;
}

// The station services deliver the report; the program puts "METAR " in front.
TEST(MetarValidity, EveryRealUsReportPasses)
{
    int usReports = 0;
    for (const QString &report :
         Tarnby::Test::metarCorpus(Tarnby::Test::dataFile(QStringLiteral("metar")), false)) {
        if (!report.startsWith(u'K')) continue;
        ++usReports;
        EXPECT_TRUE(clsMetar::IsValidMetar(QStringLiteral("METAR ") + report))
            << report.toStdString();
    }
    EXPECT_EQ(usReports, 9);
}

} // namespace
