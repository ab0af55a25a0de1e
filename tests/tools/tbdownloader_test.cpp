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

struct PickCase {
    const char *parseText;
    const char *expected; // {ROOT} stands for the service's address
};

class TbDownloaderPickTest : public ChildProgramTest, public ::testing::WithParamInterface<PickCase>
{
};

TEST_P(TbDownloaderPickTest, ResolvesTheLinkTheInstructionNames)
{
    writeDocument(QStringLiteral("maps/page.html"), MapPage);
    const ChildRun result =
        runTbDownloader(url(QStringLiteral("/maps/page.html?parse=") + GetParam().parseText));
    EXPECT_EQ(result.status, QStringLiteral("0"));
    EXPECT_EQ(QString::fromUtf8(result.output),
              QString::fromLatin1(GetParam().expected).replace(QStringLiteral("{ROOT}"), url({})));
}

INSTANTIATE_TEST_SUITE_P(Pages, TbDownloaderPickTest,
                         ::testing::Values(
                             // images come before links, the first match in the page wins
                             PickCase{"radar", "{ROOT}/maps/radar/radar_0900.png"},
                             PickCase{"RADAR_0900_HI", "{ROOT}/maps/radar/radar_0900_hi.png"},
                             PickCase{"large", "{ROOT}/maps/radar/large.html"},
                             PickCase{"share", "{ROOT}/images/share.jpg"},
                             PickCase{"visible", "http://tiles.example.org/sat/visible.jpg"},
                             PickCase{"loops%2Flatest", "https://cdn.example.org/loops/latest.gif"},
                             PickCase{"", "{ROOT}/images/share.jpg"}));

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
