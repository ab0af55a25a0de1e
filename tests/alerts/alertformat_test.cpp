// Short titles, the title list and the bulletin texts made from the Alerts branch.

#include "alerts/alertformat.h"
#include "core/weathercache.h"
#include "tests/alerts/alertfixture.h"

using namespace Tarnby;
using Tarnby::Test::AlertTest;

namespace
{

TEST(AlertShortTitle, NamesTheAlertWithoutItsState)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Heat advisory is in effect until 8 PM", "Heat Advisory"},
        {"A Tornado Warning is in effect", "Tornado Warning"}, // one-letter words drop out
        // " remains " is preferred to an earlier " in effect "
        {"Wind Advisory in effect, remains until noon", "Wind Advisory In Effect,"},
        // capitalised words up to the first lower-case one
        {"Flood warning for the Des Moines River", "Flood"},
        // an all lower-case title is capitalised up to its first capital word
        {"severe thunderstorm watch for Linn County", "Severe Thunderstorm Watch For"},
        {"Flood Watch cancelled", ""}};
    for (const auto &[title, shortTitle] : cases)
        EXPECT_EQ(GetAlertShortTitle(title), shortTitle) << title;
}

class AlertTextTest : public AlertTest
{
protected:
    // One alert per short title; the first carries the body. A row beyond Count is ignored.
    static void store(const QStringList &shortTitles, const QString &body = {})
    {
        DelCache("Alerts");
        for (int i = 0; i < shortTitles.size(); ++i)
            SaveCache("Alerts", "short-title" + QString::number(i + 1), shortTitles[i]);
        SaveCache("Alerts", "msg-body1", body);
        SaveCache("Alerts", "Count", QString::number(shortTitles.size()));
        SaveCache("Alerts", "short-title" + QString::number(shortTitles.size() + 1), "Beyond");
    }
};

TEST_F(AlertTextTest, InfoJoinsShortTitlesAndKeepsTheAmpersandForTheLastAlert)
{
    const std::tuple<QStringList, const char *, const char *> cases[] = {
        {{"", ""}, "N/A", "N/A"},
        {{"A", "B", "C"}, "A, B & C", "A, B &amp; C"},
        {{"A", "", "C"}, "A & C", "A &amp; C"},
        {{"A", "B", ""}, "A, B", "A, B"}};
    for (const auto &[titles, plain, html] : cases) {
        store(titles);
        EXPECT_EQ(GetAlertsInfo(false), plain);
        EXPECT_EQ(GetAlertsInfo(true), html);
    }
}

TEST_F(AlertTextTest, HtmlMarksUpHeadingsSectionsAndSeparators)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Flood Watch<br><br>Rain.", "Flood Watch<br><br>Rain."},
        // a capital first line of 100 characters or more stays as it is
        {R"(HEAVY RAIN AND STRONG WINDS ARE EXPECTED ACROSS THE COAST RANGE AND THE VALLEY FLOOR THROUGH SUNDAY NIGHT\nRain.)",
         "HEAVY RAIN AND STRONG WINDS ARE EXPECTED ACROSS THE COAST RANGE AND THE VALLEY FLOOR "
         "THROUGH SUNDAY NIGHT Rain."},
        {"Intro<br>FLOOD WATCH... for the coast",
         "Intro<br><strong>FLOOD WATCH</strong> for the coast"},
        {R"(Rain.\n\n&&\r\n\r\nLAT...LON 4567)", "Rain.<br><br><hr><br>LAT, LON 4567"},
        {"One.<br><br><br><br>Two<br>.Three...", "One.<br><br>Two<br>Three"},
        {R"(ALERT\nNational Weather Service Portland OR\n120 PM PST Fri Dec 20 2019\n\n...FLOOD WATCH... Rain.)",
         "<STRONG>ALERT</STRONG><br><br>FLOOD WATCH Rain."}};
    for (const auto &[body, html] : cases) {
        store({""}, body);
        EXPECT_EQ(GetAlertsFullText(true, false), html) << body;
    }
}

TEST_F(AlertTextTest, PlainRunsLinesIntoSentences)
{
    const std::pair<const char *, const char *> cases[] = {{"Rain  and  wind", "Rain and wind"},
                                                           {"One\r\nTwo\nThree", "One. Two. Three"},
                                                           {"Note: \nRain...", "Note: Rain"}};
    for (const auto &[body, plain] : cases) {
        store({""}, body);
        EXPECT_EQ(GetAlertsFullText(false, false), plain) << body;
    }
}

} // namespace
