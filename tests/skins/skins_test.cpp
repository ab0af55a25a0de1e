// The stock content as the build stages it: icon sets that hold a file for every code
// the icon tables can give, skins whose metadata reads and whose templates leave no
// token standing, and pages that offer the program their side of the bridge.

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "derive/icons.h"
#include "tests/template/templatetest.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace Tarnby::Test
{

namespace
{

const QString kStaged = QStringLiteral(TARNBY_STAGED_FOLDER);

QString stagedPath(const QString &relative)
{
    return kStaged + QLatin1Char('/') + relative;
}

QStringList foldersIn(const QString &relative)
{
    QStringList folders;
    const QDir dir(stagedPath(relative));
    for (const QString &name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        folders << dir.filePath(name);
    return folders;
}

QStringList filesIn(const QString &folder, const QString &pattern)
{
    QStringList files;
    const QDir dir(folder);
    for (const QString &name : dir.entryList({pattern}, QDir::Files))
        files << dir.filePath(name);
    return files;
}

// Codes as each station group writes them into the cache.
QStringList weatherBugCodes()
{
    QStringList codes;
    for (int n = 0; n <= 176; ++n)
        codes << QStringLiteral("cond%1").arg(n, 3, 10, QLatin1Char('0'));
    return codes;
}

QStringList namedCodes()
{
    QStringList names =
        QStringLiteral("chanceflurries chancerain chancesleet chancesnow chancetstorms clear "
                       "cloudy flurries fog hazy mostlycloudy mostlysunny partlycloudy "
                       "partlysunny rain sleet snow sunny tstorms unheard-of")
            .split(QLatin1Char(' '));
    names << QString();
    QStringList codes = names;
    for (const QString &name : names)
        codes << QStringLiteral("nt_") + name;
    return codes + weatherBugCodes();
}

QStringList nwsCodes()
{
    const QStringList names =
        QStringLiteral("skc few sct bkn ovc wind_skc wind_few wind_sct wind_bkn "
                       "wind_ovc snow rain_snow rain_sleet snow_sleet fzra rain_fzra "
                       "snow_fzra sleet rain rain_showers rain_showers_hi tsra tsra_sct "
                       "tsra_hi tornado hurricane tropical_storm dust smoke haze hot "
                       "cold blizzard fog unheard-of")
            .split(QLatin1Char(' '));
    QStringList codes;
    for (const QString &name : names)
        for (const char *time : {"day", "night"})
            codes << QStringLiteral("https://api.weather.gov/icons/land/%1/%2?size=medium")
                         .arg(QLatin1String(time), name);
    return codes + namedCodes();
}

class IconSetTest : public ProfileTest
{
protected:
    void SetUp() override { process().ProfilePath = kStaged; }

    // The codes of a group whose icon the set lacks.
    static QStringList missing(const QString &set, const QString &group, const QStringList &codes)
    {
        SavePref(QStringLiteral("Skins"), QStringLiteral("Icons"), set);
        QStringList lacking;
        for (const QString &code : codes) {
            const QString path =
                IconPath(QStringLiteral("Current"), code, false, false, false, true, group);
            if (!QFileInfo::exists(path)) lacking << code + QStringLiteral(" -> ") + path;
        }
        return lacking;
    }
};

TEST_F(IconSetTest, EverySetHoldsAnIconForEveryCode)
{
    for (const QString &set : {QStringLiteral("Shiny"), QStringLiteral("WeatherBug")}) {
        EXPECT_EQ(missing(set, QStringLiteral("WeatherBug"), weatherBugCodes()), QStringList());
        EXPECT_EQ(missing(set, QStringLiteral("WUnderground"), namedCodes()), QStringList());
        EXPECT_EQ(missing(set, QStringLiteral("CWOP"), namedCodes()), QStringList());
        EXPECT_EQ(missing(set, QStringLiteral("NWS"), nwsCodes()), QStringList());
    }
}

TEST_F(IconSetTest, EverySetHoldsTheMoonOfBothHemispheres)
{
    for (const QString &set : {QStringLiteral("Shiny"), QStringLiteral("WeatherBug")}) {
        SavePref(QStringLiteral("Skins"), QStringLiteral("Icons"), set);
        for (const char *latitude : {"47.2", "-33.9"}) {
            SavePref(QStringLiteral("CityCode"), QStringLiteral("Latitude"),
                     QLatin1String(latitude));
            for (int phase = 1; phase <= 26; ++phase) {
                const QString path = MoonIconPath(
                    QStringLiteral("mphase%1").arg(phase, 2, 10, QLatin1Char('0')), false);
                EXPECT_TRUE(QFileInfo::exists(path)) << path.toStdString();
            }
        }
    }
}

TEST(SkinIniTest, EveryInterfaceSkinStatesItsSizes)
{
    const QStringList skins = foldersIn(QStringLiteral("Skins/Interface"));
    ASSERT_GE(skins.size(), 2);
    for (const QString &skin : skins) {
        const QString ini = skin + QStringLiteral("/Skin.ini");
        const auto number = [&](const char *key) {
            return GetIniValue(QStringLiteral("Skin"), QLatin1String(key), ini).toInt();
        };
        SCOPED_TRACE(skin.toStdString());
        EXPECT_FALSE(
            GetIniValue(QStringLiteral("Skin"), QStringLiteral("MinVersion"), ini).isEmpty());
        EXPECT_GT(number("MinWidth"), 0);
        EXPECT_GT(number("MinHeight"), 0);
        EXPECT_GE(number("DefaultWidth"), number("MinWidth"));
        EXPECT_GE(number("DefaultHeight"), number("MinHeight"));
        EXPECT_TRUE(FileExists(skin + QStringLiteral("/Default.html")));
    }
}

class SkinTemplateTest : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        loadCache();
    }

    // What the tooltip window puts in place of its own markers before the expansion.
    static QString asTooltipWould(QString text, const QString &folder)
    {
        text.replace(QStringLiteral("[CURRENTCONDITIONS]"), QStringLiteral("<TABLE></TABLE>"));
        text.replace(QStringLiteral("[TOOLTIPSKINPATH]"), folder);
        text.replace(QStringLiteral("[ICONS START]"), QString());
        text.replace(QStringLiteral("[ICONS END]"), QString());
        return text.replace(QStringLiteral("[ICONS]"), QStringLiteral("<TABLE></TABLE>"));
    }

    static QStringList tokensLeft(const QString &page)
    {
        static const QRegularExpression token(QStringLiteral("\\[[A-Z/][A-Z0-9 /=*]*\\]"));
        QStringList left;
        for (auto match = token.globalMatch(page); match.hasNext();)
            left << match.next().captured();
        left.removeDuplicates();
        return left;
    }
};

TEST_F(SkinTemplateTest, EveryTemplateExpandsCompletely)
{
    QStringList templates;
    for (const QString &skin : foldersIn(QStringLiteral("Skins/Interface")))
        templates << filesIn(skin, QStringLiteral("*.tbt"));
    const QStringList tooltips = foldersIn(QStringLiteral("Skins/Tooltip"));
    for (const QString &skin : tooltips)
        templates << filesIn(skin, QStringLiteral("*.tbt"));
    ASSERT_GE(templates.size(), 11);

    for (const QString &file : templates) {
        QString text = ReadFile(file);
        const QString folder = QFileInfo(file).absolutePath();
        if (tooltips.contains(folder)) text = asTooltipWould(text, folder);
        const QString page = expand(text, true);
        EXPECT_EQ(tokensLeft(page), QStringList()) << file.toStdString();
        // The loops made rows out of the cached forecast.
        EXPECT_FALSE(page.contains(QStringLiteral("LOOP"))) << file.toStdString();
    }
}

// The program's side: the functions it calls, the elements it reads and writes, and the
// action words it understands.
struct Bridge {
    const char *skin;
    QStringList functions;
    QStringList elements;
};

QString skinPages(const QString &skin)
{
    QString text;
    for (const char *pattern : {"Skin.tbt", "*.js", "Default.html"})
        for (const QString &file : filesIn(skin, QLatin1String(pattern)))
            text += ReadFile(file);
    return text;
}

bool knownAction(const QString &word)
{
    static const QStringList words =
        QStringLiteral("getnextnewslink getpreviousnewslink retrieveweather "
                       "saveskinsettings showcurrent showhourly showdaily "
                       "showpop showalerts showalertsmap showmapmenu "
                       "showstationmenu showoptions windowdrag windowminimize "
                       "windowresize logerror showlocal showmonthly "
                       "togglesection togglenextsection toggleprevioussection")
            .split(QLatin1Char(' '));
    const QString lower = word.toLower();
    return lower.startsWith(QStringLiteral("launch")) || words.contains(lower);
}

TEST(SkinBridgeTest, PagesOfferWhatTheWindowCalls)
{
    const QStringList common =
        QStringLiteral("setRunAction runLoadProcedures displayCurrent displayHour displayDay "
                       "displayPop showHelp showAlerts displayProgressBar refreshObservedTimeStamp")
            .split(u' ');
    const QStringList bridged =
        QStringLiteral("TB-RunAction TB-Link TB-Error TB-ProgressBar TB-NewsStoryLink").split(u' ');
    const Bridge bridges[] = {
        {"Splendid4", common + QStringList{"refreshRealtimeData", "refreshRealtimeCondition"},
         bridged + QStringList{"TB-SuspendUpdate", "1TB-SkinOption"}},
        {"TextOnly", common, bridged + QStringList{"Body"}}};
    static const QRegularExpression action(
        QStringLiteral("(?:setRunAction|act|launch)\\('([A-Za-z]+)'\\)"));

    for (const Bridge &bridge : bridges) {
        const QString text =
            skinPages(stagedPath(QStringLiteral("Skins/Interface/") + QLatin1String(bridge.skin)));
        SCOPED_TRACE(bridge.skin);
        for (const QString &function : bridge.functions)
            EXPECT_TRUE(text.contains(QStringLiteral("function ") + function + QLatin1Char('(')))
                << function.toStdString();
        for (const QString &element : bridge.elements)
            EXPECT_TRUE(text.contains(QStringLiteral("id=\"") + element + QLatin1Char('"')))
                << element.toStdString();
        for (auto match = action.globalMatch(text); match.hasNext();) {
            const QString word = match.next().captured(1);
            EXPECT_TRUE(knownAction(word)) << word.toStdString();
        }
    }
}

} // namespace

} // namespace Tarnby::Test
