// The fetch layer against the real child programs and the loopback document service.
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/children.h"
#include "tests/retrieval/fetchtest.h"
#include "tools/service/documentservice.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProcess>

#include <unistd.h>

using namespace Tarnby;

namespace
{

bool processExists(qint64 pid)
{
    return QFileInfo::exists(QStringLiteral("/proc/%1").arg(pid));
}

class LoopbackTest : public Test::FetchTest
{
protected:
    LoopbackTest()
    {
        setFetchTimeScale(1.0);
        const int port = service.start(Tarnby::Test::dataFile("retrieval/service").toStdString());
        base = QStringLiteral("http://127.0.0.1:%1").arg(port);
    }
    ~LoopbackTest() override
    {
        EndAllChildren();
        service.stop();
    }
    DocumentService service;
    QString base;
};

TEST_F(LoopbackTest, StatusFileTellsTheClass)
{
    DocumentService closed; // a port nobody listens on
    const QString nobody =
        QStringLiteral("http://127.0.0.1:%1/x")
            .arg(closed.start(Tarnby::Test::dataFile("retrieval/service").toStdString()));
    closed.stop();
    const std::pair<QString, int> rows[] = {
        {base + "/docs/hello.txt", DownloadStatus::Ok},
        {base + "/status/407", DownloadStatus::ProxyAuthenticationRequired},
        {nobody, DownloadStatus::ServerNotFound}};
    for (const auto &[url, status] : rows) {
        SCOPED_TRACE(url.toStdString());
        DownloadJob job;
        job.Url = url;
        int active = 0;
        StartJob(job, active);
        ASSERT_GT(job.ProcessId, 0);
        ASSERT_TRUE(WaitForDownload(job.StatusFile, job.ProcessId, 30, job.StartTime));
        EXPECT_EQ(StatusValue(ReadStatus(job.StatusFile)), status);
        EXPECT_EQ(DownloadIt(url, 30).isEmpty(), status != DownloadStatus::Ok);
    }
}

TEST_F(LoopbackTest, DownloadItBringsTheBodyAndNamesTheProgram)
{
    SavePref("General", "Contact", "tests@tarnby.invalid");
    EXPECT_EQ(DownloadIt(base + "/docs/hello.txt", 30), "Hello from the loopback service\n");
    const auto requests = service.requests();
    ASSERT_FALSE(requests.empty());
    EXPECT_EQ(QString::fromStdString(requests.back().header("User-Agent")),
              "Tarnby/" TARNBY_VERSION " (tests@tarnby.invalid)");
    EXPECT_TRUE(tempFiles().isEmpty());
}

TEST_F(LoopbackTest, AHangingChildIsKilledOnTimeOutAndLeavesNothing)
{
    setFetchTimeScale(0.1);
    const QString output = TempFileName(kTempPrefix), status = TempFileName(kTempPrefix);
    const qint64 pid = LaunchDownload(base + "/hang|" + output + "|" + status);
    ASSERT_GT(pid, 0);
    EXPECT_FALSE(WaitForDownload(status, pid, 1));
    EXPECT_FALSE(ChildRunning(pid));
    EXPECT_FALSE(processExists(pid));
    EXPECT_EQ(DownloadIt(base + "/hang", 1), "");
}

TEST_F(LoopbackTest, ParseLinksResolveThroughTbdownloader)
{
    EXPECT_EQ(ResolveParseUrl(base + "/maps/page.html?parse=radar"),
              base + "/maps/radar-latest.png");
    EXPECT_EQ(ResolveParseUrl(base + "/maps/page.html?parse=nothing-like-it"),
              base + "/maps/page.html?parse=nothing-like-it");
    EXPECT_TRUE(tempFiles().isEmpty());
}

// A pid request ends only our own helpers; the end of the program ends them all.
TEST_F(LoopbackTest, NoHelperOutlivesTheEndAndNoOtherProcessIsEnded)
{
    QList<qint64> pids;
    for (int i = 0; i < 3; ++i)
        pids << LaunchDownload(base + "/hang|" + TempFileName(kTempPrefix) + "|" +
                               TempFileName(kTempPrefix));
    for (qint64 pid : pids)
        ASSERT_TRUE(ChildRunning(pid));
    QProcess other;
    other.start("sleep", {"30"});
    ASSERT_TRUE(other.waitForStarted());
    EXPECT_FALSE(EndHelperProcess(other.processId()));
    EXPECT_FALSE(EndHelperProcess(::getpid()));
    EXPECT_EQ(other.state(), QProcess::Running);
    EXPECT_TRUE(EndHelperProcess(pids[0]));
    EXPECT_FALSE(processExists(pids[0]));
    EndAllChildren();
    for (qint64 pid : pids) {
        EXPECT_FALSE(ChildRunning(pid));
        EXPECT_FALSE(processExists(pid));
    }
    other.kill();
    other.waitForFinished();
}

} // namespace
