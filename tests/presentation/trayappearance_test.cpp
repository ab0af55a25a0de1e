#include "presentation/trayappearance.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/support/testprofile.h"

#include <gtest/gtest.h>

using namespace Tarnby;

namespace
{

TrayDigitOptions opts(bool tenths, bool hideDigit = false, bool degree = false,
                      bool hideSign = false)
{
    return TrayDigitOptions{tenths, hideDigit, degree, hideSign};
}

TEST(DigitText, FollowsTheRulesInOrder)
{
    const Tarnby::Test::TestProfile profile;
    const struct {
        const char *temperature;
        TrayDigitOptions options;
        const char *expected;
    } rows[] = {{"72", opts(false), "72"},
                {"72.6", opts(false), "72"}, // cut, not rounded
                {"-0.4", opts(false), "0"},
                {"-0.4", opts(true), "-0.4"},
                {"78.4", opts(true), "78.4"},
                {"0", opts(true), "0"},
                {"105", opts(true, true), "05"},
                {"-105", opts(false, true), "-05"},
                {"-105", opts(false, true, false, true), "05"},
                {"105.3", opts(true, true), "105.3"},
                {"99", opts(false, true), "99"},
                {"", opts(true), "NA"},
                {"N/A", opts(true, true, true), "NA\u00b0"},
                {"-12", opts(false, false, true, true), "12\u00b0"}};
    for (const auto &r : rows)
        EXPECT_EQ(TrayDigitText(QString::fromUtf8(r.temperature), r.options),
                  QString::fromUtf8(r.expected))
            << r.temperature;
}

class TrayColours : public Tarnby::Test::ProfileTest
{
protected:
    void SetUp() override { process().CityCode = QStringLiteral("KAMW"); }
    static void tray(const char *key, const char *value)
    {
        SavePref(QStringLiteral("TrayIcon"), QLatin1String(key), QLatin1String(value));
    }
    static void alerts(const QStringList &titles)
    {
        SaveCache(QStringLiteral("Alerts"), QStringLiteral("AlertsAvailable"),
                  QStringLiteral("True"));
        SaveCache(QStringLiteral("Alerts"), QStringLiteral("Count"),
                  QString::number(titles.size()));
        for (int n = 0; n < titles.size(); ++n)
            SaveCache(QStringLiteral("Alerts"), QStringLiteral("title%1").arg(n + 1), titles[n]);
    }
    static void temp(const char *fahrenheit, const char *celsius = "")
    {
        SaveCache(QStringLiteral("Current"), QStringLiteral("temp"), QLatin1String(fahrenheit));
        SaveCache(QStringLiteral("Current"), QStringLiteral("tempC"), QLatin1String(celsius));
    }
};

TEST_F(TrayColours, AlertLevelsByTheWordsOfTheTitles)
{
    temp("20");
    tray("EnableFreezingColors", "True");
    alerts({"Tornado Warning", "Flood Watch"});
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Alert);
    alerts({"Special Weather Statement", "Flood WATCH"});
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Alert2);
    alerts({"Special Weather Statement"});
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Alert3);
    // A switched-off level passes the choice on to the next test, not to the next set.
    alerts({"Tornado Warning"});
    tray("EnableAlertColors", "False");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Alert3);
    tray("EnableAlertColors3", "False");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Freezing);
    SaveCache(QStringLiteral("Alerts"), QStringLiteral("AlertsAvailable"), QStringLiteral("False"));
    tray("EnableAlertColors", "True");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Freezing);
}

TEST_F(TrayColours, BelowZeroCountsZeroAndAFractionBelowIt)
{
    tray("EnableBelowZeroColors", "True");
    const struct {
        const char *unit, *f, *c;
        TrayColourLevel level;
    } cases[] = {{"F", "-0.4", "", TrayColourLevel::BelowZero},
                 {"F", "0", "", TrayColourLevel::BelowZero},
                 {"F", "0.4", "", TrayColourLevel::Normal},
                 {"F", "N/A", "", TrayColourLevel::Normal},
                 {"C", "31", "-0.4", TrayColourLevel::BelowZero},
                 {"C", "33", "0.5", TrayColourLevel::Normal}};
    for (const auto &c : cases) {
        process().UnitTemp = QLatin1String(c.unit);
        temp(c.f, c.c);
        EXPECT_EQ(ChooseTrayColourLevel(), c.level) << c.unit << " " << c.f << " " << c.c;
    }
}

TEST_F(TrayColours, FreezingInFahrenheitWhateverTheUnit)
{
    tray("EnableFreezingColors", "True");
    process().UnitTemp = QStringLiteral("C");
    temp("32.4", "0.2");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Normal);
    temp("32.0", "0");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Freezing);
    tray("EnableFreezingColors", "False");
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::Normal);
}

TEST_F(TrayColours, FeelsLikeDecidesWhenShown)
{
    tray("EnableBelowZeroColors", "True");
    tray("ShowFeels", "True");
    temp("5");
    SaveCache(QStringLiteral("Current"), QStringLiteral("feels-like"), QStringLiteral("-3"));
    EXPECT_EQ(ChooseTrayColourLevel(), TrayColourLevel::BelowZero);
    EXPECT_EQ(TrayDigitText(), QStringLiteral("-3"));
}

TEST_F(TrayColours, StoredColoursHaveRedInTheLowByte)
{
    tray("ForeColorAlert2", "255");
    tray("BackColorAlert2", "16711680");
    tray("MakeTransAlert2", "True");
    const TrayColourSet set = ReadTrayColourSet(TrayColourLevel::Alert2);
    EXPECT_EQ(set.foreground, QColor(255, 0, 0));
    EXPECT_EQ(set.background, QColor(0, 0, 255));
    EXPECT_TRUE(set.transparent);
    tray("ForeColor", "not a colour");
    EXPECT_EQ(ReadTrayColourSet(TrayColourLevel::Normal).foreground, QColor(Qt::white));
    EXPECT_EQ(storedFromColour(QColor(1, 2, 3)), QStringLiteral("197121"));
}

TEST_F(TrayColours, AnOldModeIsStoredAnewAndTheFlipTurnsTheSlant)
{
    tray("TrayIconToDisplay", "something old");
    EXPECT_EQ(ReadTrayIconMode(), TrayIconMode::Temperature);
    EXPECT_EQ(GetPref("TrayIcon", "TrayIconToDisplay"), QStringLiteral("Display temperature icon"));
    tray("TrayIconToDisplay", "Display condition & temperature icon");
    EXPECT_EQ(ReadTrayIconMode(), TrayIconMode::ConditionAndTemperature);

    tray("FontItalic", "True");
    const TrayFontSpec font = SetTrayFont(true);
    EXPECT_FALSE(font.italic); // the flip turns the user's slant round
}

} // namespace
