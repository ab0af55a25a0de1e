#include "derive/units.h"

#include "core/settingsstore.h"
#include "tests/derive/localecase.h"

#include <functional>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

class UnitsTest : public LocaleTest
{
protected:
    // Rows of unit, input and expected result, numbers written with "." decimals.
    void expectEach(QString (*convert)(const QString &, const QString &),
                    std::initializer_list<std::array<const char *, 3>> rows)
    {
        for (const auto &[unit, input, expected] : rows)
            EXPECT_EQ(convert(local(input), unit), local(expected)) << unit << " " << input;
    }
    void expectEach(const std::function<QString(const QString &)> &convert,
                    std::initializer_list<std::array<const char *, 2>> rows)
    {
        for (const auto &[input, expected] : rows)
            EXPECT_EQ(convert(local(input)), local(expected)) << input;
    }
};

TEST_P(UnitsTest, ToCelsiusConvertsWhenForcedOrTheUnitIsCelsius)
{
    const auto forced = [](const QString &v) { return ToCelsius(v, true); };
    setUnits("F");
    // 31.5 rounds to zero: "0", never "" or "-0"; "abc" reads as 0°F.
    // clang-format off
    expectEach(forced, {{"72", "22"}, {"98,6", "37"}, {" n/a ", " n/a "}, {"", ""}, {"1e400", "N/A"},
                        {"31.5", "0"}, {"abc", "-18"}});
    // clang-format on
    EXPECT_EQ(ToCelsius("72"), "72");
    conversionOptions().useTenths = true;
    expectEach(forced, {{"32.5", "0.3"}, {"98.6", "37"}, {"31.9", "-0.1"}});
    setUnits("C");
    EXPECT_EQ(ToCelsius("72"), local("22.2"));
}

TEST_P(UnitsTest, TemperatureHelpersKeepThePicture)
{
    setUnits("C");
    expectEach(FahrenheitFromCelsius, {{"37", "98.6"}, {"-17.7778", ".0"}});
    expectEach(RateToFahrenheit, {{"2", "3.6"}, {"-1.5", "-2.7"}, {"N/A", "N/A"}});
    setUnits("F");
    EXPECT_EQ(RateToFahrenheit("2"), "2");
}

TEST_P(UnitsTest, DisplayConversionsNudgeFormatAndTidy)
{
    // 1e308 hPa overflows in the product.
    // clang-format off
    expectEach(PressureFromInches, {{"mm", "29.92", "760"}, {"hPa", "29,92", "1013.2"},
                                    {"hPa", "0", "0"}, {"hPa", "1e308", "N/A"},
                                    {"furlongs", "29.92", "29.92"}});
    expectEach(RainFromInches, {{"cm", "0.5", "1.3"}, {"mm", "100", "2,540"}, {"mm", "N/A", "N/A"},
                                {"inches", "1", "1"}});
    expectEach(VisibilityFromMiles, {{"km", "10", "16.1"}, {"miles", "10", "10"}});
    expectEach(WindFromMph, {{"km/h", "1000", "1,609.3"}, {"km/h", "0", "0.0"}, {"mph", "5", "5"},
                             {"bft", "73", "11"}, {"bft", "73.2", "12"}});
    // clang-format on
}

TEST(Beaufort, LimitsBelongToTheHigherNumber)
{
    const std::pair<double, int> cases[] = {{-1, 0}, {0.29, 0}, {0.3, 1}, {32.69, 11}, {32.7, 12}};
    for (const auto &[speed, number] : cases)
        EXPECT_EQ(BeaufortNumber(speed), number) << speed;
}

TEST_P(UnitsTest, ProviderHelpersGiveThePictureUntidied)
{
    expectEach(InchesFromMillimetres, {{"25.4", "1."}, {"N/A", "N/A"}});
    expectEach(MilesPerHourFromKnots, {{"10", "12"}});
    expectEach(KnotsFromMilesPerHour, {{"11.5078", "10.00"}});
    expectEach(InchesFromPascals, {{"101325", "29.92"}, {"1000", ".30"}});
    EXPECT_EQ(InchesFromMillimetres("0"), GetParam().decimal);
}

TEST(TidyNumberText, RepairsThePicturesLeftovers)
{
    const std::pair<const char *, const char *> cases[] = {
        {" 5", "0 5"}, {"-,5", "-0,5"}, {"5.", "5"}, {"-.", "-0"}, {"-", "-"}, {"12.5", "12.5"}};
    for (const auto &[text, tidy] : cases)
        EXPECT_EQ(TidyNumberText(text), tidy) << text;
}

TEST_P(UnitsTest, InvariantAndLocaleFormsSwapOnlyForANonUsLocale)
{
    const bool swaps = process().NonUsNumberFormat;
    EXPECT_EQ(ToLocaleNumber("1.5"), swaps ? "1,5" : "1.5");
    EXPECT_EQ(ToLocaleNumber("1,234.5"), swaps ? "1.234,5" : "1,234.5");
    EXPECT_EQ(ToInvariantNumber(local("1,234.5")), "1,234.5");
    for (const char *other : {"N/A", "12 mph"}) {
        EXPECT_EQ(ToLocaleNumber(other), other);
        EXPECT_EQ(ToInvariantNumber(other), other);
    }
}

TEST_P(UnitsTest, LoadConversionSettingsReadsUnitsAndFlags)
{
    const auto units = [] {
        const ProcessValues &pv = process();
        return QStringList{pv.UnitTemp, pv.UnitWind, pv.UnitBar, pv.UnitPre, pv.UnitVis}.join(' ');
    };
    const auto flags = [] {
        const ConversionOptions &o = conversionOptions();
        return std::array{process().RoundWind, o.bothUnits, o.useTenths, o.windInDegrees};
    };
    for (const QString &pair : QString("Temp=C|Wind=bft|Bar=kPa|Pre=cm|Vis=km|Both=True|UseTenths="
                                       "True|WindInDegrees=true|RoundWindSpeed=True")
                                   .split('|'))
        SavePref("Conversion", pair.section('=', 0, 0), pair.section('=', 1));
    LoadConversionSettings();
    EXPECT_EQ(units(), "C bft kPa cm km");
    EXPECT_EQ(flags(), (std::array{true, true, true, false})); // "True" is compared exactly
    SavePref("Conversion", "Vis", "inches");                   // stored by earlier versions
    LoadConversionSettings();
    EXPECT_EQ(process().UnitVis, "miles");
}

TEST_P(UnitsTest, CurrentTwinsAreWrittenForEachNonUsUnit)
{
    process().CityCode = "KDSM";
    saveCache(
        "Current",
        local("pressure=29.92|pressure-rate=-0.03|visibility=10|rain-today=0.5|"
              "rain-rate-max=N/A|temp=72|temp-rate=2.5|dew-point=|wind-speed=10|gust-speed=abc"));
    setUnits("C", "km/h", "hPa", "mm", "km");
    WriteCurrentTwins();
    expectCache("Current",
                local("pressureC=1013.2|pressure-rateC=-1|pressure-highC=|visibilityC=16.1|"
                      "rain-todayC=12.7|rain-rate-maxC=N/A|tempC=22|temp-rateC=4.5|dew-pointC=|"
                      "wind-speedC=16.1|gust-speedC=0.0"));
}

TEST_P(UnitsTest, UsUnitsWriteNoTwinsButBothUnitsWriteCelsius)
{
    process().CityCode = "KDSM";
    saveCache("Current", "pressure=30|temp=50|wind-speed=10|temp-rate=1");
    setUnits("F");
    WriteCurrentTwins();
    expectCache("Current", "pressureC=|tempC=|wind-speedC=|temp-rateC=");
    conversionOptions().bothUnits = true;
    WriteCurrentTwins();
    expectCache("Current", "tempC=10|temp-rateC=1|wind-speedC="); // a rate stays as it is for "F"
}

TEST_P(UnitsTest, HourlyTwinsStopAtTheCount)
{
    process().CityCode = "KDSM";
    saveCache("Hourly", "count=2|temperature1=32|dew-point1=N/A|feels-like1=41|wind-speed1=10|"
                        "temperature2=50|wind-speed2=0|temperature3=70");
    setUnits("C", "m/s");
    WriteHourlyTwins();
    expectCache("Hourly", local("temperature1C=0|dew-point1C=N/A|feels-like1C=5|wind-speed1C=4.5|"
                                "temperature2C=10|wind-speed2C=0.0|temperature3C="));
}

TARNBY_BOTH_LOCALES(UnitsTest);

} // namespace
