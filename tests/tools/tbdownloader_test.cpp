// The tbdownloader child against the in-process document service.
#include "tests/tools/childfixture.h"

namespace Tarnby::Test
{
namespace
{

constexpr const char *MapPage = R"(<html><head>
<meta property="og:image" content="/images/share.jpg">
</head><body>
<a href="radar/large.html">Large radar</a>
<img src="logo.png">
<img src="radar/radar_0900.png" srcset="radar/radar_0900_hi.png 2x">
<img src="//tiles.example.org/sat/visible.jpg">
<img src="data:image/png;base64,cmFkYXI=">
<script>var frames = {"latest":"https:\/\/cdn.example.org\/loops\/latest.gif"};</script>
</body></html>)";

using TbDownloaderPickTest = ChildProgramTest;

TEST_F(TbDownloaderPickTest, ResolvesTheLinkTheInstructionNames)
{
    writeDocument(QStringLiteral("maps/page.html"), MapPage);
    const std::pair<const char *, const char *> rows[] = {
        // images come before links, the first match in the page wins; {ROOT} is the service
        {"radar", "{ROOT}/maps/radar/radar_0900.png"},
        {"RADAR_0900_HI", "{ROOT}/maps/radar/radar_0900_hi.png"},
        {"large", "{ROOT}/maps/radar/large.html"},
        {"share", "{ROOT}/images/share.jpg"},
        {"visible", "http://tiles.example.org/sat/visible.jpg"},
        {"loops%2Flatest", "https://cdn.example.org/loops/latest.gif"},
        {"", "{ROOT}/images/share.jpg"}};
    for (const auto &[parseText, expected] : rows) {
        const ChildRun result =
            runTbDownloader(url(QStringLiteral("/maps/page.html?parse=") + parseText));
        EXPECT_EQ(result.status, QStringLiteral("0")) << parseText;
        EXPECT_EQ(QString::fromUtf8(result.output),
                  QString::fromLatin1(expected).replace(QStringLiteral("{ROOT}"), url({})));
    }
}

TEST_F(TbDownloaderPickTest, ResolvesAgainstBaseAndKeepsTheOtherParameters)
{
    writeDocument(QStringLiteral("page/@"),
                  "<base href=\"/static/v2/\"><img src=\"a.png\"><img src=\"radar.png\">");
    const ChildRun result =
        runTbDownloader(url(QStringLiteral("/page?zoom=3&parse=radar&region=ne")));
    EXPECT_EQ(result.status, QStringLiteral("0"));
    EXPECT_EQ(QString::fromUtf8(result.output), url(QStringLiteral("/static/v2/radar.png")));
    ASSERT_EQ(m_service.requests().size(), 1u);
    EXPECT_EQ(m_service.requests()[0].target, "/page?zoom=3&region=ne");
}

TEST_F(TbDownloaderPickTest, FailuresLeaveNoLink)
{
    writeDocument(QStringLiteral("page.html"), MapPage);
    EXPECT_EQ(runTbDownloader(url(QStringLiteral("/page.html?parse=snow"))).status,
              QStringLiteral("2"));
    EXPECT_EQ(runTbDownloader(url(QStringLiteral("/gone.html?parse=radar"))).status,
              QStringLiteral("404"));
    EXPECT_EQ(runTbDownloader(url(QStringLiteral("/page.html"))).status, QStringLiteral("1"));
    EXPECT_TRUE(runTbDownloader(url(QStringLiteral("/page.html?parse=snow"))).output.isEmpty());
    const ChildRun odd = run(QStringLiteral("tbdownloader"), {url(QStringLiteral("/page.html"))});
    EXPECT_FALSE(odd.crashed);
    EXPECT_EQ(odd.exitCode, 2);
    EXPECT_FALSE(odd.errors.isEmpty());
}

} // namespace
} // namespace Tarnby::Test
