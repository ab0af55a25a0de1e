// Graphs and the chance grid, and the export and log files.

#include "tests/template/templatetest.h"

#include "core/files.h"
#include "core/settingsstore.h"
#include "template/exportlog.h"
#include "template/graphs.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace Tarnby;
using Tarnby::Test::TemplateTest;

namespace
{

TEST(ShadeColour, StaysAValidColour)
{
    EXPECT_EQ(ShadeColour("#F8F8F6", 0.2), "#FFFFFF");
    EXPECT_EQ(ShadeColour("#336699", 0.2), "#3D7AB8");
    EXPECT_EQ(ShadeColour("#333", 0.2), "#3D3D3D");
    EXPECT_EQ(ShadeColour("red", 0.2), "red");
}

TEST_F(TemplateTest, GraphWithoutHoursIsAnEmptyTable)
{
    const QString graph = expand("[GRAPH HOURLY][GRAPH DAILY][TABLE HOURLY POP]");
    EXPECT_TRUE(graph.startsWith(
        "<TABLE STYLE='width:100%; border-collapse:collapse; border-spacing:0; padding:0px;'>"));
    EXPECT_FALSE(graph.contains("TITLE="));
}

// Hours 1 to 6 with chances around the class limits; temperatures 60 to 70.
class Graphs : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        const char *chances[] = {"15", "16", "28", "29", "68", "69"};
        for (int i = 1; i <= 6; ++i) {
            cache("Hourly", QStringLiteral("hour%1").arg(i), QStringLiteral("%1 AM").arg(i + 5));
            cache("Hourly", QStringLiteral("date%1").arg(i), "6/15/2024");
            cache("Hourly", QStringLiteral("temperature%1").arg(i), QString::number(58 + 2 * i));
            cache("Hourly", QStringLiteral("prob-of-precip%1").arg(i), chances[i - 1]);
        }
        cache("Hourly", "count", "6");
    }
    static QStringList all(const QString &text, const QString &pattern)
    {
        QStringList found;
        for (const auto &match : QRegularExpression(pattern).globalMatch(text))
            found << match.captured(1);
        return found;
    }
};

TEST_F(Graphs, ChanceClassesTakeTheUpperClassAtTheirLimits)
{
    const QString graph = GraphHourly(HourSpan::whole(), GraphStyle{});
    EXPECT_EQ(all(graph, "padding:3px 2px; background-color:(#\\w+);"),
              QStringList({"#f1f1f1", "#79e279", "#79e279", "#029202", "#029202", "#006400"}));
}

TEST_F(Graphs, BarsScaleBetweenLowestAndHighest)
{
    const QString graph = GraphHourly(HourSpan::whole(), GraphStyle{"60", "#F8F8F6", "11", true});
    EXPECT_EQ(all(graph, "<DIV STYLE=\"height:(\\d+)px;"),
              QStringList({"0", "6", "12", "18", "24", "30"}));
    EXPECT_EQ(all(graph, "vertical-align:bottom; width:(\\d+)%;'>"), QStringList(6, "17"));
    // Labels at every second hour, in the user's unit as whole numbers.
    EXPECT_EQ(all(graph, "text-align:center;\">(\\w+)&deg;"), QStringList({"62", "66", "70"}));
    const QString base = GraphHourly(HourSpan::whole(), GraphStyle{"abc", "#F8F8F6", "x", false});
    EXPECT_EQ(all(base, "<DIV STYLE='height:(\\d+)px; border-left").value(0), "20");
    EXPECT_FALSE(base.contains("chance of precipitation"));
    EXPECT_TRUE(base.contains("font-size:11px"));
}

TEST_F(Graphs, EqualTemperaturesKeepTheBarsStanding)
{
    for (int i = 1; i <= 6; ++i)
        cache("Hourly", QStringLiteral("temperature%1").arg(i), "70");
    EXPECT_EQ(all(GraphHourly(HourSpan::whole(), GraphStyle{}), "<DIV STYLE=\"height:(\\d+)px;"),
              QStringList(6, "0"));
}

class ExportAndLog : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        cache("Current", "temp", "72");
    }
    QString exportTo(const QString &name, const QString &text)
    {
        SavePref("Export", "Enable", "True");
        SavePref("Export", "ExportFile", profile.file(name));
        SavePref("Export", "ExportTemplate", text);
        RunExport();
        return ReadFile(profile.file(name));
    }
};

TEST_F(ExportAndLog, EntitiesByTheLoweredFileName)
{
    EXPECT_EQ(exportTo("report.HTML", "[TEMP]"), "72&deg;F\r\n");
    EXPECT_EQ(exportTo("data.ht", "[TEMP]"), QString::fromUtf8("72°F\r\n"));
    EXPECT_EQ(exportTo("data.txt", " [TEMP][CRLF][TAB]x "), QString::fromUtf8("72°F\r\n\tx\r\n"));
    // A second run replaces the file.
    EXPECT_EQ(exportTo("data.txt", "again"), "again\r\n");
}

TEST_F(ExportAndLog, LogGrowsALineARun)
{
    SavePref("Log", "Enable", "True");
    SavePref("Log", "LogFile", profile.file("tarnby.log"));
    SavePref("Log", "LogTemplate", "[TEMP PLAIN][TAB][CRLF]");
    RunLog();
    RunLog();
    EXPECT_EQ(ReadFile(profile.file("tarnby.log")), "72\t[CRLF]\r\n72\t[CRLF]\r\n");
}

TEST_F(ExportAndLog, DisabledOrUnwritableWritesNothing)
{
    SavePref("Export", "ExportFile", profile.file("off.txt"));
    RunExport();
    EXPECT_FALSE(FileExists(profile.file("off.txt")));
    EXPECT_FALSE(WriteTemplateFile("[TEMP]", profile.file("no/such/folder/x.txt"), true, false));
    EXPECT_TRUE(WriteTemplateFile("", profile.file("empty.txt"), false, false));
    EXPECT_EQ(ReadFile(profile.file("empty.txt")), "\r\n");
}

} // namespace
