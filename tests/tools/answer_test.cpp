// The document service's folder mapping and routes.tsv.
#include "tests/support/printers.h"
#include "tools/service/answer.h"
#include "tools/service/documentservice.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace Tarnby::Test
{
namespace
{

class AnswerTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        write("secret.txt", "outside the root");
        write("root/obs.json", "observation");
        write("root/api/stations/@", "any query");
        write("root/api/stations/@state=NY", "new york");
        write("root/api/stations/@path=a%2Fb", "slash in query");
        write("root/api/empty/readme.txt", "no @ here");
    }

    void write(const QString &relative, const QByteArray &content)
    {
        const QString path = m_dir.filePath(relative);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    Answer answer(const char *path, const char *query = "")
    {
        return answerFor(m_dir.filePath(QStringLiteral("root")).toStdString(), path, query);
    }

    QTemporaryDir m_dir;
};

TEST_F(AnswerTest, FindsTheDocument)
{
    const struct {
        const char *path, *query;
        int status;
        const char *body;
    } rows[] = {{"/obs.json", "", 200, "observation"},
                {"/obs.json", "t=1", 200, "observation"},
                {"/api/stations", "state=NY", 200, "new york"},
                {"/api/stations", "state=CA", 200, "any query"},
                {"/api/stations", "path=a/b", 200, "slash in query"},
                {"/api/empty", "", 404, "Not found\n"},
                {"/missing", "", 404, "Not found\n"},
                {"/api/../../secret.txt", "", 404, "Not found\n"}};
    for (const auto &r : rows) {
        const Answer found = answer(r.path, r.query);
        EXPECT_EQ(found.status, r.status) << r.path << '?' << r.query;
        EXPECT_EQ(found.body, r.body) << r.path << '?' << r.query;
    }
}

TEST_F(AnswerTest, ContentTypeFollowsTheRequestedName)
{
    EXPECT_EQ(answer("/obs.json").contentType, "application/json");
    EXPECT_EQ(answer("/api/stations").contentType, "application/octet-stream");
}

TEST_F(AnswerTest, FirstMatchingRouteDecides)
{
    write("root/routes.tsv", "# comment\t500\n"
                             "/api/stations?state=NY\t401\theader=WWW-Authenticate: Basic\r\n"
                             "/api/*\t503\ttype=text/csv\n"
                             "/obs.json\tnot-a-status\n"
                             "/obs.json\t200\tgzip\trate=500\thang=999\n"
                             "/moved\t301\tlocation=/obs.json\n"
                             "/inline\t200\tbody=hello\n"
                             "/alias\t200\tfile=obs.json\n");
    const Answer newYork = answer("/api/stations", "state=NY");
    EXPECT_EQ(newYork.status, 401);
    EXPECT_EQ(newYork.body, "new york"); // a route without a body keeps the document
    ASSERT_EQ(newYork.headers.size(), 1u);
    EXPECT_EQ(newYork.headers[0].second, "Basic");

    const Answer other = answer("/api/stations", "state=CA");
    EXPECT_EQ(other.status, 503);
    EXPECT_EQ(other.contentType, "text/csv");

    const Answer slow = answer("/obs.json");
    EXPECT_EQ(slow.status, 200);
    EXPECT_TRUE(slow.gzip);
    EXPECT_EQ(slow.bytesPerSecond, 500);
    EXPECT_EQ(slow.hangSeconds, MaxHangSeconds);

    const Answer moved = answer("/moved");
    EXPECT_EQ(moved.status, 301);
    EXPECT_EQ(moved.body, "");
    EXPECT_EQ(moved.headers, (decltype(moved.headers){{"Location", "/obs.json"}}));
    EXPECT_EQ(answer("/inline").body, "hello");
    EXPECT_EQ(answer("/alias").body, "observation");
}

TEST(DocumentServiceTest, ListensOnlyOncePerPort)
{
    QTemporaryDir root;
    DocumentService first;
    DocumentService second;
    const int port = first.start(root.path().toStdString());
    ASSERT_NE(port, 0);
    EXPECT_EQ(first.start(root.path().toStdString()), 0);
    EXPECT_EQ(second.start(root.path().toStdString(), port), 0);
    first.stop();
    EXPECT_EQ(second.start(root.path().toStdString(), port), port);
}

} // namespace
} // namespace Tarnby::Test
