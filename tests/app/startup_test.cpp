#include "app/startup.h"
#include "core/files.h"
#include "core/paths.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/weathercache.h"
#include "tests/support/testprofile.h"

#include <QDir>
#include <QFile>

#include <functional>

using namespace Tarnby;

namespace
{

// A profile override and a program folder of the test's own; the store is opened by
// start-up itself, as the program does.
class StartupTest : public ::testing::Test
{
protected:
    StartupTest()
    {
        process() = ProcessValues{};
        setProfileOverride(m_profile.path());
        qputenv("TARNBY_PROGRAM_FOLDER", m_program.path().toUtf8());
        qputenv("USER", "tester");
    }
    ~StartupTest() override
    {
        SettingsStore::close();
        setProfileOverride(QString());
        qunsetenv("TARNBY_PROGRAM_FOLDER");
        process() = ProcessValues{};
    }
    QString programFile(const QString &name, const QString &text)
    {
        const QString path = m_program.filePath(name);
        QDir().mkpath(QFileInfo(path).absolutePath());
        WriteFileAtomic(path, text);
        return path;
    }
    QString profileFile(const QString &name) const { return m_profile.filePath(name); }
    StartupState start(const QString &line = QString())
    {
        OpenSettingsStore(line);
        return RunStartup(line);
    }

    QTemporaryDir m_profile;
    QTemporaryDir m_program;
};

TEST_F(StartupTest, DashIAnywhereInTheLineSelectsTheProfileFile)
{
    const struct {
        const char *line;
        bool ini;
        const char *user;
    } rows[] = {{"-id", true, "Default"},
                {"monthlydb=/home/x-ill/a.mdb", true, "tester"},
                {"station=KDSM", false, "tester"}};
    for (const auto &r : rows) {
        OpenSettingsStore(r.line);
        EXPECT_EQ(process().UseINI, r.ini) << r.line;
        EXPECT_EQ(process().Username, r.user) << r.line;
        SettingsStore::close();
        process() = ProcessValues{};
    }
    OpenSettingsStore(QString());
    EXPECT_EQ(GetPref("Misc", "RegTest"), ""); // the probe cleans up after itself
}

TEST_F(StartupTest, AnUnwritableDatabaseFallsBackToTheProfileFile)
{
    // A settings folder beneath a plain file can be made by nobody, root included.
    WriteFileAtomic(profileFile("plain-file"), "x");
    setProfileOverride(profileFile("plain-file") + "/settings");
    OpenSettingsStore(QString());
    EXPECT_TRUE(process().UseINI);
}

TEST_F(StartupTest, ParseCommandLineTakesMonthlyDatabaseAndStation)
{
    OpenSettingsStore(QString());
    WriteFileAtomic(profileFile("CityCode.cmb"),
                    "Des Moines, IA" + QString(100, ' ') + "KDSM***50321***41.5***-93.6***NWS\r\n");
    process().ProfilePath = m_profile.path();
    ParseCommandLine("-x MONTHLYDB=/data/old.MDB station=KDSM station=");
    EXPECT_EQ(process().DbPath, "/data/old.MDB");
    EXPECT_EQ(GetPref("CityCode", "Code"), "KDSM");
    EXPECT_EQ(process().CityCode, "KDSM");
    ParseCommandLine("monthlydb=/data/notadb.txt");
    EXPECT_EQ(process().DbPath, "/data/old.MDB");
}

TEST_F(StartupTest, FirstStartCountsTheRunAndAsksForARetrieval)
{
    const StartupState state = start();
    EXPECT_TRUE(state.FirstRun);
    EXPECT_EQ(process().CityCode, "na");
    EXPECT_EQ(GetPref("Misc", "ForceUpdate"), "True");
    EXPECT_EQ(GetPref("Misc", "Runs"), "1");
    EXPECT_EQ(GetPref("Misc", "Version"), ProgramVersion());
    EXPECT_TRUE(state.VersionChanged);
    SettingsStore::close();
    const StartupState second = start();
    EXPECT_FALSE(second.FirstRun);
    EXPECT_FALSE(second.VersionChanged);
    EXPECT_EQ(GetPref("Misc", "Runs"), "2");
}

// Stored settings, what one start-up leaves of them ("Section/Key=Value|..."), and the
// state flags it reports (-1: not looked at).
struct MigrationCase {
    const char *name;
    QString stored, expected;
    int skinReset, firstRun;
};

class StartupMigration : public StartupTest, public ::testing::WithParamInterface<MigrationCase>
{
};

void forEachPref(const QString &prefs, const std::function<void(QString, QString, QString)> &f)
{
    for (const QString &item : prefs.split(u'|'))
        f(item.section(u'/', 0, 0), item.section(u'/', 1).section(u'=', 0, 0),
          item.section(u'=', 1));
}

TEST_P(StartupMigration, RewritesTheStoredSettings)
{
    OpenSettingsStore(QString());
    forEachPref(GetParam().stored, [](QString s, QString k, QString v) { SavePref(s, k, v); });
    const StartupState state = RunStartup(QString());
    forEachPref(GetParam().expected, [](QString s, QString k, QString v) {
        EXPECT_EQ(GetPref(s, k), v) << s.toStdString() << '/' << k.toStdString();
    });
    if (GetParam().skinReset >= 0) {
        EXPECT_EQ(state.SkinReset, bool(GetParam().skinReset));
    }
    if (GetParam().firstRun >= 0) {
        EXPECT_EQ(state.FirstRun, bool(GetParam().firstRun));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, StartupMigration,
    ::testing::Values(
        // the TextOnly folder is missing, so the stock skin takes its place
        MigrationCase{"TextOnlySkin",
                      "Skins/Interface=TextOnly Large|Misc/Runs=7|Misc/IfaceWidth=640",
                      "Skins/Interface=Splendid4|Misc/LatestSkin=Splendid4|Misc/Runs=8", -1, -1},
        // Runs goes back to 0, so this counts as a first run
        MigrationCase{"OtherSkinsAreReset",
                      "Skins/Interface=Old Skin|Misc/Runs=7|Misc/IfaceWidth=640|Misc/LastPage=Day",
                      "Skins/Interface=Splendid4|Misc/IfaceWidth=|Misc/LastPage=Current", 1, 1},
        MigrationCase{"SkinMigrationRunsOnce",
                      "Misc/LatestSkin=Splendid4|Misc/Runs=7|Misc/LastPage=Day",
                      "Misc/LastPage=Day|Misc/Runs=8", 0, -1},
        MigrationCase{"TooltipIconSwitchesBecomeValueLetters",
                      "TrayTooltip/Values=A2B2|TrayTooltip/DisplayDailyIcons=True",
                      "TrayTooltip/Values=1AB|TrayTooltip/DisplayDailyIcons=", -1, -1},
        MigrationCase{"DeleteCacheRemovesEveryStationsData",
                      "Cache\\KDSM\\Current/temp=70|Misc/DeleteCache=True",
                      "Cache\\KDSM\\Current/temp=|Misc/DeleteCache=False", -1, -1}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(StartupTest, UpgradeKeepsTheUsersMapsOnceAsBackup)
{
    programFile("Maps.tb", "stock maps");
    programFile("Skins/Interface/Splendid4/Skin.tbt", "[TEMP]");
    OpenSettingsStore(QString());
    WriteFileAtomic(profileFile("Maps.tb"), "my maps");
    WriteFileAtomic(profileFile("Maps.Backup"), "older backup");
    SavePref("Misc", "UpgradeSkins", "True");
    const StartupState state = RunStartup(QString());
    EXPECT_TRUE(state.Upgrade);
    EXPECT_EQ(ReadFile(profileFile("Maps.tb")), "stock maps");
    EXPECT_EQ(ReadFile(profileFile("Maps.Backup")), "my maps");
    EXPECT_EQ(ReadFile(profileFile("Skins/Interface/Splendid4/Skin.tbt")), "[TEMP]");
    EXPECT_EQ(GetPref("Misc", "UpgradeSkins"), "False");
}

TEST_F(StartupTest, MapTemplateFollowsTheStretchChoice)
{
    OpenSettingsStore(QString());
    WriteFileAtomic(profileFile("Map.wtp"), "<body ONRESIZE=''>");
    RunStartup(QString());
    EXPECT_EQ(ReadFile(profileFile("Map.wtp")), "<body onResize='zoomMap();'>");
    EXPECT_EQ(GetPref("Maps", "Stretch"), "True");
    SavePref("Maps", "Stretch", "False");
    RunStartup(QString());
    EXPECT_EQ(ReadFile(profileFile("Map.wtp")), "<body onResize=''>");
}

TEST_F(StartupTest, ProxyCredentialsAreDecodedAndServiceSettingsCheckedOneByOne)
{
    OpenSettingsStore(QString());
    SavePref("Proxy", "Server", "proxy.lan");
    SavePref("Proxy", "Username", EncodeCredential("alice"));
    SavePref("Proxy", "Password", EncodeCredential("s3cret"));
    SavePref("Misc", "SettingPulseUrl", "ftp://wrong");
    SavePref("Misc", "SettingNwsSource", "mesowest");
    SavePref("Misc", "SettingWuSource", "xyz");
    LoadProcessValues();
    EXPECT_EQ(process().ProxyServer, "proxy.lan");
    EXPECT_EQ(process().ProxyUser, "alice");
    EXPECT_EQ(process().ProxyPassword, "s3cret");
    EXPECT_TRUE(process().PulseUrl.startsWith("http"));
    EXPECT_EQ(process().NwsSource, "mesowest");
    EXPECT_EQ(process().WuSource, "wu");
}

TEST_F(StartupTest, ExitEmptiesTheCacheFolderAndMarksTheExit)
{
    start();
    CreateFolder(profileFile("Cache"));
    WriteFileAtomic(profileFile("Cache/page.html"), "x");
    ExitTB();
    EXPECT_FALSE(FileExists(profileFile("Cache/page.html")));
    EXPECT_EQ(GetPref("Misc", "RetWx"), "True");
}

} // namespace
