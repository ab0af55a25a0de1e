// The dl child against the in-process document service.
#include "tests/tools/childfixture.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QThread>

namespace Tarnby::Test
{
namespace
{

using DlTest = ChildProgramTest;

TEST_F(DlTest, DeliversTheBodyAndThenStatusZero)
{
    writeDocument(QStringLiteral("obs/current.json"), "{\"temp\":\"21\"}");
    const ChildRun result = runDl(url(QStringLiteral("/obs/current.json")));
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.status, QStringLiteral("0")); // no line end: read as it stands
    EXPECT_EQ(result.output, QByteArray("{\"temp\":\"21\"}"));
}

TEST_F(DlTest, FailuresWriteTheStatusAndNoBody)
{
    writeDocument(QStringLiteral("doc.txt"), "a body that must not be delivered");
    const struct {
        const char *route, *path, *status;
    } rows[] = {{"/doc.txt\t401\theader=WWW-Authenticate: Basic realm=\"x\"\n", "/doc.txt", "401"},
                {"/doc.txt\t407\n", "/doc.txt", "407"},
                {"", "/missing.txt", "404"},
                {"/doc.txt\t500\n", "/doc.txt", "500"},
                {"/loop\t302\tlocation=/loop\n", "/loop", "1047"}};
    for (const auto &r : rows) {
        writeRoutes(r.route);
        const ChildRun result = runDl(url(QString::fromLatin1(r.path)));
        EXPECT_EQ(result.exitCode, 1) << r.route;
        EXPECT_EQ(result.status, QString::fromLatin1(r.status)) << r.route;
        EXPECT_TRUE(result.output.isEmpty()) << r.route;
    }
}

TEST_F(DlTest, UnreachableHostsGiveStatusThree)
{
    DocumentService closed;
    const int closedPort = closed.start(m_documents.path().toStdString());
    closed.stop();
    EXPECT_EQ(runDl(QStringLiteral("http://127.0.0.1:%1/x").arg(closedPort)).status,
              QStringLiteral("3"));
    EXPECT_EQ(runDl(QStringLiteral("http://weather.invalid/x")).status, QStringLiteral("3"));
}

TEST_F(DlTest, FollowsRedirectsAndDecodesGzip)
{
    const QByteArray text = QByteArray("forecast text ").repeated(200);
    writeDocument(QStringLiteral("new/doc.txt"), text);
    writeRoutes("/old\t301\tlocation=/new/doc.txt\n/new/*\t200\tgzip\n");
    const ChildRun result = runDl(url(QStringLiteral("/old")));
    EXPECT_EQ(result.status, QStringLiteral("0"));
    EXPECT_EQ(result.output, text);
    const auto requests = m_service.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[1].target, "/new/doc.txt");
    EXPECT_NE(requests[1].header("Accept-Encoding").find("gzip"), std::string::npos);
}

TEST_F(DlTest, SendsTheUserAgent)
{
    writeDocument(QStringLiteral("doc.txt"), "x");
    runDl(url(QStringLiteral("/doc.txt")));
    QProcessEnvironment environment = childEnvironment();
    environment.insert(QStringLiteral("TARNBY_USER_AGENT"),
                       QStringLiteral("Tarnby/9.9 (someone@example.org)"));
    runDl(url(QStringLiteral("/doc.txt")), environment);
    const auto requests = m_service.requests();
    ASSERT_EQ(requests.size(), 2u);
    EXPECT_EQ(requests[0].header("User-Agent"),
              std::string("Tarnby/") + TARNBY_VERSION + " (desktop weather station)");
    EXPECT_EQ(requests[1].header("User-Agent"), "Tarnby/9.9 (someone@example.org)");
}

TEST_F(DlTest, StatusFileAppearsOnlyWithTheWholeBody)
{
    const QByteArray body(48 * 1024, 'w');
    writeDocument(QStringLiteral("big.txt"), body);
    writeRoutes("/big.txt\t200\trate=96000\n"); // about half a second
    QProcess dl;
    startDl(dl, QStringLiteral("/big.txt"));
    bool sawPartBody = false;
    while (!dl.waitForFinished(2)) {
        const qint64 size = QFileInfo(workFile(QStringLiteral("output"))).size();
        if (QFile::exists(workFile(QStringLiteral("status"))))
            ASSERT_EQ(size, body.size());
        else
            sawPartBody = sawPartBody || (size > 0 && size < body.size());
    }
    EXPECT_TRUE(sawPartBody);
    EXPECT_EQ(finishedRun().status, QStringLiteral("0"));
}

// Waits until the service has seen n requests; false after five seconds.
bool waitForRequests(const DocumentService &service, size_t n)
{
    QElapsedTimer timer;
    timer.start();
    while (service.requests().size() < n && timer.elapsed() < 5000)
        QThread::msleep(5);
    return service.requests().size() >= n;
}

TEST_F(DlTest, StoppingTheServiceEndsAHeldAnswer)
{
    writeRoutes("/held\t200\thang=60\tbody=late\n");
    QProcess dl;
    startDl(dl, QStringLiteral("/held"));
    ASSERT_TRUE(waitForRequests(m_service, 1));
    m_service.stop();
    ASSERT_TRUE(dl.waitForFinished(10000));
    EXPECT_NE(finishedRun().status, QStringLiteral("0"));
}

bool processEnded(qint64 pid)
{
    QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
    if (!stat.open(QIODevice::ReadOnly)) return true;
    const QByteArray fields = stat.readAll();
    return fields.mid(fields.lastIndexOf(')') + 2, 1) == "Z"; // a zombie has ended
}

TEST_F(DlTest, DiesWithItsParent)
{
    writeRoutes("/held\t200\thang=60\n");
    QProcess shell;
    shell.start(QStringLiteral("/bin/sh"),
                {QStringLiteral("-c"), QStringLiteral("\"$0\" \"$1\" & echo $!; wait"),
                 program(QStringLiteral("dl")), dlArgument(url(QStringLiteral("/held")))});
    ASSERT_TRUE(shell.waitForReadyRead(5000));
    const qint64 childPid = shell.readLine().trimmed().toLongLong();
    ASSERT_TRUE(waitForRequests(m_service, 1));
    shell.kill();
    shell.waitForFinished();
    QElapsedTimer timer;
    timer.start();
    while (!processEnded(childPid) && timer.elapsed() < 5000)
        QThread::msleep(10);
    EXPECT_TRUE(processEnded(childPid));
}

TEST_F(DlTest, OddCommandLinesFailCleanly)
{
    writeDocument(QStringLiteral("doc.txt"), "x");
    const struct {
        QStringList arguments; // OUT, STATUS and URL stand for the job's files and a document
        int exitCode;
        const char *status; // nullptr: no status file
    } rows[] = {{{}, 2, nullptr},
                {{"URL", "OUT", "STATUS"}, 2, nullptr},
                {{"garbage"}, 2, nullptr},
                {{"URL|OUT|/no/such/folder/status"}, 2, nullptr},
                {{"|OUT|STATUS"}, 1, "1"},
                {{"URL||STATUS"}, 1, "1"},
                {{"URL|/no/such/folder/out|STATUS"}, 1, "1023"},
                {{"file:///etc/passwd|OUT|STATUS"}, 1, "1001"},
                {{"http://[::1|OUT|STATUS"}, 1, "1003"}};
    for (const auto &r : rows) {
        SCOPED_TRACE(r.arguments.join(' ').toStdString());
        QStringList arguments = r.arguments;
        for (QString &argument : arguments)
            argument.replace(QStringLiteral("OUT"), workFile(QStringLiteral("output")))
                .replace(QStringLiteral("STATUS"), workFile(QStringLiteral("status")))
                .replace(QStringLiteral("URL"), url(QStringLiteral("/doc.txt")));
        const ChildRun result = run(QStringLiteral("dl"), arguments);
        EXPECT_FALSE(result.crashed);
        EXPECT_EQ(result.exitCode, r.exitCode);
        EXPECT_EQ(result.statusWritten, r.status != nullptr);
        if (r.status)
            EXPECT_EQ(result.status, QString::fromLatin1(r.status));
        else
            EXPECT_FALSE(result.errors.isEmpty());
    }
}

} // namespace
} // namespace Tarnby::Test
