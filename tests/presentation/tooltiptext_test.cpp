#include "presentation/tooltippage.h"
#include "presentation/tooltiptext.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/template/templatetest.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

class TooltipText : public Tarnby::Test::TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        loadCache();
        SavePref("CityCode", "City", "Ames, IA (Ames Municipal Airport)");
        SavePref("TrayTooltip", "TooltipStyle", "Standard Windows tooltip");
    }
    static void tooltip(const char *key, const char *value)
    {
        SavePref(QStringLiteral("TrayTooltip"), QLatin1String(key), QLatin1String(value));
    }
    static void nightIcon() { cache("Current", "image-icon", "nt_cond003"); }
};

TEST_F(TooltipText, FullCacheMatchesTheGoldenText)
{
    tooltip("ShowUnits", "True");
    tooltip("Values", "ABCDE9FSG6I78UTVOPYZQX3KL4R5MN12");
    const QString expected = Tarnby::Test::readDataFile("presentation/tooltip.expected");
    EXPECT_EQ(BuildTooltipText(), expected.trimmed().replace(u'\n', QStringLiteral("\r\n")));
}

TEST_F(TooltipText, PlainValuesWithoutNamesOrUnits)
{
    tooltip("TooltipNames", "False");
    tooltip("Values", "CFI");
    EXPECT_EQ(BuildTooltipText(), QStringLiteral("78.4 \u2191\r\n59 \u2193\r\n29.92 \u2193"));
}

TEST_F(TooltipText, HiddenTenthsOnlyForFahrenheit)
{
    tooltip("Values", "C");
    tooltip("HideTempTenths", "True");
    EXPECT_EQ(BuildTooltipText(), QStringLiteral("Temperature: 78 \u2191"));
    SavePref("Conversion", "Temp", "C");
    setUnits("C", false);
    EXPECT_EQ(BuildTooltipText(), QStringLiteral("Temperature: 26 \u2191"));
}

TEST_F(TooltipText, HoursOfLightSwapPlacesAtNight)
{
    tooltip("Values", "KR5L");
    const QString day = BuildTooltipText();
    EXPECT_TRUE(day.contains(QStringLiteral("Hours to Sunset: 5:51\r\nHours to Dusk: 6:26")))
        << day.toStdString();
    nightIcon();
    EXPECT_EQ(TooltipLetters(), QStringLiteral("K5RL"));
    tooltip("Values", "KRL");
    EXPECT_EQ(TooltipLetters(), QStringLiteral("KRL")); // no "5": the order stays
}

TEST_F(TooltipText, StandardTipIsCutAndOtherStylesShowTheName)
{
    const QString tip = StandardTrayTip();
    EXPECT_EQ(tip.size(), kTrayTipLength);
    EXPECT_TRUE(BuildTooltipText().startsWith(tip));
    tooltip("TooltipStyle", "Disabled");
    EXPECT_EQ(BuildTooltipText(), QString());
    EXPECT_EQ(StandardTrayTip(), QStringLiteral("Tarnby"));
    tooltip("TooltipStyle", "Skinned tooltip");
    EXPECT_EQ(StandardTrayTip(), QStringLiteral("Tarnby"));
}

TEST_F(TooltipText, HideDescDropsTheConditionLine)
{
    tooltip("Values", "AB");
    EXPECT_EQ(BuildTooltipText(),
              QStringLiteral("Ames, IA (Ames Municipal Airport)\r\nCondition: Partly Cloudy"));
    tooltip("HideDesc", "True");
    EXPECT_EQ(BuildTooltipText(), QStringLiteral("Ames, IA (Ames Municipal Airport)"));
}

TEST_F(TooltipText, RowsMakeTheSkinsTable)
{
    tooltip("Values", "ACM");
    tooltip("TooltipNames", "True");
    EXPECT_EQ(BuildTooltipRows(),
              QStringLiteral(
                  "<TABLE>"
                  "<TR><TD STYLE=\"padding-bottom:10px;\"><SPAN CLASS=\"WxStation\">Ames, "
                  "IA</SPAN><BR><SPAN CLASS=\"Location\">Ames Municipal Airport</SPAN></TD></TR>"
                  "<TR><TD><SPAN CLASS=\"LabelTitle\">Temperature:</SPAN> <SPAN "
                  "CLASS=\"LabelText\">78.4 &uarr;</SPAN></TD></TR>"
                  "<TR><TD><SPAN CLASS=\"LabelTitle\">Last Observed:</SPAN> <SPAN "
                  "CLASS=\"LabelText\">6/14/2024 2:55 PM</SPAN></TD></TR></TABLE>"));
    tooltip("TooltipNames", "False");
    EXPECT_TRUE(BuildTooltipRows().contains(
        QStringLiteral("<TR><TD CLASS=\"LabelTitle\">78.4 &uarr;</TD></TR>")));
}

class TooltipPage : public TooltipText
{
protected:
    QString skinFolder()
    {
        const QString folder = TooltipSkinFolder();
        CreateFolder(folder);
        return folder;
    }
};

TEST_F(TooltipPage, TemplateByDayPartUnlessTheSkinHasItsOwn)
{
    const QString folder = skinFolder();
    EXPECT_EQ(TooltipTemplateFile(folder, "D"), QString());
    WriteFileAtomic(folder + "SkinDay.tbt", "day");
    WriteFileAtomic(folder + "SkinNight.tbt", "night");
    EXPECT_EQ(TooltipTemplateFile(folder, "D"), folder + "SkinDay.tbt");
    EXPECT_EQ(TooltipTemplateFile(folder, "N"), folder + "SkinNight.tbt");
    WriteFileAtomic(folder + "Skin.tbt", "own");
    EXPECT_EQ(TooltipTemplateFile(folder, "N"), folder + "Skin.tbt");
    EXPECT_EQ(TooltipDayPart(), QStringLiteral("D")); // 15:30 with sunset at 20:46
    nightIcon();
    EXPECT_EQ(TooltipDayPart(), QStringLiteral("D")); // a night icon by day still reads as day
}

TEST_F(TooltipPage, PageIsFramedAndReadyForMeasuring)
{
    tooltip("Values", "C");
    process().ProfilePath = QStringLiteral("/home/o'brien/.local/share/Tarnby");
    const QString page =
        BuildTooltipPage("<IMG SRC=\"[TOOLTIPSKINPATH]a\\b.png\">[CURRENTCONDITIONS]", "/x/");
    EXPECT_TRUE(page.startsWith(QStringLiteral("<!DOCTYPE")));
    EXPECT_TRUE(page.contains(QStringLiteral("<DIV ID=\"TBTemplate-Content\"")));
    EXPECT_TRUE(
        page.contains(QStringLiteral("SRC=\"../../../Skins/Tooltip/Day And Night/a/b.png\"")));
    EXPECT_TRUE(page.contains(QStringLiteral("78.4 &uarr;"))) << page.toStdString();
    EXPECT_TRUE(page.endsWith(QStringLiteral(
        "<DIV ID=\"TBTemplate-ContentHeight\" STYLE=\"display:none;\"></DIV>"
        "<DIV ID=\"TBTemplate-ContentWidth\" STYLE=\"display:none;\"></DIV></DIV></BODY></HTML>")));
}

TEST_F(TooltipPage, IconStripReplacesTheMarkersOrIsCutOut)
{
    const QString page = "a[ICONS START]<P>[ICONS]</P>[ICONS END]b";
    EXPECT_EQ(ApplyIconStrip(page, QString(), 300), QStringLiteral("ab"));
    const QString hourly = ApplyIconStrip(page, "Hourly", 200);
    EXPECT_TRUE(hourly.startsWith(
        QStringLiteral("a<P><TABLE CLASS=\"IconStrip\"><TR><TD ALIGN=\"center\">Now</TD>")));
    EXPECT_EQ(hourly.count(QStringLiteral("<IMG ")), 4); // 200 pixels hold the fewest columns
    EXPECT_TRUE(hourly.contains(QStringLiteral(">5 PM<"))) << hourly.toStdString();
    const QString daily = ApplyIconStrip(page, "Daily", 500);
    EXPECT_EQ(daily.count(QStringLiteral("<IMG ")), 7); // all the cached days
    EXPECT_TRUE(daily.contains(QStringLiteral(">81&deg;/61&deg;<"))) << daily.toStdString();
}

TEST_F(TooltipPage, StripKindDailyWinsOverHourly)
{
    tooltip("Values", "AB12");
    EXPECT_EQ(TooltipStripKind(), QStringLiteral("Daily"));
    tooltip("Values", "AB2");
    EXPECT_EQ(TooltipStripKind(), QStringLiteral("Hourly"));
    tooltip("Values", "AB");
    EXPECT_EQ(TooltipStripKind(), QString());
}

TooltipAnchor customAt(const char *corner, QPoint point)
{
    return TooltipAnchor{true, QLatin1String(corner), point};
}

TEST(TooltipPlacement, BesideTheIconInsideTheFreeArea)
{
    const QRect available(0, 30, 1280, 740); // a panel above and one below
    const struct {
        const char *name;
        TooltipAnchor anchor;
        QRect icon;
        QPoint expected;
    } rows[] = {
        {"bottom panel", {}, QRect(1200, 775, 22, 22), QPoint(1080, 670)},
        {"top panel", {}, QRect(600, 4, 22, 22), QPoint(510, 30)},
        {"left panel", {}, QRect(-40, 300, 22, 22), QPoint(0, 260)},
        {"unknown place", {}, QRect(), QPoint(540, 296)},
        {"custom bottom right", customAt("BottomRight", {900, 700}), QRect(), QPoint(700, 600)},
        {"custom top left", customAt("TopLeft", {10, 40}), QRect(1200, 775, 22, 22),
         QPoint(10, 40)}};
    for (const auto &r : rows)
        EXPECT_EQ(TooltipPosition(r.anchor, QSize(200, 100), r.icon, available, QPoint(640, 400)),
                  r.expected)
            << r.name;
}

} // namespace
