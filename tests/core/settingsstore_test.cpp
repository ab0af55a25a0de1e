#include "core/log.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "core/sqlitesettings.h"
#include "tests/support/testprofile.h"

#include <QFile>

#include <sqlite3.h>

using namespace Tarnby;
using Tarnby::Test::TestProfile;

namespace
{

// The behaviour both back ends share, run once against each.
class StoreSemantics : public ::testing::TestWithParam<bool>
{
protected:
    TestProfile profile{GetParam()};
};

TEST_P(StoreSemantics, WrittenValuesReadBackAndSurviveReopening)
{
    SavePref("Conversion", "Offset", "-5");
    SavePref("Cache\\KDSM\\Current", "temp", "71.6");
    SavePref("General", "Unicode", QString::fromUtf8("Zürich °C"));
    profile.reopen(GetParam());
    EXPECT_EQ(GetPref("Conversion", "Offset"), "-5");
    EXPECT_EQ(GetPref("Cache\\KDSM\\Current", "temp"), "71.6");
    EXPECT_EQ(GetPref("General", "Unicode"), QString::fromUtf8("Zürich °C"));
}

TEST_P(StoreSemantics, EmptyValueAndMissingKeyBothGiveTheDefault)
{
    SavePref("Misc", "LastPage", "");
    EXPECT_EQ(GetPref("Misc", "LastPage", "Current"), "Current");
    EXPECT_EQ(GetPref("Misc", "NeverWritten", "Current"), "Current");
    EXPECT_EQ(GetPref("Misc", "NeverWritten"), "");
}

TEST_P(StoreSemantics, SectionAndKeyNamesIgnoreCase)
{
    SavePref("Misc", "SettingPulseUrl", "https://a");
    EXPECT_EQ(GetPref("MISC", "settingpulseurl"), "https://a");
    SavePref("misc", "SETTINGPULSEURL", "https://b");
    EXPECT_EQ(GetPref("Misc", "SettingPulseUrl"), "https://b");
}

TEST_P(StoreSemantics, OverwriteKeepsOneValue)
{
    SavePref("A", "k", "1");
    SavePref("A", "k", "2");
    const QStringList keys = SettingsStore::active()->keys("A");
    ASSERT_EQ(keys.size(), 1);
    EXPECT_EQ(keys.first().toLower(), "k"); // the profile file stores keys upper-cased
    EXPECT_EQ(GetPref("A", "k"), "2");
}

TEST_P(StoreSemantics, ASectionReadsAtOnceAsKeyByKey)
{
    SavePref("Cache\\KDSM\\Hourly", "hour1", "7 PM");
    SavePref("Cache\\KDSM\\Hourly", "temperature1", "71");
    SavePref("Cache\\KDSM\\Hourly\\Deeper", "other", "x");
    SavePref("Cache\\KDSM\\Daily", "count", "7");
    auto section = GetPrefSection("cache\\kdsm\\hourly");
    std::sort(section.begin(), section.end());
    ASSERT_EQ(section.size(), 2);
    EXPECT_EQ(section[0].first.toLower(), "hour1");
    EXPECT_EQ(section[0].second, "7 PM");
    EXPECT_EQ(section[1].second, "71");
    EXPECT_TRUE(GetPrefSection("Nowhere").isEmpty());
}

TEST_P(StoreSemantics, MultiLineValuesRoundTrip)
{
    const QString text = "Line one\r\nLine two\n\n%0A stays literal\rend";
    SavePref("Cache\\X\\Alerts", "msg-body1", text);
    profile.reopen(GetParam());
    EXPECT_EQ(GetPref("Cache\\X\\Alerts", "msg-body1"), text);
}

TEST_P(StoreSemantics, DelPrefTakesSubSectionsFromTheRegistryOnly)
{
    SavePref("Cache\\A\\Current", "temp", "1");
    SavePref("Cache\\AB\\Current", "temp", "2");
    SavePref("Cache", "top", "3");
    SavePref("CACHE\\a\\Hourly", "count", "4");
    SavePref("Cache\\A]", "edge", "5"); // "]" bounds the children's names
    SavePref("Cache\\A[", "edge", "6");
    SavePref("Cache\\A", "own", "7");
    DelPref("Cache\\A");
    const bool ini = GetParam();
    // In INI mode the profile file keeps a deleted section's keys.
    EXPECT_EQ(GetPref("Cache\\A\\Current", "temp"), ini ? "1" : "");
    EXPECT_EQ(GetPref("Cache\\AB\\Current", "temp"), "2"); // a sibling prefix is not a child
    EXPECT_EQ(GetPref("Cache", "top"), "3");
    EXPECT_EQ(GetPref("Cache\\A\\Hourly", "count"), ini ? "4" : "");
    EXPECT_EQ(GetPref("Cache\\A]", "edge"), "5");
    EXPECT_EQ(GetPref("Cache\\A[", "edge"), "6");
    EXPECT_EQ(GetPref("Cache\\A", "own"), ini ? "7" : "");
}

INSTANTIATE_TEST_SUITE_P(Backends, StoreSemantics, ::testing::Values(false, true),
                         [](const auto &info) { return info.param ? "Ini" : "Registry"; });

TEST(StoreLimits, IniValuesAreCutAt749CharactersAndRegistryValuesAreWhole)
{
    TestProfile profile(true);
    const QString longText(800, QLatin1Char('x'));
    SavePref("Misc", "Long", longText);
    EXPECT_EQ(GetPref("Misc", "Long").size(), 749);
    profile.reopen(false);
    SavePref("Misc", "Long", longText);
    EXPECT_EQ(GetPref("Misc", "Long").size(), 800);
}

TEST(StoreLimits, DelPrefInIniModeStillClearsTheRegistryTree)
{
    TestProfile profile(false);
    SavePref("Cache\\K\\Current", "temp", "1");
    profile.reopen(true);
    DelPref("Cache");
    profile.reopen(false);
    EXPECT_EQ(GetPref("Cache\\K\\Current", "temp"), "");
}

TEST(StoreLimits, ReadsAndWritesBeforeOpeningAreHarmless)
{
    SettingsStore::close();
    SavePref("A", "b", "c");
    DelPref("A");
    EXPECT_EQ(GetPref("A", "b", "default"), "default");
}

// Another process (tarnby-cli) sees a batch's writes all at once, when the outermost
// batch ends; the writer sees them at once.
TEST(StoreBatch, WritesReachOtherReadersWhenTheOutermostBatchEnds)
{
    TestProfile profile;
    SqliteSettings otherProcess(profile.registryFile());
    {
        const SettingsBatch outer;
        SavePref("Cache\\K\\Alerts", "title1", "Flood Watch");
        {
            const SettingsBatch inner;
            SavePref("Cache\\K\\Alerts", "Count", "1");
        }
        EXPECT_EQ(GetPref("Cache\\K\\Alerts", "Count"), "1");
        EXPECT_EQ(otherProcess.value("Cache\\K\\Alerts", "title1"), "");
        EXPECT_EQ(otherProcess.value("Cache\\K\\Alerts", "Count"), "");
    }
    EXPECT_EQ(otherProcess.value("Cache\\K\\Alerts", "title1"), "Flood Watch");
    EXPECT_EQ(otherProcess.value("Cache\\K\\Alerts", "Count"), "1");
}

TEST(Credentials, EncodingShiftsEachCharacterByItsPosition)
{
    EXPECT_EQ(EncodeCredential("aaa"), "bcd");
    EXPECT_EQ(DecodeCredential("bcd"), "aaa");
    const QString secret = QString::fromUtf8("p@ss wörd!");
    EXPECT_EQ(DecodeCredential(EncodeCredential(secret)), secret);
    EXPECT_EQ(EncodeCredential(""), "");
}

TEST(CorruptStore, AnUnreadableDatabaseIsMovedAsideAndTheStoreStartsEmpty)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("settings.sqlite");
    {
        QFile junk(file);
        ASSERT_TRUE(junk.open(QIODevice::WriteOnly));
        junk.write(QByteArray(8192, '\x5a'));
    }
    SettingsStore::open(file, dir.filePath("x.ini"), false);
    EXPECT_EQ(GetPref("Misc", "Runs", "0"), "0");
    SavePref("Misc", "Runs", "1");
    EXPECT_EQ(GetPref("Misc", "Runs"), "1");
    SettingsStore::close();
    const QStringList aside = QDir(dir.path()).entryList({"settings.sqlite.corrupt-*"});
    ASSERT_EQ(aside.size(), 1);
    QFile kept(dir.filePath(aside.first()));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), QByteArray(8192, '\x5a'));
}

} // namespace

// Files of the earlier forms held a row for each key: the first form kept the names
// under SQLite's NOCASE, the second beside their folded spelling. Both keep every value,
// the names' first spelling and the case-blind lookup.
class StoreUpgrade : public ::testing::TestWithParam<const char *>
{
protected:
    // A connection to a new file of the earlier form; the caller closes it.
    sqlite3 *earlierForm() const
    {
        sqlite3 *db = nullptr;
        EXPECT_EQ(sqlite3_open(file.toUtf8().constData(), &db), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(db, GetParam(), nullptr, nullptr, nullptr), SQLITE_OK);
        return db;
    }

    QTemporaryDir dir;
    const QString file = dir.filePath("settings.sqlite");
};

TEST_P(StoreUpgrade, AFileOfAnEarlierFormKeepsItsValues)
{
    sqlite3_close(earlierForm());
    SqliteSettings store(file);
    EXPECT_EQ(store.value("citycode", "CODE"), "KDSM");
    EXPECT_EQ(store.value("CACHE\\kdsm\\current", "Temp"), "72");
    EXPECT_EQ(store.value("Cache\\KDSM\\Current", "tempC"), "22.2");
    EXPECT_EQ(store.sections(), QStringList({"Cache\\KDSM\\Current", "CityCode"}));
    store.setValue("cache\\kdsm\\current", "TEMP", "73");
    EXPECT_EQ(store.keys("Cache\\KDSM\\Current"), QStringList({"temp", "tempC"}));
    SqliteSettings reopened(file);
    EXPECT_EQ(reopened.value("Cache\\KDSM\\Current", "temp"), "73");
}

// A file another program holds while it would be rewritten is never taken for a broken
// one: it stays where it is and moves over at the next opening.
TEST_P(StoreUpgrade, AFileHeldByAnotherProgramIsLeftForTheNextOpening)
{
    sqlite3 *holder = earlierForm();
    ASSERT_EQ(sqlite3_exec(holder, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    EXPECT_FALSE(SqliteSettings(file).isOpen());
    sqlite3_exec(holder, "ROLLBACK", nullptr, nullptr, nullptr);
    sqlite3_close(holder);
    EXPECT_EQ(QDir(dir.path()).entryList({"*.corrupt-*"}), QStringList());
    EXPECT_EQ(SqliteSettings(file).value("Cache\\KDSM\\Current", "temp"), "72");
}

INSTANTIATE_TEST_SUITE_P(
    Forms, StoreUpgrade,
    ::testing::Values(
        "CREATE TABLE settings (section TEXT NOT NULL COLLATE NOCASE,"
        " key TEXT NOT NULL COLLATE NOCASE, value TEXT NOT NULL,"
        " PRIMARY KEY (section, key)) WITHOUT ROWID;"
        "INSERT INTO settings VALUES ('CityCode', 'Code', 'KDSM'),"
        " ('Cache\\KDSM\\Current', 'temp', '72'),"
        " ('Cache\\KDSM\\Current', 'tempC', '22.2');",
        "CREATE TABLE settings (section_fold TEXT NOT NULL, key_fold TEXT NOT NULL,"
        " section TEXT NOT NULL, key TEXT NOT NULL, value TEXT NOT NULL,"
        " PRIMARY KEY (section_fold, key_fold)) WITHOUT ROWID;"
        "PRAGMA user_version = 1;"
        "INSERT INTO settings VALUES ('citycode', 'code', 'CityCode', 'Code', 'KDSM'),"
        " ('cache\\kdsm\\current', 'temp', 'Cache\\KDSM\\Current', 'temp', '72'),"
        " ('cache\\kdsm\\current', 'tempc', 'Cache\\KDSM\\Current', 'tempC', '22.2');"));

// The program and tarnby-cli hold the file at once: what one has read, it reads again
// after the other wrote, and writes of both into one section keep each other's keys.
TEST(StoreSharing, EachConnectionSeesTheOthersCommitsAndKeepsTheirKeys)
{
    QTemporaryDir dir;
    const QString file = dir.filePath("settings.sqlite");
    SqliteSettings program(file);
    SqliteSettings cli(file);
    program.setValue("Cache\\K\\Current", "temp", "72");
    EXPECT_EQ(cli.value("Cache\\K\\Current", "temp"), "72");
    cli.setValue("Cache\\K\\Current", "humidity", "40");
    program.setValue("Cache\\K\\Current", "temp", "73");
    EXPECT_EQ(cli.value("Cache\\K\\Current", "temp"), "73");
    EXPECT_EQ(program.value("Cache\\K\\Current", "humidity"), "40");

    program.beginBatch();
    program.setValue("Cache\\K\\Hourly", "count", "2");
    EXPECT_EQ(cli.keys("Cache\\K\\Hourly"), QStringList());
    EXPECT_EQ(program.sections(), QStringList({"Cache\\K\\Current", "Cache\\K\\Hourly"}));
    program.endBatch();
    EXPECT_EQ(cli.value("Cache\\K\\Hourly", "count"), "2");

    cli.removeSection("Cache\\K");
    EXPECT_EQ(program.value("Cache\\K\\Current", "temp"), "");
    EXPECT_EQ(program.sections(), QStringList());
}

// A section whose stored bytes are cut short reads as empty and says so; the others stay.
TEST(StoreSharing, ASectionOfBrokenBytesStartsEmpty)
{
    TestProfile profile;
    SavePref("Options", "Sound", "On");
    SavePref("Cache\\K\\Current", "temp", "72");
    SettingsStore::close();
    {
        sqlite3 *db = nullptr;
        ASSERT_EQ(sqlite3_open(profile.registryFile().toUtf8().constData(), &db), SQLITE_OK);
        ASSERT_EQ(
            sqlite3_exec(db, "UPDATE sections SET body = substr(body, 1, 6) WHERE name = 'Options'",
                         nullptr, nullptr, nullptr),
            SQLITE_OK);
        sqlite3_close(db);
    }
    profile.reopen(false);
    QStringList logged;
    process().LogEnabled = true;
    setRemoteLogSink([&logged](const QString &line) { logged.append(line); });
    EXPECT_EQ(GetPref("Options", "Sound", "default"), "default");
    EXPECT_EQ(GetPref("Cache\\K\\Current", "temp"), "72");
    setRemoteLogSink({});
    EXPECT_EQ(logged.filter("Options could not be read").size(), 1)
        << logged.join('\n').toStdString();
}
