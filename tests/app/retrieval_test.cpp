// One retrieval from end to end: tarnby-cli run for a WeatherBug station against the
// loopback service, through the real downloader, into the Weather cache.

#include "tests/support/testprofile.h"
#include "tools/service/documentservice.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>

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
        m_port = m_service.start(QFile::encodeName(m_documents.path()).toStdString());
        ASSERT_GT(m_port, 0);
        for (const QStringList &setting :
             {QStringList{"Hosts", "Override", QString("http://127.0.0.1:%1").arg(m_port)},
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

    struct Result {
        int code = -1;
        QString out;
    };
    Result cli(const QStringList &args)
    {
        QProcess process;
        process.start(QCoreApplication::applicationDirPath() + "/tarnby-cli",
                      QStringList{"--profile", m_profile.path()} + args);
        process.waitForFinished(120000);
        return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput())};
    }

    QTemporaryDir m_documents;
    QTemporaryDir m_profile;
    Tarnby::DocumentService m_service;
    int m_port = 0;
};

TEST_F(RetrievalTest, ARunBringsTheStationsConditionsAndForecastsIntoTheCache)
{
    const Result run = cli({"run"});
    EXPECT_EQ(run.code, 0) << run.out.toStdString();
    EXPECT_TRUE(run.out.endsWith("ok\n")) << run.out.toStdString();

    const QString current = cli({"cache", "Current"}).out;
    EXPECT_TRUE(current.contains("\ntemp=71.6\n")) << current.toStdString();
    EXPECT_TRUE(current.contains("\nhumidity=41\n")) << current.toStdString();
    EXPECT_TRUE(current.contains("\ngust-direction=SW\n")) << current.toStdString();
    EXPECT_TRUE(cli({"cache", "Hourly"}).out.startsWith("count=40\n"));
    EXPECT_TRUE(cli({"cache", "Daily"}).out.startsWith("count=7\n"));
    const QString stamps = cli({"cache", "LastUpdated"}).out;
    EXPECT_TRUE(stamps.contains("Weather=")) << stamps.toStdString();
}

} // namespace
