#include "providers/textcutters.h"

#include "core/processvalues.h"
#include "tests/support/testprofile.h"

using namespace Tarnby;

namespace
{

TEST(ExtractBetweenTest, CutsBetweenMarks)
{
    const struct {
        QString text, startMark, endMark, prefix;
        int cutRight;
        bool mustExist;
        QString expected;
    } rows[] = {
        {"a[b]c", "[", "]", "", 0, false, "b"},
        {"a[bc", "[", "", "", 0, false, "bc"},   // an empty end mark takes the rest
        {"a[bc", "[", "]", "", 0, true, "a[bc"}, // a missing end gives all, even when required
        {"A[b]", "a[", "]", "", 0, true, ""},    // the start is case-sensitive
        {"a[bcd]", "[", "]", "x", 1, false, "xbc"},
        {"abc", "[", "]", "p", 1, false, "abc"}}; // no prefix on the whole text of a miss
    for (const auto &r : rows)
        EXPECT_EQ(ExtractBetween(r.text, r.startMark, r.endMark, r.prefix, r.cutRight, r.mustExist),
                  r.expected)
            << r.text.toStdString() << " " << r.startMark.toStdString() << r.cutRight;
}

TEST(CutBetweenMarksTest, NothingUnlessBothMarksStand)
{
    EXPECT_EQ(CutBetweenMarks("a[b]c", "[", "]"), QString("b"));
    EXPECT_EQ(CutBetweenMarks("]a[b", "[", "]"), std::nullopt); // the end only counts behind
}

const QString kDocument =
    QStringLiteral("{\r\n  \"temperature\": 72.50,\r\n  \"humidity\": 95.0,\r\n"
                   "  \"rate\": -0.02,\r\n  \"name\": \"Lake \\\"North\\\"\",\r\n"
                   "  \"gone\": null,\r\n  \"on\": true,\r\n  \"off\": false,\r\n"
                   "  \"blank\": \"\",\r\n  \"inner\": {\r\n"
                   "    \"last\": 3\r\n  }\r\n}");

TEST(ReadJsonValueTest, ReadsOneValueALine)
{
    Tarnby::Test::TestProfile profile;
    const struct {
        QString document, key, expected;
    } rows[] = {{kDocument, "temperature", "72.5"},
                {kDocument, "last", "3"}, // the last value, without a comma
                {kDocument, "name", "Lake \\North\\"},
                {kDocument, "gone", "NA"},
                {kDocument, "blank", "NA"},
                // the cutter hands back the whole document, which reads as no number
                {kDocument, "pressure", "NA"},
                {QString(kDocument).remove(QLatin1Char('\r')), "temperature", "NA"},
                {"{\r\n\"temperature\":72\r\n}", "temperature", "NA"}}; // needs ": "
    for (const auto &r : rows)
        EXPECT_EQ(ReadJsonValue(r.document, r.key), r.expected) << r.key.toStdString();
    // numbers come in the locale's form
    process().DecimalSymbol = ",";
    process().GroupSymbol = ".";
    process().NonUsNumberFormat = true;
    EXPECT_EQ(ReadJsonValue(kDocument, "rate"), "-0,02");
}

TEST(ReadJsonText, CutsToTheNextQuoteComma)
{
    const QString document = "{\r\n\"a\": \"x, \\\"y\\\"\",\r\n\"b\": 1\r\n}";
    EXPECT_EQ(ReadJsonText(document, "a"), "x, \\\"y\\\"");
    EXPECT_EQ(ReadJsonText(document, "missing"), document);
}

TEST(TextAfterLast, TakesWhatFollowsTheLastMark)
{
    EXPECT_EQ(TextAfterLast("a/b/c.png", "/"), "c.png");
    EXPECT_EQ(TextAfterLast("a/b/c.png", "/", true), "/c.png");
    EXPECT_EQ(TextAfterLast("abc/", "/"), "");
}

TEST(KeepNumberCharactersTest, KeepsDigitsSignsAndMarks)
{
    Tarnby::Test::TestProfile profile;
    const struct {
        QString text, kind, expected;
    } rows[] = {
        {"NA", "", ""}, {"12a3°", "", "123"}, {"73.5 %", "Humidity", "74"}, {"-", "Humidity", "-"}};
    for (const auto &r : rows)
        EXPECT_EQ(KeepNumberCharacters(r.text, r.kind), r.expected) << r.text.toStdString();
}

} // namespace
