#include "derive/units.h"

#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/derive/localecase.h"

#include <functional>

using namespace Tarnby;
using Tarnby::Test::LocaleTest;

namespace
{

class UnitsTest : public LocaleTest
{
};

struct ConversionCase {
    std::function<QString(const QString &)> convert;
    const char *input;
    const char *expected; // "." decimals, "," groups
};

void expectConversions(const std::vector<ConversionCase> &cases,
                       const std::function<QString(const char *)> &local)
{
    for (const ConversionCase &c : cases)
        EXPECT_EQ(c.convert(local(c.input)), local(c.expected)) << c.input;
}

TEST_P(UnitsTest, ToCelsiusConvertsWhenForcedOrTheUnitIsCelsius)
{
    const auto forced = [](const QString &v) { return ToCelsius(v, true); };
    const auto unforced = [](const QString &v) { return ToCelsius(v, false); };
    const auto local = [this](const char *t) { return this->local(t); };
    setUnits("F");
    expectConversions({{forced, "32", "0"},
                       {forced, "72", "22"},
                       {forced, "-40", "-40"},
                       {forced, "31.5", "0"}, // rounds to zero: "0", never "" or "-0"
                       {forced, "32.2", "0"},
                       {forced, "abc", "-18"}, // no number reads as 0°F
                       {forced, "N/A", "N/A"},
                       {forced, " n/a ", " n/a "},
                       {forced, "", ""},
                       {forced, "1e400", "N/A"},
                       {unforced, "72", "72"},
                       {unforced, "abc", "abc"}},
                      local);
    conversionOptions().useTenths = true;
    expectConversions({{forced, "32.5", "0.3"},
                       {forced, "0", "-17.8"},
                       {forced, "98.6", "37"}, // 37.0 tidied
                       {forced, "31.9", "-0.1"}},
                      local);
    setUnits("C");
    expectConversions({{unforced, "72", "22.2"}}, local);
}

TEST_P(UnitsTest, CommaNotationAlwaysReadsAsADecimal)
{
    setUnits("C");
    EXPECT_EQ(ToCelsius("98,6"), "37");
    EXPECT_EQ(PressureFromInches("29,92", "hPa"), local("1013.2"));
}

TEST_P(UnitsTest, TemperatureHelpersKeepThePicture)
{
    const auto local = [this](const char *t) { return this->local(t); };
    setUnits("C");
    expectConversions({{FahrenheitFromCelsius, "100", "212.0"},
                       {FahrenheitFromCelsius, "37", "98.6"},
                       {FahrenheitFromCelsius, "-17.7778", ".0"},
                       {FahrenheitFromCelsius, "N/A", "N/A"},
                       {RateToFahrenheit, "2", "3.6"},
                       {RateToFahrenheit, "-1.5", "-2.7"}},
                      local);
    setUnits("F");
    EXPECT_EQ(RateToFahrenheit("2"), "2");
}

TEST_P(UnitsTest, DisplayConversionsNudgeFormatAndTidy)
{
    const auto local = [this](const char *t) { return this->local(t); };
    const auto with = [](QString (*f)(const QString &, const QString &), const char *unit) {
        return [f, unit](const QString &v) { return f(v, unit); };
    };
    expectConversions(
        {
            {with(PressureFromInches, "mm"), "29.92", "760"},
            {with(PressureFromInches, "hPa"), "29.92", "1013.2"},
            {with(PressureFromInches, "mb"), "29.92", "1013.2"},
            {with(PressureFromInches, "kPa"), "29.92", "101.3"},
            {with(PressureFromInches, "hPa"), "0", "0"},
            {with(PressureFromInches, "hPa"), "1e308", "N/A"}, // the product overflows
            {with(PressureFromInches, "inches"), "29.92", "29.92"},
            {with(PressureFromInches, "furlongs"), "29.92", "29.92"},
            {with(RainFromInches, "mm"), "1", "25.4"},
            {with(RainFromInches, "cm"), "0.5", "1.3"},
            {with(RainFromInches, "mm"), "0", "0"},
            {with(RainFromInches, "mm"), "100", "2,540"},
            {with(RainFromInches, "mm"), "N/A", "N/A"},
            {with(RainFromInches, "inches"), "1", "1"},
            {with(VisibilityFromMiles, "km"), "10", "16.1"},
            {with(VisibilityFromMiles, "miles"), "10", "10"},
            {with(WindFromMph, "km/h"), "10", "16.1"},
            {with(WindFromMph, "km/h"), "1000", "1,609.3"},
            {with(WindFromMph, "km/h"), "0", "0.0"},
            {with(WindFromMph, "m/s"), "10", "4.5"},
            {with(WindFromMph, "kts"), "10", "8.7"},
            {with(WindFromMph, "mph"), "5", "5"},
            {with(WindFromMph, "bft"), "0", "0"},
            {with(WindFromMph, "bft"), "73", "11"},
            {with(WindFromMph, "bft"), "73.2", "12"}, // 32.7 m/s
            {with(WindFromMph, "bft"), "N/A", "N/A"},
        },
        local);
}

TEST(Beaufort, LimitsBelongToTheHigherNumber)
{
    const std::pair<double, int> cases[] = {{-1, 0},    {0, 0},     {0.29, 0}, {0.3, 1},
                                            {1.6, 2},   {10.79, 5}, {10.8, 6}, {32.69, 11},
                                            {32.7, 12}, {60, 12}};
    for (const auto &[speed, number] : cases)
        EXPECT_EQ(BeaufortNumber(speed), number) << speed;
}

TEST_P(UnitsTest, ProviderHelpersGiveThePictureUntidied)
{
    const auto local = [this](const char *t) { return this->local(t); };
    expectConversions({{InchesFromMillimetres, "25.4", "1."},
                       {InchesFromCentimetres, "2.54", "1."},
                       {MilesFromMetres, "16090", "10."},
                       {MilesFromMetres, "1000", "0.62"},
                       {MilesPerHourFromMetresPerSecond, "10", "22.37"},
                       {MilesPerHourFromKnots, "10", "12"},
                       {KnotsFromMilesPerHour, "10", "8.69"},
                       {KnotsFromMilesPerHour, "11.5078", "10.00"},
                       {InchesFromPascals, "101325", "29.92"},
                       {InchesFromPascals, "1000", ".30"},
                       {InchesFromPascals, "N/A", "N/A"}},
                      local);
    EXPECT_EQ(InchesFromMillimetres("0"), GetParam().decimal);
}

TEST(TidyNumberText, RepairsThePicturesLeftovers)
{
    const std::pair<const char *, const char *> cases[] = {
        {".5", "0.5"},   {",5", "0,5"},   {" 5", "0 5"},    {"-.5", "-0.5"},
        {"-,5", "-0,5"}, {"- 5", "-0 5"}, {"5.", "5"},      {"5,", "5"},
        {"5 ", "5"},     {"", ""},        {".", "0"},       {"-.", "-0"},
        {"-", "-"},      {"abc", "abc"},  {"12.5", "12.5"}, {"N/A", "N/A"},
    };
    for (const auto &[text, tidy] : cases)
        EXPECT_EQ(TidyNumberText(text), tidy) << text;
}

TEST_P(UnitsTest, InvariantAndLocaleFormsSwapOnlyForANonUsLocale)
{
    const bool swaps = process().NonUsNumberFormat;
    EXPECT_EQ(ToLocaleNumber("1.5"), swaps ? "1,5" : "1.5");
    EXPECT_EQ(ToInvariantNumber(ToLocaleNumber("1.5")), "1.5");
    EXPECT_EQ(ToLocaleNumber("1,234.5"), swaps ? "1.234,5" : "1,234.5");
    EXPECT_EQ(ToInvariantNumber(local("1,234.5")), "1,234.5");
    for (const char *other : {"N/A", "", "abc", "12 mph"}) {
        EXPECT_EQ(ToLocaleNumber(other), other);
        EXPECT_EQ(ToInvariantNumber(other), other);
    }
}

TEST_P(UnitsTest, LoadConversionSettingsFillsDefaultsForEmptyKeys)
{
    setUnits("C", "km/h", "hPa", "mm", "km");
    process().RoundWind = true;
    conversionOptions().bothUnits = true;
    LoadConversionSettings();
    EXPECT_EQ(process().UnitTemp, "F");
    EXPECT_EQ(process().UnitWind, "mph");
    EXPECT_EQ(process().UnitBar, "inches");
    EXPECT_EQ(process().UnitPre, "inches");
    EXPECT_EQ(process().UnitVis, "miles");
    EXPECT_FALSE(process().RoundWind);
    EXPECT_FALSE(conversionOptions().bothUnits);

    const std::pair<const char *, const char *> stored[] = {
        {"Temp", "C"},
        {"Wind", "bft"},
        {"Bar", "kPa"},
        {"Pre", "cm"},
        {"Vis", "km"},
        {"Both", "True"},
        {"UseTenths", "True"},
        {"WindInDegrees", "true"},
        {"RoundWindSpeed", "True"},
    };
    for (const auto &[key, value] : stored)
        SavePref("Conversion", key, value);
    LoadConversionSettings();
    EXPECT_EQ(process().UnitTemp, "C");
    EXPECT_EQ(process().UnitWind, "bft");
    EXPECT_EQ(process().UnitBar, "kPa");
    EXPECT_EQ(process().UnitPre, "cm");
    EXPECT_EQ(process().UnitVis, "km");
    EXPECT_TRUE(process().RoundWind);
    EXPECT_TRUE(conversionOptions().bothUnits);
    EXPECT_TRUE(conversionOptions().useTenths);
    EXPECT_FALSE(conversionOptions().windInDegrees); // "True" is compared exactly
}

void saveAll(const QString &section, const std::vector<std::pair<const char *, QString>> &values)
{
    for (const auto &[key, value] : values)
        SaveCache(section, key, value);
}

TEST_P(UnitsTest, CurrentTwinsAreWrittenForEachNonUsUnit)
{
    process().CityCode = "KDSM";
    saveAll("Current", {{"pressure", local("29.92")},
                        {"pressure-rate", local("-0.03")},
                        {"visibility", "10"},
                        {"rain-today", local("0.5")},
                        {"rain-rate-max", "N/A"},
                        {"temp", "72"},
                        {"temp-rate", local("2.5")},
                        {"dew-point", ""},
                        {"wind-speed", "10"},
                        {"gust-speed", "abc"}});
    setUnits("C", "km/h", "hPa", "mm", "km");
    WriteCurrentTwins();
    const std::pair<const char *, const char *> expected[] = {
        {"pressureC", "1013.2"}, {"pressure-rateC", "-1"}, {"pressure-highC", ""},
        {"visibilityC", "16.1"}, {"rain-todayC", "12.7"},  {"rain-rate-maxC", "N/A"},
        {"tempC", "22"},         {"temp-rateC", "4.5"},    {"dew-pointC", ""},
        {"wind-speedC", "16.1"}, {"gust-speedC", "0.0"},
    };
    for (const auto &[key, value] : expected)
        EXPECT_EQ(GetCache("Current", key), local(value)) << key;
}

TEST_P(UnitsTest, UsUnitsWriteNoTwinsButBothUnitsWriteCelsius)
{
    process().CityCode = "KDSM";
    saveAll("Current",
            {{"pressure", "30"}, {"temp", "50"}, {"wind-speed", "10"}, {"temp-rate", "1"}});
    setUnits("F");
    WriteCurrentTwins();
    for (const char *twin : {"pressureC", "tempC", "wind-speedC", "temp-rateC"})
        EXPECT_EQ(GetCache("Current", twin), "") << twin;
    conversionOptions().bothUnits = true;
    WriteCurrentTwins();
    EXPECT_EQ(GetCache("Current", "tempC"), "10");
    EXPECT_EQ(GetCache("Current", "temp-rateC"), "1"); // a rate stays as it is for "F"
    EXPECT_EQ(GetCache("Current", "wind-speedC"), "");
}

TEST_P(UnitsTest, HourlyTwinsStopAtTheCount)
{
    process().CityCode = "KDSM";
    saveAll("Hourly", {{"count", "2"},
                       {"temperature1", "32"},
                       {"dew-point1", "N/A"},
                       {"feels-like1", "41"},
                       {"wind-speed1", "10"},
                       {"temperature2", "50"},
                       {"wind-speed2", "0"},
                       {"temperature3", "70"}});
    setUnits("C", "m/s");
    WriteHourlyTwins();
    const std::pair<const char *, const char *> expected[] = {
        {"temperature1C", "0"},  {"dew-point1C", "N/A"},  {"feels-like1C", "5"},
        {"wind-speed1C", "4.5"}, {"temperature2C", "10"}, {"wind-speed2C", "0.0"},
        {"temperature3C", ""},
    };
    for (const auto &[key, value] : expected)
        EXPECT_EQ(GetCache("Hourly", key), local(value)) << key;
}

TARNBY_BOTH_LOCALES(UnitsTest);

} // namespace
