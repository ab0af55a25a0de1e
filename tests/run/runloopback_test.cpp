// The retrieval run against the real downloader and the loopback document service, in
// process and through tarnby-cli.

#include "core/files.h"
#include "core/processvalues.h"
#include "retrieval/fetch.h"
#include "core/weathercache.h"
#include "run/retrievalrun.h"
#include "run/runmessages.h"
#include "tests/run/runtest.h"
#include "tools/service/documentservice.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>

#include <unistd.h>

using namespace Tarnby;

namespace
{

// Processes whose parent is this test program.
QStringList childProcesses()
{
    QStringList children;
    const QString me = QString::number(::getpid());
    for (const QString &pid : QDir("/proc").entryList(QDir::Dirs)) {
        // "<pid> (<name>) <state> <ppid> ..."; the name may hold blanks, so cut behind ")".
        const QString stat = ReadFile("/proc/" + pid + "/stat");
        const QStringList fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        if (fields.value(1) == me) children.append(pid);
    }
    return children;
}

class RunLoopbackTest : public Tarnby::Test::RunTest
{
protected:
    RunLoopbackTest()
    {
        setFetchTimeScale(1.0);
        const int port = service.start(Tarnby::Test::dataFile("run/service").toStdString());
        base = QStringLiteral("http://127.0.0.1:%1").arg(port);
        SavePref("Hosts", "Override", base);
    }
    ~RunLoopbackTest() override
    {
        EndAllChildren();
        service.stop();
    }
    QStringList requestTargets() const
    {
        QStringList targets;
        for (const RecordedRequest &request : service.requests())
            targets.append(QString::fromStdString(request.target));
        return targets;
    }

    DocumentService service;
    QString base;
};

TEST_F(RunLoopbackTest, ARunHandsTheRecordedDocumentsToTheirKinds)
{
    selectStation({"KAMW", "WeatherBug", "50010"});
    traceProcessing();

    EXPECT_TRUE(DownloadTheWeather(false, false, false));

    const QString service = "run/service/";
    for (const auto &[kind, document] :
         {std::pair{"NDFD:", "pulse/getHourly6DayForecast/data/forecasts/v1/hourly/@"},
          std::pair{"Detailed:", "pulse/data/forecasts/v1/daily/@"},
          std::pair{"Alerts:", "nws-api/alerts/@"},
          std::pair{"UV:", "pulse/getUltraviolet/data/uv/v1/@"}})
        EXPECT_TRUE(trace.contains(kind + Tarnby::Test::readDataFile(service + document))) << kind;
    EXPECT_TRUE(requestTargets().contains(
        "/pulse/data/forecasts/v1/daily?location=41.533,-93.648&locationtype=latitudelongitude"
        "&units=english&cultureinfo=en-en&verbose=true&subscription-key=TOKEN"));
    EXPECT_TRUE(requestTargets().contains("/nws-api/alerts?active=1&point=41.53389,-93.64889"));
    EXPECT_EQ(outcomes, (QList<QPair<bool, QString>>{{true, QString()}}));
    EXPECT_TRUE(QDir(TempFolder()).entryList(QDir::Files).isEmpty());
}

TEST_F(RunLoopbackTest, AHangingDownloadIsEndedWhenItsTimeIsUp)
{
    setFetchTimeScale(0.05); // 1.5 seconds a job
    process().PulseUrl = base + "/pulse-hang";
    selectStation({"KAMW", "WeatherBug", "50010"});
    runState().failed(Failure::Uv) = true;

    DownloadTheWeather(true, false, false);

    EXPECT_TRUE(logged("UV timed out (modRetrieveWeather)"));
    EXPECT_FALSE(runState().failed(Failure::Uv)); // an empty status reads as success
    EXPECT_EQ(outcomes.size(), 1);
    EXPECT_TRUE(childProcesses().isEmpty());
}

TEST_F(RunLoopbackTest, A401OnAlertsIsAFailureThatKeepsTheToken)
{
    selectStation({"KAMW", "WeatherBug", "50010", "20.0", "20.0"});
    DownloadTheWeather(true, false, false);
    EXPECT_TRUE(runState().failed(Failure::Alerts));
    EXPECT_EQ(GetPref("Misc", "Token"), "TOKEN");
    EXPECT_EQ(outcomes.size(), 1);
}

struct CliResult {
    int code = -1;
    QString out, err;
};

class RunCliTest : public RunLoopbackTest
{
protected:
    CliResult cli(const QStringList &args)
    {
        QProcess cli;
        cli.start(QCoreApplication::applicationDirPath() + "/tarnby-cli",
                  QStringList{"--profile", m_dir.path()} + args);
        cli.waitForFinished(120000);
        return {cli.exitCode(), QString::fromUtf8(cli.readAllStandardOutput()),
                QString::fromUtf8(cli.readAllStandardError())};
    }
    void station(const QString &hosts, const QString &code, const QString &type)
    {
        cli({"set", "Hosts", "Override", hosts});
        for (const auto &[key, value] :
             {std::pair{"Code", code}, std::pair{"City", QString("Test")},
              std::pair{"ZipCode", QString("50309")}, std::pair{"Latitude", QString("41.53389")},
              std::pair{"Longitude", QString("-93.64889")}, std::pair{"StationType", type}})
            cli({"set", "CityCode", key, value});
    }
    QTemporaryDir m_dir;
};

TEST_F(RunCliTest, RunRetrievesAndCacheShowsWhatCame)
{
    station(base, "KDSM", "NWS");

    const CliResult run = cli({"run"});
    EXPECT_EQ(run.code, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains("downloads 10/10\n"));
    EXPECT_TRUE(run.out.contains("progress 50%\n"));
    EXPECT_TRUE(run.out.endsWith("ok\n")) << run.out.toStdString();

    const CliResult stamps = cli({"cache", "LastUpdated"});
    EXPECT_EQ(stamps.code, 0);
    const QStringList lines = stamps.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_GE(lines.size(), 2);
    EXPECT_TRUE(lines.first().startsWith("Alerts=20"));
    EXPECT_TRUE(lines.last().startsWith("Weather=20"));

    const CliResult all = cli({"cache"});
    EXPECT_TRUE(all.out.contains("[Current]\ndownloaded=20")) << all.out.toStdString();
    EXPECT_TRUE(all.out.contains("\n[LastUpdated]\nAlerts="));
}

TEST_F(RunCliTest, AFailedRunSaysWhyAndExitsWithOne)
{
    DocumentService closed;
    const int port = closed.start(Tarnby::Test::dataFile("run/service").toStdString());
    closed.stop();
    station(QStringLiteral("http://127.0.0.1:%1").arg(port), "KDSM", "NWS");

    const CliResult run = cli({"run"});
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.out.endsWith(RunError::ServerNotFound + "\n")) << run.out.toStdString();
    EXPECT_TRUE(run.err.contains(RunErrorMessage(RunError::ServerNotFound)));

    cli({"set", "CityCode", "Code", ""});
    const CliResult noStation = cli({"run", "--alerts-only"});
    EXPECT_EQ(noStation.code, 1);
    EXPECT_TRUE(noStation.out.endsWith(RunError::NoStation + "\n"));
    EXPECT_EQ(cli({"run", "--everything"}).code, 2);
}

} // namespace
