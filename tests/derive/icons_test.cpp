#include "derive/icons.h"

#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "derive/dates.h"
#include "tests/support/testprofile.h"

#include <QDir>
#include <QFile>

using namespace Tarnby;

namespace
{

// Checks "in>out" pairs, separated by blanks; an empty side is written as nothing.
void expectPairs(QString (*f)(const QString &), const char *pairs)
{
    for (const QString &pair : QString::fromLatin1(pairs).split(u' ', Qt::SkipEmptyParts)) {
        const QStringList sides = pair.split(u'>');
        EXPECT_EQ(f(sides.at(0)), sides.at(1)) << "from " << sides.at(0).toStdString();
    }
}

TEST(IconCodeTest, CondToBase)
{
    expectPairs(&CondToBase, "000>32 010>NA 159>20 nt_cond012>46 177>NA >NA abc>NA -1>NA");
}

TEST(IconCodeTest, ChanceTriplesShareTheirIcon)
{
    for (int first = 78; first <= 135; first += 3) {
        const QString icon = CondToBase(QString::number(first));
        EXPECT_NE(icon, "NA") << first;
        EXPECT_EQ(CondToBase(QString::number(first + 1)), icon) << first;
        EXPECT_EQ(CondToBase(QString::number(first + 2)), icon) << first;
    }
    for (int n = 160; n <= 176; ++n) {
        const QString icon = CondToBase(QString::number(n));
        EXPECT_TRUE(icon == "45" || icon == "46") << n;
        EXPECT_EQ(DayOrNight(QStringLiteral("cond") + QString::number(n)), "N") << n;
    }
}

TEST(IconCodeTest, BaseToCond)
{
    // Samples of the table, bases that share a code, and the fallback.
    expectPairs(&BaseToCond, "32>cond000 NA>cond010 0>cond006 37>cond006 >cond033 abc>cond033");
}

TEST(IconCodeTest, RemapCondNumber)
{
    expectPairs(&RemapCondNumber, "177>117 282>010 283>010 99999999999>010 176>176 abc>abc >");
    for (int n = 177; n <= 282; ++n)
        EXPECT_LT(RemapCondNumber(QString::number(n)).toInt(), 177) << n;
}

TEST(IconCodeTest, DayOrNight)
{
    expectPairs(&DayOrNight, "cond002>N cond001>D cond157>D cond176>N nt_partlycloudy>N "
                             "partlycloudy>D /night/>D >D condabc>D "
                             "https://api.weather.gov/icons/land/night/few?size=medium>N "
                             "https://api.weather.gov/icons/land/day/few?size=medium>D");
}

TEST(IconCodeTest, NwsIconToBase)
{
    const QString host = QStringLiteral("https://api.weather.gov/icons/land/");
    const struct {
        const char *path, *base;
    } rows[] = {{"night/tsra_hi,30?size=small", "47"},
                {"day/rain_showers,30/tsra_hi,30?size=medium", "1"},
                {"day/fog?size=medium", "NA"}};
    for (const auto &r : rows)
        EXPECT_EQ(NwsIconToBase(host + QLatin1String(r.path)), r.base) << r.path;
}

TEST(IconCodeTest, NamesToBaseAndWords)
{
    EXPECT_EQ(NameToBase("nt_partlycloudy", true), "29");
    EXPECT_EQ(NameToBase("nt_partlycloudy", false), "30");
    EXPECT_EQ(NameToBase("volcano", true), "NA");
    const auto words = [](const char *name) { return ConditionFromIconName(QLatin1String(name)); };
    EXPECT_EQ(words("chancetstorms"), "Chance of Thunderstorms");
    EXPECT_EQ(words("nt_mostlysunny"), "Mostly Clear");
    EXPECT_EQ(words("volcano"), "N/A");
}

TEST(IconCodeTest, AdjustCondByChance)
{
    const struct {
        const char *code, *chance, *expected;
    } rows[] = {{"cond108", "30", "cond108"},
                {"cond108", "50", "cond110"},
                {"cond108", "60", "cond148"},
                {"cond156", "30", "cond108"},
                {"nt_cond126", "55", "nt_cond128"},
                // Left alone.
                {"cond001", "50", "cond001"},
                {"cond108", "20", "cond108"},
                {"abc", "50", "abc"}};
    for (const auto &r : rows)
        EXPECT_EQ(AdjustCondByChance(QLatin1String(r.code), QLatin1String(r.chance)), r.expected)
            << r.code << ' ' << r.chance;
}

// ---- paths ----------------------------------------------------------------------------------

class IconPathTest : public Tarnby::Test::ProfileTest
{
protected:
    IconPathTest()
    {
        process().CityCode = QStringLiteral("KDSM");
        makeSet("Shiny", {QStringLiteral("0.png"), QStringLiteral("32.png")});
        makeSet("WeatherBug", {QStringLiteral("cond000.gif")});
        makeSet("Empty", {});
        LoadDatePatterns(QLocale(QLocale::English, QLocale::UnitedStates));
    }
    static void makeSet(const QString &set, const QStringList &files)
    {
        const QString folder = process().ProfilePath + QStringLiteral("/Skins/Icons/") + set;
        QDir().mkpath(folder);
        for (const QString &f : files) {
            QFile file(folder + QLatin1Char('/') + f);
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
    }
    static QString icon(const char *value, const char *group, bool forTray = false)
    {
        return IconPath("Current", QLatin1String(value), forTray, false, false, true,
                        QLatin1String(group));
    }
    QString inSet(const char *set, const char *file) const
    {
        return profile.path() + QStringLiteral("/Skins/Icons/%1/%2").arg(set, file);
    }
    QString shiny(const char *file) const { return inSet("Shiny", file); }
    QString weatherBug(const char *file) const { return inSet("WeatherBug", file); }
};

TEST_F(IconPathTest, SetsAndTheirExtensions)
{
    EXPECT_EQ(IconSetName(false), "Shiny"); // an empty setting falls back, and is saved
    EXPECT_EQ(GetPref("Skins", "Icons"), "Shiny");
    SavePref("Skins", "TrayIcons", "Empty");
    EXPECT_EQ(icon("32", "WUnderground", true),
              profile.path() + "/Skins/Icons/Empty/NA"); // no files, no extension
    EXPECT_EQ(IconPath("Current", "clear", false, true, false, true, "WUnderground"),
              weatherBug("cond000.gif")); // a .png set gives way
}

TEST_F(IconPathTest, EmptyCurrentIconTakesTheHourlyOneByDayAndNight)
{
    SaveCache("Current", "image-icon", "N/A");
    SaveCache("Hourly", "weather-icon1", "partlycloudy");
    const auto current = [] {
        return IconPath("Current", "image-icon", false, false, false, false, "WUnderground");
    };
    EXPECT_EQ(current(), shiny("29.png")); // no sun data: night
    SaveCache("Sun", "sunrise-time1", "6:00 AM");
    SaveCache("Sun", "sunset-time1", "8:00 PM");
    SaveCache("Current", "observed", "3/4/2024 1:00 PM");
    EXPECT_EQ(current(), shiny("30.png"));
    SaveCache("Current", "image-icon", "nt_clear");
    EXPECT_EQ(current(), shiny("31.png"));
}

TEST_F(IconPathTest, RelativePathsAndMoonIcons)
{
    SaveCache("Current", "MoonIcon", "mphase12");
    const auto moon = [](bool relative) {
        return IconPath("Current", "MoonIcon", false, false, relative, false, "WeatherBug");
    };
    EXPECT_EQ(moon(false), shiny("Moon/Northern/mphase12.png"));
    SavePref("CityCode", "Latitude", "-33.9");
    EXPECT_EQ(moon(true), "../../../../../Skins/Icons/Shiny/Moon/Southern/mphase12.png");
    EXPECT_EQ(MoonIconPath("mphase01", false), shiny("Moon/Southern/mphase01.png"));

    process().ProfilePath = profile.path() + "/O'Brien";
    makeSet("Shiny", {"1.svg"});
    EXPECT_EQ(icon("clear", "WUnderground"), "../../../Skins/Icons/Shiny/32.svg");
}

} // namespace
