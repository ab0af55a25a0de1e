// The retrieval run in process against the real downloader and the loopback document
// service (tests/app runs it through tarnby-cli).

#include "core/files.h"
#include "core/processvalues.h"
#include "retrieval/fetch.h"
#include "run/retrievalrun.h"
#include "tests/run/runtest.h"
#include "tools/service/documentservice.h"

#include <QDir>

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

    DocumentService service;
    QString base;
};

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

} // namespace
