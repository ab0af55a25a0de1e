#include "presentation/newslink.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

class NewsLink : public SkinTest
{
protected:
    void SetUp() override
    {
        SavePref("Hosts", "Override", "http://127.0.0.1:9");
        selectStation("KAMW", "NWS");
    }
    void stories(const QStringList &list)
    {
        SaveCache("News", "Count", QString::number(list.size()));
        for (int n = 0; n < list.size(); ++n)
            SaveCache("News", QStringLiteral("Story%1").arg(n + 1), list.at(n));
    }
    QString shownTitle()
    {
        const QString html = NewsStoryLinkHtml();
        return html.section("STYLE=\"color:#0000CC;\">", 1).chopped(4);
    }
    QString pointer() { return GetCache("News", "LastDisplayed"); }
};

TEST_F(NewsLink, TheLinkHandsItsAddressBackThroughTbLink)
{
    stories({"https://news.example/a?x=1&y=2|Storm coming"});
    EXPECT_EQ(NewsStoryLinkHtml(),
              "<A HREF=\"#\" ONMOUSEDOWN=\"document.getElementById('TB-Link').innerHTML = "
              "'https://news.example/a?x=1&y=2'; setRunAction('LaunchLink');\" "
              "STYLE=\"color:#0000CC;\">Storm coming</A>");
}

TEST_F(NewsLink, PointerWrapsBothWays)
{
    stories({"u1|One", "u2|Two", "u3|Three"});
    EXPECT_EQ(shownTitle(), "One"); // a first use shows the first story
    StepNewsPointer(1);
    EXPECT_EQ(pointer(), "1");
    StepNewsPointer(-1);
    EXPECT_EQ(pointer(), "3");
    StepNewsPointer(1);
    EXPECT_EQ(pointer(), "1");
    StepNewsPointer(1);
    EXPECT_EQ(shownTitle(), "Two");
}

TEST_F(NewsLink, NoStoryOrOneKeepsThePointer)
{
    StepNewsPointer(1);
    EXPECT_EQ(pointer(), "");
    EXPECT_EQ(NewsStoryLinkHtml(), ""); // no stories, no link
    stories({"u1|Only"});
    StepNewsPointer(1);
    StepNewsPointer(1);
    EXPECT_EQ(pointer(), "1");
    StepNewsPointer(-1);
    EXPECT_EQ(pointer(), "1");
}

TEST_F(NewsLink, LongTitlesAreCutAtFortyFourCharacters)
{
    const QString exact(44, u'x');
    const QString longer = QString(40, u'y') + " and more";
    stories({"u1|" + exact, "u2|" + longer});
    EXPECT_EQ(shownTitle(), exact);
    StepNewsPointer(1);
    StepNewsPointer(1);
    EXPECT_EQ(shownTitle(), QString(40, u'y') + "...");
}

TEST_F(NewsLink, ANumberIsTheVendorsOwnStory)
{
    stories({"4711|WeatherBug: Heat wave ahead"});
    const QString html = NewsStoryLinkHtml();
    EXPECT_TRUE(html.contains("'http://127.0.0.1:9/vendor/tarnby/news/story/4711'"))
        << html.toStdString();
    EXPECT_EQ(shownTitle(), "Heat wave ahead");
}

} // namespace
