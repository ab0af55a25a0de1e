// The forecast loops: parsing of heads and bodies, row pieces, and the rows of each kind.

#include "tests/template/templatetest.h"

#include "core/settingsstore.h"
#include "template/loopdriver.h"
#include "template/loops.h"
#include "template/periods.h"

#include <gtest/gtest.h>

using namespace Tarnby;
using Tarnby::Test::TemplateTest;

namespace
{

class Loops : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        loadCache();
    }
};

TEST(LoopHead, CountAndStartParameters)
{
    const struct {
        const char *head;
        std::optional<int> count;
    } cases[] = {{"[DAILY LOOP COUNT=5]", 5},     {"[DAILY LOOP COUNT=*]", std::nullopt},
                 {"[DAILY LOOP ]", std::nullopt}, {"[DAILY LOOP COUNT=]", std::nullopt},
                 {"[DAILY LOOP COUNT=123]", 12},  {"[DAILY LOOP COUNT=5 START=2]", 5}};
    for (const auto &c : cases)
        EXPECT_EQ(HeadNumber(c.head, u"COUNT="), c.count) << c.head;
    EXPECT_EQ(HeadNumber("[DAILY LOOP COUNT=5 START=2]", u"START="), 2);
    EXPECT_EQ(PeriodHeadCount("[PERIOD SEQUENCE LOOP COUNT=3]"), 3);
    EXPECT_EQ(PeriodHeadCount("[PERIOD SEQUENCE LOOP COUNT=*]"), 5);
    EXPECT_EQ(PeriodHeadCount("[PERIOD SEQUENCE LOOP]"), 5);
}

TEST(LoopBody, PiecesAndTheirCycle)
{
    EXPECT_EQ(LoopPieces("\r\n  [TEMPLATE]a[/TEMPLATE]\r\n[TEMPLATE]b[/TEMPLATE]  "),
              QStringList({"a", "b", ""}));
    EXPECT_EQ(LoopPieces(" plain "), QStringList({"plain"}));
    const QStringList three = {"a", "b", "c", ""};
    PieceCycle cycle(three);
    QString seen;
    for (int i = 0; i < 7; ++i, cycle.advance())
        seen += cycle.current().text();
    EXPECT_EQ(seen, "abcabca");
}

TEST_F(Loops, CountDefaultsAndCaps)
{
    const QString daily = "[DAILY LOOP %1][TEMPLATE]<[DAILY NUM]>[/TEMPLATE][/DAILY LOOP]";
    EXPECT_EQ(expand(daily.arg("COUNT=*")), "<1><2><3><4><5><6><7>");
    EXPECT_EQ(expand(daily.arg("START=6")), "<6><7>");
    // Daily rounds are not capped; days without data are skipped.
    EXPECT_EQ(expand(daily.arg("COUNT=99")), "<1><2><3><4><5><6><7>");
    cache("Hourly", "count", "24");
    EXPECT_EQ(expand("[HOURLY LOOP COUNT=99]x[/HOURLY LOOP]").size(), 24);
    EXPECT_EQ(
        expand("[HOURLY LOOP COUNT=2 START=3][TEMPLATE][HOURLY HOUR]|[/TEMPLATE][/HOURLY LOOP]"),
        "6 PM|7 PM|");
}

TEST_F(Loops, BodiesWithAndWithoutTags)
{
    EXPECT_EQ(expand("[DAILY LOOP COUNT=3]no tags[/DAILY LOOP]"), "");
    EXPECT_EQ(expand("[HOURLY LOOP COUNT=3]x[/HOURLY LOOP]"), "xxx");
    EXPECT_EQ(
        expand("[HOURLY LOOP COUNT=5][TEMPLATE]a[/TEMPLATE][TEMPLATE]b[/TEMPLATE][/HOURLY LOOP]"),
        "ababa");
    EXPECT_EQ(expand("1[HOURLY LOOP COUNT=1]a[/HOURLY LOOP]2[HOURLY LOOP COUNT=2]b[/HOURLY LOOP]3"),
              "1a2bb3");
}

TEST_F(Loops, MoonLoopTakesTwoCharactersAlong)
{
    const QString text = "[MOON LOOP COUNT=3][TEMPLATE][MOON DAY ABBREV] [MOON DATE "
                         "SHORT]|[/TEMPLATE][/MOON LOOP]\r\nEnd";
    EXPECT_EQ(expand(text), "Fri Jun 14|Sat Jun 15|Sun Jun 16|End");
}

TEST_F(Loops, BrokenConstructsStayAsTheyStand)
{
    for (const char *text : {"[DAILY LOOP COUNT=2][TEMPLATE]x[/TEMPLATE]", "[HOURLY LOOP COUNT=2",
                             "[MOON LOOP ][/MOON", "[HOURLY LOOP [/HOURLY LOOP]"})
        EXPECT_EQ(expand(text, false, true), QString::fromLatin1(text));
}

TEST_F(Loops, DailySequenceLabelsAndHalves)
{
    const QString text =
        "[DAILY SEQUENCE LOOP COUNT=6][DAILY DAY]/[DAILY TEMP LABEL]/[DAILY TEMP PLAIN]|"
        "[/DAILY SEQUENCE LOOP]";
    EXPECT_EQ(expand(text), "Today/High/81|Tonight/Low/61|Tomorrow/High/82|Tomorrow Night/Low/62|"
                            "Sunday/High/83|Sunday Night/Low/60|");
    cache("Daily", "image11", "");
    EXPECT_EQ(
        expand(
            "[DAILY SEQUENCE LOOP COUNT=3][DAILY DAY]/[DAILY TEMP LABEL]|[/DAILY SEQUENCE LOOP]"),
        "Tonight/Low|Tomorrow/High|Tomorrow Night/Low|");
    cache("LastUpdated", "CurrentTimeStamp", "6/15/2024 6:00 AM");
    EXPECT_EQ(expand("[DAILY SEQUENCE LOOP COUNT=2][DAILY DAY ABBREV]|[/DAILY SEQUENCE LOOP]"),
              "Tomorrow Tonight|Sat|");
}

TEST_F(Loops, DailySequenceTemperaturesUseTheRowNumber)
{
    EXPECT_EQ(
        expand("[DAILY SEQUENCE LOOP COUNT=3][DAILY NUM]:[DAILY HI PLAIN]|[/DAILY SEQUENCE LOOP]"),
        "1:81|1:82|2:83|");
}

TEST_F(Loops, DailyLoopPiecesByDayAndNight)
{
    const QString text =
        "[DAILY LOOP COUNT=2][TEMPLATE]D [DAILY DAY ABBREV] [DAILY CONDITION DAY]|[/TEMPLATE]"
        "[TEMPLATE]N [DAILY NIGHT] [DAILY LO NIGHT PLAIN]|[/TEMPLATE][/DAILY LOOP]";
    // A forecast that begins at night starts with the night piece (the golden skin has the
    // daytime start).
    cache("Daily", "image11", "");
    cache("Daily", "low2", "");
    EXPECT_EQ(expand(text), "N Friday Night 59|D Sat Mostly Sunny|");
}

TEST_F(Loops, PeriodBoundsFollowTheDayParts)
{
    // The forecast begins at 4 PM: the first period moves on to the evening.
    const struct {
        int period, first, last;
    } cases[] = {{1, 2, 6}, {2, 7, 14}, {3, 15, 20}, {4, 21, 25}, {5, 26, 30}};
    for (const auto &c : cases) {
        const HourSpan span = PeriodBounds(c.period);
        EXPECT_EQ(span.firstHour, c.first) << c.period;
        EXPECT_EQ(span.lastHour, c.last) << c.period;
    }
    EXPECT_EQ(PeriodName(2, false), "Evening");
    EXPECT_EQ(PeriodName(7, false), "Tonight");
    EXPECT_EQ(PeriodName(10, false), "Tomorrow Night");
    EXPECT_EQ(PeriodName(21, false), "Tomorrow Afternoon");
    EXPECT_EQ(PeriodName(21, true), "Afternoon");
}

TEST_F(Loops, PeriodValues)
{
    for (int hour = 1; hour <= 3; ++hour) {
        cache("Hourly", QStringLiteral("temperature%1").arg(hour), "90");
        cache("Hourly", QStringLiteral("weather-icon-description%1").arg(hour),
              hour == 2 ? "Sunny" : "Chance Rain");
        cache("Hourly", QStringLiteral("prob-of-precip%1").arg(hour), hour == 3 ? "40" : "10");
    }
    const HourSpan span{1, 3};
    EXPECT_EQ(PeriodMostFrequent(span, "weather-icon-description"), "Chance Rain");
    EXPECT_EQ(PeriodMax(span, "temperature"), 90);
    EXPECT_EQ(PeriodMin(HourSpan{1, 0}, "temperature"), 999);
    cache("Hourly", "hour1", "1 PM");
    cache("Hourly", "hour3", "4 PM");
    const QString text =
        "[PERIOD SEQUENCE LOOP COUNT=1][PERIOD NAME]: [PERIOD CONDITION], [PERIOD TEMP SPAN] "
        "[PERIOD TEMP SPAN PLAIN NOT CONVERTED][/PERIOD SEQUENCE LOOP]";
    EXPECT_EQ(expand(text), QString::fromUtf8("Afternoon: 40% Chance Rain, 90°F 90"));
    // A falling afternoon: the ordered span puts the high first, and its colours follow.
    cache("Hourly", "temperature3", "80");
    const QString spans = "[PERIOD SEQUENCE LOOP COUNT=1][PERIOD TEMP SPAN PLAIN SINGLE]|"
                          "[PERIOD ORDERED TEMP SPAN DEGREE]|[PERIOD ORDERED TEMP SPAN COLOR 1]|"
                          "[PERIOD TEMP SPAN COLOR 1]|[PERIOD TEMP SPAN DEGREE LONGDASH]"
                          "[/PERIOD SEQUENCE LOOP]";
    EXPECT_EQ(expand(spans), QString::fromUtf8("80&ndash;90|90°&ndash;80°|#FFFA00|#6CCF03|80°"
                                               "&ndash;&ndash;<IMG CLASS='Placeholder' "
                                               "STYLE='width:2px;'>90°"));
}

TEST(AbbreviateDayName, Forms)
{
    Tarnby::FixedClock clock(QDateTime(QDate(2024, 6, 14), QTime(12, 0), Qt::UTC));
    setClock(&clock);
    EXPECT_EQ(AbbreviateDayName("Saturday", false, false), "Sat");
    EXPECT_EQ(AbbreviateDayName("saturday Night", false, true), "Sat Night");
    EXPECT_EQ(AbbreviateDayName("Saturday", true, false), "S");
    EXPECT_EQ(AbbreviateDayName("Overnight", true, false), "Overnight");
    EXPECT_EQ(AbbreviateDayName("Today", false, false), "Tod");
    setClock(nullptr);
}

} // namespace
