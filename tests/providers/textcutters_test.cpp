#include "providers/textcutters.h"

#include "core/processvalues.h"
#include "tests/support/testprofile.h"

using namespace Tarnby;

namespace
{

struct ExtractCase {
    const char *name;
    QString text, startMark, endMark, prefix;
    int cutRight;
    bool mustExist;
    QString expected;
};

class ExtractBetweenTest : public ::testing::TestWithParam<ExtractCase>
{
};

TEST_P(ExtractBetweenTest, CutsBetweenMarks)
{
    const ExtractCase &c = GetParam();
    EXPECT_EQ(ExtractBetween(c.text, c.startMark, c.endMark, c.prefix, c.cutRight, c.mustExist),
              c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractBetweenTest,
    ::testing::Values(
        ExtractCase{"BetweenMarks", "a[b]c", "[", "]", "", 0, false, "b"},
        ExtractCase{"EndIsSoughtBehindStart", "]x[b]c", "[", "]", "", 0, false, "b"},
        ExtractCase{"EmptyEndMarkTakesTheRest", "a[bc", "[", "", "", 0, false, "bc"},
        ExtractCase{"MissingStartGivesWholeText", "abc", "[", "]", "", 0, false, "abc"},
        ExtractCase{"MissingStartMustExistGivesEmpty", "abc", "[", "]", "", 0, true, ""},
        ExtractCase{"MissingEndGivesWholeTextEvenWhenMustExist", "a[bc", "[", "]", "", 0, true,
                    "a[bc"},
        ExtractCase{"StartIsCaseSensitive", "A[b]", "a[", "]", "", 0, true, ""},
        ExtractCase{"CutRightAndPrefix", "a[bcd]", "[", "]", "x", 1, false, "xbc"},
        ExtractCase{"CutRightBeyondTheCutLeavesOnlyPrefix", "a[b]", "[", "]", "p", 5, false, "p"},
        ExtractCase{"PrefixNotOnTheWholeTextOfAMiss", "abc", "[", "]", "p", 1, false, "abc"},
        ExtractCase{"EmptyBetweenMarks", "a[]c", "[", "]", "", 0, true, ""}),
    [](const auto &info) { return std::string(info.param.name); });

TEST(CutBetweenMarksTest, NothingUnlessBothMarksStand)
{
    EXPECT_EQ(CutBetweenMarks("a[b]c", "[", "]"), QString("b"));
    EXPECT_EQ(CutBetweenMarks("a[]c", "[", "]"), QString(""));
    EXPECT_EQ(CutBetweenMarks("]a[b", "[", "]"), std::nullopt); // the end only counts behind
    EXPECT_EQ(CutBetweenMarks("abc", "[", "]"), std::nullopt);
    EXPECT_EQ(CutBetweenMarks("", "[", "]"), std::nullopt);
}

struct JsonCase {
    const char *name;
    QString document;
    QString key;
    QString expected;
};

class ReadJsonValueTest : public Test::ProfileTest, public ::testing::WithParamInterface<JsonCase>
{
};

const QString kDocument =
    QStringLiteral("{\r\n  \"temperature\": 72.50,\r\n  \"humidity\": 95.0,\r\n"
                   "  \"rate\": -0.02,\r\n  \"name\": \"Lake \\\"North\\\"\",\r\n"
                   "  \"gone\": null,\r\n  \"on\": true,\r\n  \"off\": false,\r\n"
                   "  \"blank\": \"\",\r\n  \"inner\": {\r\n"
                   "    \"last\": 3\r\n  }\r\n}");

TEST_P(ReadJsonValueTest, ReadsOneValueALine)
{
    const JsonCase &c = GetParam();
    EXPECT_EQ(ReadJsonValue(c.document, c.key), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ReadJsonValueTest,
    ::testing::Values(JsonCase{"NumberLosesTrailingZeros", kDocument, "temperature", "72.5"},
                      JsonCase{"WholeNumber", kDocument, "humidity", "95"},
                      JsonCase{"Negative", kDocument, "rate", "-0.02"},
                      JsonCase{"LastValueWithoutComma", kDocument, "last", "3"},
                      JsonCase{"StringLosesEmbeddedQuotes", kDocument, "name", "Lake \\North\\"},
                      JsonCase{"NullIsNA", kDocument, "gone", "NA"},
                      JsonCase{"True", kDocument, "on", "true"},
                      JsonCase{"False", kDocument, "off", "false"},
                      JsonCase{"EmptyStringIsNA", kDocument, "blank", "NA"},
                      JsonCase{"ObjectIsNA", kDocument, "inner", "NA"},
                      // the cutter hands back the whole document, which reads as no number
                      JsonCase{"MissingKeyIsNA", kDocument, "pressure", "NA"},
                      JsonCase{"LineFeedOnlyDocumentIsNA",
                               QString(kDocument).remove(QLatin1Char('\r')), "temperature", "NA"},
                      JsonCase{"KeyNeedsColonAndBlank", "{\r\n\"temperature\":72\r\n}",
                               "temperature", "NA"}),
    [](const auto &info) { return std::string(info.param.name); });

using ReadJsonValueLocale = Test::ProfileTest;

TEST_F(ReadJsonValueLocale, NumbersComeInTheLocaleForm)
{
    process().DecimalSymbol = ",";
    process().GroupSymbol = ".";
    process().NonUsNumberFormat = true;
    EXPECT_EQ(ReadJsonValue(kDocument, "temperature"), "72,5");
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
    EXPECT_EQ(TextAfterLast("abc", "/"), "");
    EXPECT_EQ(TextAfterLast("abc/", "/"), "");
}

struct KeepCase {
    QString text, kind, expected;
};

class KeepNumberCharactersTest : public Test::ProfileTest,
                                 public ::testing::WithParamInterface<KeepCase>
{
};

TEST_P(KeepNumberCharactersTest, KeepsDigitsSignsAndMarks)
{
    const KeepCase &c = GetParam();
    EXPECT_EQ(KeepNumberCharacters(c.text, c.kind), c.expected) << c.text.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, KeepNumberCharactersTest,
    ::testing::Values(KeepCase{"NA", "", ""}, KeepCase{"29.92 in", "", "29.92"},
                      KeepCase{"+0.02", "", "+0.02"}, KeepCase{"1,234", "", "1,234"},
                      KeepCase{"12a3°", "", "123"}, KeepCase{"95.0", "Humidity", "95"},
                      KeepCase{"72.5", "Humidity", "72"}, KeepCase{"73.5 %", "Humidity", "74"},
                      KeepCase{"NA", "Humidity", ""}, KeepCase{"-", "Humidity", "-"}));

} // namespace
