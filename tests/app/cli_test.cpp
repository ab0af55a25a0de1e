// tarnby-cli driven as a script would drive it: the real binary, a profile of its own.

#include "tests/support/cli.h"
#include "tests/support/testprofile.h"

using Tarnby::Test::CliResult;

namespace
{

class CliTest : public ::testing::Test
{
protected:
    CliResult cli(const QStringList &args, bool ini = false)
    {
        return Tarnby::Test::runCli(m_dir.path(), ini ? QStringList{"-i"} + args : args);
    }
    QTemporaryDir m_dir;
};

TEST_F(CliTest, SetGetAndDeleteInBothModes)
{
    for (bool ini : {false, true}) {
        EXPECT_EQ(cli({"set", "Conversion", "Offset", "-5"}, ini).code, 0);
        const CliResult got = cli({"get", "Conversion", "Offset"}, ini);
        EXPECT_EQ(got.code, 0);
        EXPECT_EQ(got.out, "-5\n");
    }
    EXPECT_TRUE(QFile::exists(m_dir.filePath("settings.sqlite")));
    const CliResult missing = cli({"get", "Misc", "Nothing"});
    EXPECT_EQ(missing.code, 0);
    EXPECT_EQ(missing.out, "\n");
    cli({"set", "Cache\\KDSM\\Current", "temp", "71"});
    EXPECT_EQ(cli({"delete", "Cache"}).code, 0); // with its sub-sections
    EXPECT_EQ(cli({"get", "Cache\\KDSM\\Current", "temp"}).out, "\n");
}

TEST_F(CliTest, BadUsageExitsWithTwoAndSaysWhy)
{
    for (const QStringList &args :
         {QStringList{}, QStringList{"frobnicate"}, QStringList{"get", "OnlySection"},
          QStringList{"--bogus", "get", "A", "B"}, QStringList{"set", "A", "B"},
          QStringList{"parse", "daily-forecast", "x.json"}, QStringList{"parse", "nws-alerts"}}) {
        const CliResult result = cli(args);
        EXPECT_EQ(result.code, 2) << args.join(' ').toStdString();
        EXPECT_FALSE(result.err.isEmpty());
        EXPECT_TRUE(result.out.isEmpty());
    }
}

TEST_F(CliTest, MetarPrintsOneReadingALineAndRefusesWhatIsNoUsReport)
{
    const CliResult got =
        cli({"metar", "KMSN 131553Z 36010G18KT 10SM OVC029 M03/M08 A3030 RMK AO2 SLP273"});
    EXPECT_EQ(got.code, 0) << got.err.toStdString();
    const QStringList lines = got.out.split('\n', Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(), 20);
    for (const char *line :
         {"StationId=KMSN", "Condition=Overcast", "TemperatureF=26.6", "WindGustSpeedMph=21",
          "Pressure=30.30", "IsAuto=False", "Visibility=10"})
        EXPECT_TRUE(lines.contains(line)) << line;
    for (const char *text :
         {"AGGH 201100Z 00000KT 9999 -DZ FEW005 24/24 Q1012", "<html>Not Found</html>"}) {
        const CliResult refused = cli({"metar", text});
        EXPECT_EQ(refused.code, 1) << text;
        EXPECT_TRUE(refused.out.isEmpty());
        EXPECT_FALSE(refused.err.isEmpty());
    }
    EXPECT_EQ(cli({"metar"}).code, 2);
}

QString alertDocument(const char *name)
{
    return Tarnby::Test::dataFile(QStringLiteral("alerts/") + QLatin1String(name));
}

TEST_F(CliTest, ParseWritesTheBranchAndAnUnreadableDocumentKeepsIt)
{
    const QString expected = Tarnby::Test::readDataFile("alerts/nws-floodwatch.expected");
    const CliResult parsed = cli({"parse", "nws-alerts", alertDocument("nws-floodwatch.json")});
    EXPECT_EQ(parsed.code, 0);
    EXPECT_EQ(parsed.out, expected);
    EXPECT_EQ(cli({"get", "Cache\\na\\Alerts", "title1"}).out, "Flood Watch\n");
    const CliResult unreadable = cli({"parse", "nws-alerts", alertDocument("pulse-empty.json")});
    EXPECT_EQ(unreadable.code, 1);
    EXPECT_EQ(unreadable.out, expected);
    EXPECT_FALSE(unreadable.err.isEmpty());
    EXPECT_EQ(cli({"parse", "pulse-alerts", m_dir.filePath("missing.json")}).code, 1);
    EXPECT_TRUE(cli({"parse", "nws-alerts"}).err.contains("nws-alerts, pulse-alerts"));
}

TEST_F(CliTest, ParseReadsTheForecastDocuments)
{
    const auto forecast = [this](const char *kind, const char *name) {
        return cli({"parse", kind,
                    Tarnby::Test::dataFile(QStringLiteral("forecast/") + QLatin1String(name))});
    };
    const CliResult hourly = forecast("hourly", "hourly-40.json");
    EXPECT_EQ(hourly.code, 0);
    EXPECT_TRUE(hourly.out.startsWith("count=40\n")) << hourly.out.toStdString();
    // The forecast text amends the daily branch.
    EXPECT_TRUE(forecast("daily", "daily-week.json").out.startsWith("count=7\n"));
    const CliResult amended = forecast("nws-text", "nws-text.xml");
    EXPECT_TRUE(amended.out.contains("New rainfall amounts of less than a tenth"))
        << amended.out.toStdString();
    const CliResult unreadable = forecast("daily", "html-error.html");
    EXPECT_EQ(unreadable.code, 1);
    EXPECT_EQ(unreadable.out, amended.out); // the branch as it was
}

TEST_F(CliTest, RewriteAndConvertFollowTheStoredUnits)
{
    cli({"set", "Conversion", "Temp", "C"});
    cli({"set", "Conversion", "Wind", "bft"});
    const CliResult rewritten = cli({"rewrite", "HIGHS IN THE LOW 50S. WINDS 5 TO 10 MPH."});
    EXPECT_EQ(rewritten.code, 0);
    EXPECT_EQ(rewritten.out, QString::fromUtf8("HIGHS near 12°C. WINDS 2 TO 3 bft.\n"));
    EXPECT_EQ(cli({"convert", "temp", "72"}).out, "22\n");
    EXPECT_EQ(cli({"convert", "wind", "10"}).out, "3\n");
    EXPECT_EQ(cli({"convert", "mph-from-knots", "N/A"}).out, "N/A\n");
    EXPECT_EQ(cli({"convert", "kelvin", "72"}).code, 2);
    EXPECT_TRUE(cli({"help"}).out.contains("inches-from-pa"));
}

} // namespace
