#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "tests/retrieval/fetchtest.h"

#include <QFileInfo>

using namespace Tarnby;
using Tarnby::Test::ChildReply;

namespace
{

using TempFileTest = Test::FetchTest;

TEST_F(TempFileTest, UniqueNamesInTheProfileAndDeletionByPrefix)
{
    QSet<QString> names;
    for (int i = 0; i < 20; ++i)
        names.insert(TempFileName(kTempPrefix));
    EXPECT_EQ(names.size(), 20);
    WriteFileAtomic(*names.begin(), "x");
    for (const char *name : {"TBLsetup.exe", "TBL2.txt", "other.tmp"})
        WriteFileAtomic(TempFolder() + "/" + name, "x");
    DeleteTempFiles(kTempPrefix);
    QStringList left = tempFiles();
    left.sort();
    EXPECT_EQ(left, QStringList({"TBL2.txt", "other.tmp"}));
}

using JobTest = Test::ScriptedFetchTest;

TEST_F(JobTest, EmptyUrlLaunchesNothingButCountsAsStarted)
{
    DownloadJob job;
    int active = 2;
    StartJob(job, active);
    EXPECT_TRUE(job.Started);
    EXPECT_EQ(active, 3);
    EXPECT_TRUE(children.launches.isEmpty());
    EXPECT_TRUE(tempFiles().isEmpty());
    EXPECT_TRUE(WaitForDownload(job.StatusFile, job.ProcessId, 10, job.StartTime));
}

TEST_F(JobTest, TimeLimitsCountFromTheStartTime)
{
    const QString missing = profile.file("none.tmp");
    const qint64 now = Tarnby::clock().monotonicMs();
    EXPECT_FALSE(DownloadFinished(missing, 30, now) || DownloadTimedOut(missing, 30, now));
    const qint64 longAgo = now - FetchLimitMs(30) - 1;
    EXPECT_TRUE(DownloadFinished(missing, 30, longAgo) && DownloadTimedOut(missing, 30, longAgo));
}

TEST_F(JobTest, CacheBusterAndVendorRouteTouchTheUrlButNotTheFiles)
{
    FixedClock fixed(QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9)));
    setClock(&fixed);
    const QString output = profile.file("Out.tmp"), status = profile.file("St.tmp");
    const QString files = "|" + output + "|" + status;
    LaunchDownload("http://h.example/a?x=1" + files, true);
    process().VendorPlainHttp = true;
    LaunchParseDownload("https://service.tarnby.invalid/P?parse=A", output, status);
    ASSERT_EQ(children.launches.size(), 2);
    // the hour of the stamp has no leading zero
    EXPECT_EQ(children.launches[0].arguments,
              QStringList({"http://h.example/a?x=1&2024030570809" + files}));
    EXPECT_EQ(children.launches[1].arguments,
              QStringList({"http://www.tarnby.invalid/p?parse=a&ssl=0", output, status}));
    EXPECT_EQ(QFileInfo(children.launches[1].program).fileName(), "tbdownloader");
}

using DownloadItTest = Test::ScriptedFetchTest;

TEST_F(DownloadItTest, BodyOnlyOnStatusZeroAndNoFileLeft)
{
    QString status;
    children.script = [&](const QString &) { return ChildReply::answer(status, "0 not a status"); };
    // the status is the leading number of the file: no number reads as 0
    for (const char *value : {"\r\n0\r\n", "abc", "0x1F"}) {
        status = value;
        EXPECT_EQ(DownloadIt("http://h.example/x", 30), "0 not a status") << value;
    }
    // an empty status file is no status: the child ended without one
    for (const char *value : {" 3 ", "407 Proxy", ""}) {
        status = value;
        EXPECT_EQ(DownloadIt("http://h.example/x", 30), "") << value;
    }
    EXPECT_TRUE(tempFiles().isEmpty());
}

TEST_F(DownloadItTest, AChildEndingWithoutStatusIsNotWaitedFor)
{
    children.script = [](const QString &) { return ChildReply::silent(); };
    const qint64 start = Tarnby::clock().monotonicMs();
    EXPECT_EQ(DownloadIt("http://h.example/gone", 30), "");
    EXPECT_LT(Tarnby::clock().monotonicMs() - start, FetchLimitMs(30));
    EXPECT_TRUE(children.ended.isEmpty());
}

TEST_F(DownloadItTest, RemoteLogRunsThirtyMinutes)
{
    FixedClock fixed(QDateTime(QDate(2024, 6, 1), QTime(12, 0)));
    setClock(&fixed);
    InstallRemoteLog();
    Log("Before (modRetrieveWeather)");
    EXPECT_TRUE(children.launches.isEmpty());
    process().LogEnabled = true;
    process().LogStartedAt = fixed.now();
    Log("Done (modRetrieveWeather)");
    EXPECT_EQ(children.urls(),
              QStringList({"https://service.tarnby.invalid/tarnby/App/Log/?Version=" TARNBY_VERSION
                           "&Message=Done+%28modRetrieveWeather)"}));
    fixed.advanceSeconds(30 * 60);
    Log("Still on");
    fixed.advanceSeconds(1);
    Log("Too late");
    EXPECT_EQ(children.launches.size(), 2);
    EXPECT_FALSE(process().LogEnabled);
    EXPECT_EQ(GetPref("Misc", "EnableLogging"), "False");
}

} // namespace
