// The value formatters and the temperature suffixes, in both unit modes.

#include "tests/template/templatetest.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "derive/units.h"
#include "template/formatters.h"

#include <gtest/gtest.h>

using namespace Tarnby;
using Tarnby::Test::TemplateTest;

namespace
{

QString u8(const char *text)
{
    return QString::fromUtf8(text);
}

// One suffix of [TEMP ...] with temp 72.5 and tempC 22.5, as it reads for a °F user with
// one unit and with both, and for a °C user likewise. Rounding is half to even: 72, 22.
// The golden skin holds the other suffixes for a °F user with both units.
struct SuffixCase {
    const char *suffix;
    const char *fahrenheit;
    const char *fahrenheitBoth;
    const char *celsius;
    const char *celsiusBoth;
};

const SuffixCase kSuffixes[] = {
    {"", "72.5°F", "72.5°F/22.5°C", "22.5°C", "22.5°C/72.5°F"},
    {"ROUND", "72°F", "72°F/22°C", "22°C", "22°C/72°F"},
    {"DEGREE TENTHS", "72.5°", "72.5°/22.5°", "22.5°", "22.5°/72.5°"},
    {"PLAIN SINGLE", "72.5", "72.5", "22.5", "22.5"},
    {"RETURN", "72.5°F", "72.5°F<BR />22.5°C", "22.5°C", "22.5°C<BR />72.5°F"},
    {"PARENS", "72.5°F", "72.5°F (22.5°C)", "22.5°C", "22.5°C (72.5°F)"},
    {"PLAIN NOT CONVERTED", "72.5", "72.5", "72.5", "72.5"}};

TEST_F(TemplateTest, TemperatureSuffixDressesTheValueInEveryUnitMode)
{
    cache("Current", "temp", "72.5");
    cache("Current", "tempC", "22.5");
    for (const SuffixCase &c : kSuffixes) {
        SCOPED_TRACE(c.suffix);
        const QString suffix = QString::fromLatin1(c.suffix);
        const QString token =
            suffix.isEmpty() ? QStringLiteral("[TEMP]") : QStringLiteral("[TEMP %1]").arg(suffix);
        setUnits("F", false);
        EXPECT_EQ(expand(token), u8(c.fahrenheit));
        setUnits("F", true);
        EXPECT_EQ(expand(token), u8(c.fahrenheitBoth));
        setUnits("C", false);
        EXPECT_EQ(expand(token), u8(c.celsius));
        setUnits("C", true);
        EXPECT_EQ(expand(token), u8(c.celsiusBoth));
    }
}

// Only the listed combinations of stem and suffix exist; the others stay in the text.
TEST_F(TemplateTest, StemsHaveOnlyTheirOwnSuffixes)
{
    for (const char *key :
         {"dew-point-high", "feels-like", "temp-rate", "temp-high", "humidex", "wet-bulb"})
        cache("Current", key, "70");
    const QStringList absent = {
        "[DEW HIGH ROUND]",  "[FEELS ROUND]",   "[FEELS PLAIN SINGLE]", "[TEMP RATE ROUND]",
        "[TEMP HIGH ROUND]", "[HUMIDEX PLAIN]", "[WET BULB]",           "[DEW LOW RETURN ROUND]"};
    for (const QString &token : absent)
        EXPECT_EQ(expand(token), token);
    EXPECT_EQ(expand("[TEMP HIGH DEGREE TENTHS]"), u8("70.0°"));
    EXPECT_EQ(expand("[WET BULB TEMP]"), u8("70°F"));
}

TEST_F(TemplateTest, MissingTemperatureIsNotAvailableInBothModes)
{
    setUnits("F", true);
    EXPECT_EQ(expand("[TEMP] [TEMP PLAIN NOT CONVERTED] [TEMP PLAIN NOT CONVERTED ROUND]"),
              "N/A N/A ");
    setUnits("C", false);
    cache("Current", "temp", "N/A");
    EXPECT_EQ(expand("[TEMP ROUND]"), "N/A");
}

TEST_F(TemplateTest, TenthsApplyInOneUnitOnly)
{
    cache("Current", "temp", "72");
    cache("Current", "tempC", "22.2");
    EXPECT_EQ(expand("[TEMP DEGREE TENTHS]"), u8("72.0°"));
    setUnits("F", true);
    EXPECT_EQ(expand("[TEMP DEGREE TENTHS]"), u8("72°/22.2°"));
}

TEST_F(TemplateTest, CelsiusWithTenthsIsNeverRoundedUnlessWhole)
{
    setUnits("C", false);
    SavePref("Conversion", "UseTenths", "True");
    cache("Current", "temp", "72.5");
    cache("Current", "tempC", "22.5");
    EXPECT_EQ(expand("[TEMP ROUND] [TEMP PLAIN ROUND SINGLE]"), u8("22.5°C 22.5"));
    TemperatureDress whole = TemperatureDress::fromSuffix(u"SINGLE PLAIN WHOLE");
    EXPECT_EQ(FormatTemperature("Current", "temp", whole), "22");
}

TEST(Rounding, SinglePrecisionThenHalfToEven)
{
    EXPECT_EQ(RoundedWhole("2.5000001"), "2"); // 2.5 in single precision
    EXPECT_EQ(RoundedWhole("3.5"), "4");
    EXPECT_EQ(RoundedWhole("-2.5"), "-2");
    EXPECT_EQ(RoundedWhole("40000"), std::nullopt);
    EXPECT_EQ(RoundedWhole("Calm"), std::nullopt);
    EXPECT_EQ(RoundedOrSame("Calm"), "Calm");
}

TEST_F(TemplateTest, GivenValueHasNoTwinAndRateHasOneUnit)
{
    setUnits("F", true);
    EXPECT_EQ(FormatTemperature("Hourly", "72", TemperatureDress{}, true), u8("72°F/°C"));
    cache("Current", "temp-rate", "1.2");
    EXPECT_EQ(expand("[TEMP RATE PLAIN]"), u8("1.2"));
}

TEST_F(TemplateTest, RainVisibilityAndPercent)
{
    cache("Current", "rain-today", "0.00");
    cache("Current", "rain-todayC", "0.00");
    cache("Current", "visibility", "10");
    cache("Current", "visibilityC", "16.1");
    cache("Current", "humidity", "59.5");
    EXPECT_EQ(expand("[RAIN TODAY]|[RAIN MONTH]|[HUMIDITY ROUND]"), "0 inches|N/A|60%");
    process().UnitPre = "mm";
    process().UnitVis = "km";
    EXPECT_EQ(expand("[RAIN TODAY] [RAIN TODAY PLAIN] [VISIBILITY PLAIN]"), "0 mm 0 16.1");
}

TEST_F(TemplateTest, BarometerTrend)
{
    cache("Current", "pressure", "29.92");
    cache("Current", "pressure-rate", "-0.02");
    EXPECT_EQ(expand("[BAROMETER]|[BAROMETER RATE]|[BAROMETER PLAIN]"),
              "29.92 inches and falling|-0.02 inches|29.92");
    cache("Current", "pressure-rate", "N/A");
    cache("Cache", "last-pressure", "29.90");
    EXPECT_EQ(expand("[BAROMETER]"), "29.92 inches and rising");
    cache("Cache", "last-pressure", "29.92");
    EXPECT_EQ(expand("[BAROMETER]"), "29.92 inches and steady");
    process().UnitBar = "hPa";
    cache("Current", "pressureC", "1013.2");
    EXPECT_EQ(expand("[BAROMETER] [BAROMETER PLAIN NOT CONVERTED]"), "1013.2 hPa and steady 29.92");
}

TEST_F(TemplateTest, WindSpeedDirectionAndGust)
{
    cache("Current", "wind-speed", "8");
    cache("Current", "wind-direction", "NW");
    cache("Current", "gust-speed", "15");
    EXPECT_EQ(expand("[WIND FULL]|[WIND NO GUST]"), "NW 8 mph gusting to 15 mph|NW 8 mph");
    SavePref("Conversion", "WindInDegrees", "True");
    EXPECT_EQ(expand("[WIND NO GUST] [WIND DIRECTION] [WIND DIRECTION PLAIN]"),
              u8("315° 8 mph 315° NW"));
    cache("Current", "wind-speed", "1000");
    EXPECT_EQ(expand("[WIND]"), "1000");
    cache("Current", "wind-speed", "Calm");
    EXPECT_EQ(expand("[WIND FULL]"), "Calm");
    process().UnitWind = "km/h";
    cache("Current", "wind-speed", "8");
    cache("Current", "gust-speedC", "24.1");
    EXPECT_EQ(expand("[WIND NO DIRECTION]"), "12.9 km/h gusting to 24.1 km/h");
}

TEST(CompassToDegrees, TruncatedWholeDegrees)
{
    EXPECT_EQ(CompassToDegrees("NNE", false, false), "22");
    EXPECT_EQ(CompassToDegrees("S", true, false), "0");
    EXPECT_EQ(CompassToDegrees("NW", true, false), "135");
    EXPECT_EQ(CompassToDegrees("Variable", false, true), u8("0°"));
}

TEST_F(TemplateTest, UvFromConditionsOrTodaysForecast)
{
    cache("Current", "uv", "6");
    EXPECT_EQ(expand("[UV] [UV DESCRIPTION]"), "6 6 (High)");
    cache("Current", "uv", "N/A");
    cache("UV", "date1", "6/14/2024");
    cache("UV", "index1", "10.6");
    EXPECT_EQ(expand("[UV DESCRIPTION]"), "11 (Extreme)");
    cache("UV", "date1", "6/13/2024");
    EXPECT_EQ(expand("[UV]"), "N/A");
}

TEST_F(TemplateTest, ConditionFallsBackByStation)
{
    cache("Daily", "short-title11", "Sunny");
    cache("Hourly", "weather-icon-description1", "Clear");
    SavePref("CityCode", "ZipCode", "50010");
    EXPECT_EQ(CurrentCondition(), "Clear");
    SavePref("CityCode", "ZipCode", "0");
    EXPECT_EQ(CurrentCondition(), "Sunny");
    cache("Current", "description", "Haze");
    EXPECT_EQ(CurrentCondition(), "Haze");
}

TEST(ChanceLevels, Thresholds)
{
    const struct {
        const char *value, *chance, *cloud;
    } cases[] = {{"14", "0", "0"}, {"15", "1", "0"}, {"29", "1", "0"},         {"30", "2", "1"},
                 {"69", "2", "1"}, {"70", "3", "2"}, {"40% chance", "2", "0"}, {"N/A", "0", "0"}};
    for (const auto &c : cases) {
        EXPECT_EQ(ChanceLevel({}, {}, c.value), c.chance) << c.value;
        EXPECT_EQ(CloudLevel({}, {}, c.value), c.cloud) << c.value;
    }
    EXPECT_EQ(FormatChance({}, "chance", true, true), "Chance");
    EXPECT_EQ(FormatChance({}, "40", true, true), "40%");
    EXPECT_EQ(FormatChance({}, "", true, true), "N/A");
}

} // namespace
