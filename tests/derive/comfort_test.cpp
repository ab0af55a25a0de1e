#include "derive/comfort.h"

#include "core/weathercache.h"
#include "tests/derive/localecase.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

using ComfortTest = LocaleTest;

TEST_P(ComfortTest, HumidexOfAWarmHumidDayAndZeroOnFailure)
{
    EXPECT_EQ(ComputeHumidex(local("86.0"), local("68.0")), 38);
    EXPECT_EQ(ComputeHumidex("50", "30"), 8); // dry air lowers it below the temperature
    EXPECT_EQ(ComputeHumidex("1e400", "68"), 0);
    EXPECT_EQ(ComputeHumidex("86", "N/A"), 0);
    EXPECT_EQ(ComputeHumidex("1e300", "68"), 0); // beyond sixteen bits
}

TEST_P(ComfortTest, TemperatureColourReadsFahrenheitBeforeTheDress)
{
    const std::pair<const char *, const char *> cases[] = {
        {"N/A", "#333"},    {"901", "#333"},     {"72&deg;", "#01D577"}, {"99", "#FFC800"},
        {"100", "#FA6E00"}, {"29.9", "#ED8AED"}, {"30", "#D671D9"}};
    for (const auto &[text, colour] : cases)
        EXPECT_EQ(TemperatureColour(local(text)), colour) << text;
}

TEST_P(ComfortTest, HumidexColourAndWordsUseCelsius)
{
    struct Case {
        const char *fahrenheit;
        const char *colour;
        const char *word;
    };
    const Case cases[] = {
        {"abc", "#000000", "N/A"},
        {"129.2", "#FA6E00", "Dangerous"},    // 54
        {"131", "#CF2202", "Very Dangerous"}, // 55
        {"1700", "#000000", "Very Dangerous"} // 927: the sentinel's range
    };
    for (const Case &c : cases) {
        EXPECT_EQ(HumidexColour(local(c.fahrenheit)), c.colour) << c.fahrenheit;
        EXPECT_EQ(HumidexDescription(local(c.fahrenheit)), c.word) << c.fahrenheit;
    }
    conversionOptions().useTenths = true; // 54.2 is above 54
    EXPECT_EQ(HumidexDescription(local("129.5")), "Very Dangerous");
}

TEST_P(ComfortTest, CurrentHumidexNeedsBothValues)
{
    process().CityCode = "KDSM";
    saveCache("Current", local("temp=86|dew-point=68.0"));
    WriteCurrentHumidex();
    expectCache("Current", "humidexC=38|humidex=100"); // 100.4°F
    SaveCache("Current", "dew-point", "N/A");
    WriteCurrentHumidex();
    expectCache("Current", "humidexC=N/A|humidex=N/A");
}

TEST_P(ComfortTest, HourlyHumidexKeepsNotAvailableHours)
{
    process().CityCode = "KDSM";
    saveCache("Hourly", "count=2|temperature1=86|dew-point1=68|temperature2=70|dew-point2=N/A|"
                        "temperature3=86|dew-point3=68");
    WriteHourlyHumidex();
    expectCache("Hourly", "humidex1=100|humidex1C=38|humidex2=N/A|humidex2C=N/A|humidex3=");
}

TARNBY_BOTH_LOCALES(ComfortTest);

} // namespace
