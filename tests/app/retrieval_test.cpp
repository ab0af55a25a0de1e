// One retrieval from end to end: tarnby-cli run for a WeatherBug station against the
// loopback service, through the real downloader, into the Weather cache.

#include "run/runmessages.h"
#include "tests/support/cli.h"
#include "tests/support/testprofile.h"
#include "tools/service/documentservice.h"

#include <QDir>
#include <QFile>

using Tarnby::Test::CliResult;

namespace
{

class RetrievalTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        serve("pulse/data/observations/v4/current", "weatherbug/v4-full.json");
        serve("pulse/getHourly6DayForecast/data/forecasts/v1/hourly", "forecast/hourly-40.json");
        serve("pulse/data/forecasts/v1/daily", "forecast/daily-week.json");
        const int port = m_service.start(QFile::encodeName(m_documents.path()).toStdString());
        ASSERT_GT(port, 0);
        for (const QStringList &setting :
             {QStringList{"Hosts", "Override", QString("http://127.0.0.1:%1").arg(port)},
              QStringList{"CityCode", "Code", "DSMBG"},
              QStringList{"CityCode", "StationType", "WeatherBug"},
              QStringList{"CityCode", "City", "Des Moines, IA"},
              QStringList{"CityCode", "ZipCode", "50321"},
              QStringList{"CityCode", "Latitude", "41.5341"},
              QStringList{"CityCode", "Longitude", "-93.6532"}})
            ASSERT_EQ(cli(QStringList{"set"} + setting).code, 0);
    }
    void TearDown() override { m_service.stop(); }

    // The document the service answers for any query of the path.
    void serve(const QString &path, const QString &document)
    {
        ASSERT_TRUE(QDir().mkpath(m_documents.filePath(path)));
        ASSERT_TRUE(
            QFile::copy(Tarnby::Test::dataFile(document), m_documents.filePath(path + "/@")));
    }
    CliResult cli(const QStringList &args) { return Tarnby::Test::runCli(m_profile.path(), args); }

    QTemporaryDir m_documents;
    QTemporaryDir m_profile;
    Tarnby::DocumentService m_service;
};

TEST_F(RetrievalTest, ARunBringsTheStationsConditionsAndForecastsIntoTheCache)
{
    const CliResult run = cli({"run"});
    EXPECT_EQ(run.code, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("downloads 10/10\n"));
    EXPECT_TRUE(run.out.contains("progress 50%\n"));
    EXPECT_TRUE(run.out.endsWith("ok\n")) << run.out.toStdString();

    const QString current = cli({"cache", "Current"}).out;
    EXPECT_TRUE(current.contains("\ntemp=71.6\n")) << current.toStdString();
    EXPECT_TRUE(current.contains("\nhumidity=41\n")) << current.toStdString();
    EXPECT_TRUE(current.contains("\ngust-direction=SW\n")) << current.toStdString();
    EXPECT_TRUE(cli({"cache", "Hourly"}).out.startsWith("count=40\n"));
    EXPECT_TRUE(cli({"cache", "Daily"}).out.startsWith("count=7\n"));
    const QString all = cli({"cache"}).out;
    EXPECT_TRUE(all.contains("\n[LastUpdated]\n")) << all.toStdString();
    EXPECT_TRUE(cli({"cache", "LastUpdated"}).out.contains("Weather=20"));
}

TEST_F(RetrievalTest, AFailedRunSaysWhyAndExitsWithOne)
{
    m_service.stop();
    const CliResult run = cli({"run"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.out.endsWith(Tarnby::RunError::ServerNotFound + "\n")) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains(Tarnby::RunErrorMessage(Tarnby::RunError::ServerNotFound)));

    cli({"set", "CityCode", "Code", ""});
    const CliResult noStation = cli({"run", "--alerts-only"});
    EXPECT_EQ(noStation.code, 1);
    EXPECT_TRUE(noStation.out.endsWith(Tarnby::RunError::NoStation + "\n"));
    EXPECT_EQ(cli({"run", "--everything"}).code, 2);
}

} // namespace
