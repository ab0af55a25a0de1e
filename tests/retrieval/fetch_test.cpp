#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/urls.h"
#include "tests/retrieval/fetchtest.h"

#include <QCoreApplication>
#include <QFileInfo>

using namespace Tarnby;
using Tarnby::Test::ChildReply;

namespace
{

class TempFileTest : public Test::FetchTest
{
};

TEST_F(TempFileTest, NamesAreUniqueAndMadeInTheProfilesTempFolder)
{
    QSet<QString> names;
    for (int i = 0; i < 50; ++i) {
        const QString name = TempFileName(kTempPrefix);
        ASSERT_TRUE(QFileInfo::exists(name));
        EXPECT_EQ(QFileInfo(name).absolutePath(), profile.file("Temp"));
        EXPECT_TRUE(QFileInfo(name).fileName().startsWith("TBL"));
        EXPECT_TRUE(name.endsWith(".tmp"));
        names.insert(name);
    }
    EXPECT_EQ(names.size(), 50);
}

TEST_F(TempFileTest, DeleteTempFilesTakesOnlyThePrefixedTmpAndExe)
{
    for (const char *name : {"TBL1.tmp", "TBLsetup.exe", "TBL2.txt", "other.tmp"})
        WriteFileAtomic(TempFolder() + "/" + name, "x");
    TempFileName(kTempPrefix);
    DeleteTempFiles(kTempPrefix);
    QStringList left = tempFiles();
    left.sort();
    EXPECT_EQ(left, QStringList({"TBL2.txt", "other.tmp"}));
}

TEST_F(TempFileTest, WithoutAProfileTheSystemTempFolderServes)
{
    process().ProfilePath.clear();
    EXPECT_EQ(TempFolder(), QDir::tempPath() + "/Tarnby");
    const QString name = TempFileName(kTempPrefix);
    EXPECT_TRUE(QFileInfo::exists(name));
    DeleteFile(name);
}

class JobTest : public Test::ScriptedFetchTest
{
};

TEST_F(JobTest, EmptyUrlLaunchesNothingButCountsAsStarted)
{
    DownloadJob job;
    int active = 2;
    StartJob(job, active);
    EXPECT_TRUE(job.Started);
    EXPECT_EQ(active, 3);
    EXPECT_EQ(job.ProcessId, 0);
    EXPECT_TRUE(children.launches.isEmpty());
    EXPECT_TRUE(tempFiles().isEmpty());
    EXPECT_TRUE(WaitForDownload(job.StatusFile, job.ProcessId, 10, job.StartTime));
}

TEST_F(JobTest, StartJobHandsDlItsUrlAndTwoFreshFiles)
{
    DownloadJob job;
    job.Url = "http://h.example/a?b=1";
    int active = 0;
    StartJob(job, active);
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(QFileInfo(children.launches[0].program).fileName(), "dl");
    EXPECT_EQ(children.launches[0].arguments,
              QStringList({job.Url + "|" + job.OutputFile + "|" + job.StatusFile}));
    EXPECT_NE(job.OutputFile, job.StatusFile);
    EXPECT_GT(job.ProcessId, 0);
    EXPECT_EQ(active, 1);
    EXPECT_TRUE(DownloadFinished(job.StatusFile, 30, job.StartTime));
    EXPECT_TRUE(WaitForDownload(job.StatusFile, job.ProcessId, 10, job.StartTime));
    EXPECT_EQ(ReadStatus(job.StatusFile), "0");
}

TEST_F(JobTest, DownloadFinishedAndTimedOutFollowTheLimit)
{
    const QString missing = profile.file("none.tmp");
    const qint64 now = Tarnby::clock().monotonicMs();
    EXPECT_FALSE(DownloadFinished(missing, 30, now));
    EXPECT_FALSE(DownloadTimedOut(missing, 30, now));
    const qint64 longAgo = now - FetchLimitMs(30) - 1;
    EXPECT_TRUE(DownloadFinished(missing, 30, longAgo));
    EXPECT_TRUE(DownloadTimedOut(missing, 30, longAgo));
}

TEST_F(JobTest, CacheBusterStampsTheHourWithoutLeadingZero)
{
    FixedClock fixed(QDateTime(QDate(2024, 3, 5), QTime(7, 8, 9)));
    setClock(&fixed);
    const QString files = "|" + profile.file("o") + "|" + profile.file("s");
    LaunchDownload("http://h.example/a?x=1" + files, true);
    LaunchDownload("http://h.example/a" + files, true);
    LaunchParseDownload("http://h.example/p?parse=1", profile.file("o"), profile.file("s"), true);
    EXPECT_EQ(launchedUrls(), QStringList({"http://h.example/a?x=1&2024030570809",
                                           "http://h.example/a?2024030570809",
                                           "http://h.example/p?parse=1&2024030570809"}));
}

TEST_F(JobTest, VendorRewriteTouchesTheUrlButNotTheFiles)
{
    process().VendorPlainHttp = true;
    const QString output = profile.file("Out.tmp"), status = profile.file("St.tmp");
    LaunchDownload("https://service.tarnby.invalid/X|" + output + "|" + status);
    LaunchParseDownload("https://service.tarnby.invalid/P?parse=A", output, status);
    ASSERT_EQ(children.launches.size(), 2);
    EXPECT_EQ(children.launches[0].arguments,
              QStringList({"http://www.tarnby.invalid/x?ssl=0|" + output + "|" + status}));
    EXPECT_EQ(QFileInfo(children.launches[1].program).fileName(), "tbdownloader");
    EXPECT_EQ(children.launches[1].arguments,
              QStringList({"http://www.tarnby.invalid/p?parse=a&ssl=0", output, status}));
}

struct StatusCase {
    const char *text;
    double value;
};

class StatusValueTest : public ::testing::TestWithParam<StatusCase>
{
};

TEST_P(StatusValueTest, TakesTheLeadingNumber)
{
    EXPECT_EQ(StatusValue(GetParam().text), GetParam().value);
}

INSTANTIATE_TEST_SUITE_P(Table, StatusValueTest,
                         ::testing::Values(StatusCase{"", 0}, StatusCase{"0", 0},
                                           StatusCase{" 3 ", 3}, StatusCase{"401", 401},
                                           StatusCase{"407 Proxy", 407}, StatusCase{"abc", 0},
                                           StatusCase{"12abc", 12}, StatusCase{"3.5", 3.5},
                                           StatusCase{"-1", -1}, StatusCase{"0x1F", 0}));

TEST_F(JobTest, ReadStatusTrimsAndDropsLineBreaks)
{
    const QString file = TempFileName(kTempPrefix);
    WriteFileAtomic(file, "\r\n401\r\n");
    EXPECT_EQ(ReadStatus(file), "401");
    EXPECT_EQ(ReadStatus(profile.file("missing")), "");
}

class WaitTest : public Test::ScriptedFetchTest
{
};

TEST_F(WaitTest, AStuckChildIsEndedOnTimeOut)
{
    children.script = [](const QString &) { return ChildReply::hanging(); };
    EXPECT_EQ(DownloadIt("http://h.example/slow", 1), "");
    ASSERT_EQ(children.launches.size(), 1);
    EXPECT_EQ(children.ended, QList<qint64>({1000}));
    EXPECT_TRUE(tempFiles().isEmpty());
}

TEST_F(WaitTest, AChildEndingWithoutStatusIsNotWaitedFor)
{
    children.script = [](const QString &) { return ChildReply::silent(); };
    const qint64 start = Tarnby::clock().monotonicMs();
    EXPECT_EQ(DownloadIt("http://h.example/gone", 30), "");
    EXPECT_LT(Tarnby::clock().monotonicMs() - start, FetchLimitMs(30));
    EXPECT_TRUE(children.ended.isEmpty());
}

TEST_F(WaitTest, PumpedSleepStopsAsSoonAsAsked)
{
    int rounds = 0;
    EXPECT_TRUE(PumpedSleep(10, [&] { return ++rounds == 3; }));
    EXPECT_EQ(rounds, 3);
    EXPECT_FALSE(PumpedSleep(1, [&] { return false; }));
}

class DownloadItTest : public Test::ScriptedFetchTest
{
};

TEST_F(DownloadItTest, BodyOnlyOnStatusZeroAndNoFileLeft)
{
    QString status;
    children.script = [&](const QString &) { return ChildReply::answer(status, "0 not a status"); };
    for (const char *value : {"0", "0\r\n", "abc"}) {
        status = value;
        EXPECT_EQ(DownloadIt("http://h.example/x", 30), "0 not a status") << value;
    }
    // an empty status file is no status: the child ended without one
    for (const char *value : {"3", "401", "407", "500", ""}) {
        status = value;
        EXPECT_EQ(DownloadIt("http://h.example/x", 30), "") << value;
    }
    EXPECT_TRUE(tempFiles().isEmpty());
}

TEST_F(DownloadItTest, GoesThroughTheVendorRoute)
{
    process().VendorPlainHttp = true;
    DownloadIt("https://service.tarnby.invalid/GetTbSettings?Version=1", 30);
    EXPECT_EQ(launchedUrls(),
              QStringList({"http://www.tarnby.invalid/gettbsettings?version=1&ssl=0"}));
}

TEST_F(DownloadItTest, ParseUrlsAreResolvedByTheSecondDownloader)
{
    QString status = "0";
    children.script = [&](const QString &) {
        return ChildReply::answer(status, "http://img.example/r.png");
    };
    EXPECT_EQ(ResolveParseUrl("http://h.example/map.png"), "http://h.example/map.png");
    EXPECT_TRUE(children.launches.isEmpty());

    EXPECT_EQ(ResolveParseUrl("http://h.example/page?parse=img"), "http://img.example/r.png");
    EXPECT_EQ(ResolveParseUrl("http://h.example/page?a=1&parse=img"), "http://img.example/r.png");
    status = "1";
    EXPECT_EQ(ResolveParseUrl("http://h.example/page?parse=img"),
              "http://h.example/page?parse=img");
    ASSERT_EQ(children.launches.size(), 3);
    EXPECT_EQ(QFileInfo(children.launches[0].program).fileName(), "tbdownloader");
    EXPECT_TRUE(tempFiles().isEmpty());
}

class ProgramFileTest : public Test::ScriptedFetchTest
{
};

TEST_F(ProgramFileTest, MissingHelperIsWordedForTheBox)
{
    QStringList shown;
    setMessageBoxSink([&](const QString &title, const QString &text) { shown << title << text; });
    EXPECT_TRUE(
        RequireProgramFile(QFileInfo(QCoreApplication::applicationFilePath()).fileName(), true));
    EXPECT_FALSE(RequireProgramFile("tbradar-missing", false));
    EXPECT_TRUE(shown.isEmpty());
    EXPECT_FALSE(RequireProgramFile("tbradar-missing", true));
    const QString folder = QCoreApplication::applicationDirPath();
    EXPECT_EQ(shown, QStringList({"Tarnby",
                                  "The \"tbradar-missing\" file could not be found in your Tarnby "
                                  "installation at \"" +
                                      folder +
                                      "\".\n"
                                      "Please reinstall Tarnby to restore this file."}));
}

class RemoteLogTest : public Test::ScriptedFetchTest
{
};

TEST_F(RemoteLogTest, LinesGoToTheVendorLogWhileSwitchedOn)
{
    FixedClock fixed(QDateTime(QDate(2024, 6, 1), QTime(12, 0)));
    setClock(&fixed);
    InstallRemoteLog();
    Log("Before (modRetrieveWeather)");
    EXPECT_TRUE(children.launches.isEmpty());

    process().LogEnabled = true;
    process().LogStartedAt = fixed.now();
    Log("Done (modRetrieveWeather)");
    EXPECT_EQ(launchedUrls(),
              QStringList({"https://service.tarnby.invalid/tarnby/App/Log/?Version=" TARNBY_VERSION
                           "&Message=Done+%28modRetrieveWeather)"}));

    fixed.advanceSeconds(30 * 60);
    Log("Still on");
    EXPECT_EQ(children.launches.size(), 2);
    fixed.advanceSeconds(1);
    Log("Too late");
    EXPECT_EQ(children.launches.size(), 2);
    EXPECT_FALSE(process().LogEnabled);
    EXPECT_EQ(GetPref("Misc", "EnableLogging"), "False");
    EXPECT_TRUE(tempFiles().isEmpty());
}

} // namespace
