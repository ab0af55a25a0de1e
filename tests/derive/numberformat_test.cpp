#include "derive/numberformat.h"
#include "tests/derive/localecase.h"

#include <cmath>
#include <limits>
#include <optional>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

constexpr NumberSymbols kDot{'.', ','};
constexpr NumberSymbols kComma{',', '.'};
const double kInf = std::numeric_limits<double>::infinity();

struct PictureCase {
    double value;
    const char *picture;
    const char *shown; // with "." decimals and "," groups
};

// The quirks of the desktop platform's pictures are kept: all-"#" pictures show no zero
// whole part, and a picture's point is shown even with no decimals behind it. Not kept: a
// negative value shown as zero loses its sign. Rounding is half away from zero, on the
// value's decimal digits (2.345 is 2.35). An empty picture is the general form.
// clang-format off
const PictureCase kPictures[] = {
    {5, "###.#", "5."}, {0, "###", ""}, {-0.5, "###.#", "-.5"}, {-0.01, "0.0", "0.0"},
    {999999.96, "###,##0.0", "1,000,000.0"}, {1.5, "##0.#0", "1.50"}, {1.005, "0.00", "1.01"},
    {-2.5, "##0", "-3"}, {1e20, "0", "100000000000000000000"}, {0.1 + 0.2, "", "0.3"},
    {std::nan(""), "0", ""}, {kInf, "###", ""}};
// clang-format on

TEST(FormatNumber, FollowsThePictureInEitherSymbolSet)
{
    for (const PictureCase &c : kPictures) {
        EXPECT_EQ(formatNumber(c.value, QString(c.picture), kDot), c.shown)
            << c.picture << " " << c.value;
        EXPECT_EQ(formatNumber(c.value, QString(c.picture), kComma),
                  inLocale(c.shown, kCommaDayFirst))
            << c.picture << " " << c.value;
    }
    EXPECT_EQ(formatNumber(1234567.25, u"###,###.##", {',', QChar()}), "1234567,25");
}

TEST(FormatNumber, UsesTheProcessSymbols)
{
    process() = ProcessValues{};
    process().DecimalSymbol = ",";
    process().GroupSymbol = " ";
    EXPECT_EQ(formatNumber(1234.5, u"###,###.#"), "1 234,5");
    process().DecimalSymbol = ""; // a locale that reports nothing falls back on "."
    process().GroupSymbol = "";
    EXPECT_EQ(formatNumber(1234.5, u"###,###.#"), "1234.5");
    process() = ProcessValues{};
}

struct ReadCase {
    const char *text;
    std::optional<double> leading; // leadingNumber
    std::optional<double> read;    // readNumber
};

// Blanks inside are passed over; "29,92" is how a comma locale stores a value.
// clang-format off
const ReadCase kReads[] = {
    {"abc", 0, 0}, {"  -3.5x", -3.5, -3.5}, {"1 000", 1000, 1000}, {"2D2", 200, 200},
    {"1e", 1, 1}, {"-1e400", std::nullopt, std::nullopt}, {"1e-400", 0, 0},
    {"29,92", 29, 29.92}, {"1,234.5", 1, 1.234}};
// clang-format on

TEST(ReadNumber, TakesTheLeadingNumber)
{
    for (const ReadCase &c : kReads) {
        EXPECT_EQ(leadingNumber(QString(c.text)), c.leading) << c.text;
        EXPECT_EQ(readNumber(QString(c.text)), c.read) << c.text;
    }
    EXPECT_EQ(leadingNumber(QString("1") + QString(400, '0')), std::nullopt);
    EXPECT_EQ(leadingNumber(QString("0.") + QString(400, '0') + "1"), 0.0);
}

struct NumericCase {
    const char *text;
    bool dot;
    bool comma;
};

const NumericCase kNumerics[] = {{"", false, false},       {".", false, false},
                                 {" -3.5 ", true, true},   {".5", true, false},
                                 {",5", false, true},      {"1e400", false, false},
                                 {"1,234.5", true, false}, {"1.234,5", false, true},
                                 {"inf", false, false},    {"1 000", false, false}};

TEST(IsNumeric, AcceptsTheLocaleForms)
{
    for (const NumericCase &c : kNumerics) {
        EXPECT_EQ(isNumeric(QString(c.text), kDot), c.dot) << c.text;
        EXPECT_EQ(isNumeric(QString(c.text), kComma), c.comma) << c.text;
    }
}

TEST(RoundToInt16, RoundsHalfToEvenWithinSixteenBits)
{
    // clang-format off
    const std::pair<double, std::optional<qint16>> cases[] = {
        {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.51, 3}, {32767.4, 32767}, {32767.5, std::nullopt},
        {-32768.5, -32768}, {-32769, std::nullopt}, {kInf, std::nullopt}, {std::nan(""), std::nullopt}};
    // clang-format on
    for (const auto &[value, expected] : cases)
        EXPECT_EQ(roundToInt16(value), expected) << value;
}

} // namespace
