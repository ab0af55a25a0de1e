#include "core/files.h"
#include "core/inifile.h"
#include "core/settingsstore.h"
#include "tests/support/testprofile.h"

#include <QFile>
#include <QTemporaryDir>

using namespace Tarnby;

namespace
{

QString writeText(const QTemporaryDir &dir, const QString &text)
{
    const QString path = dir.filePath("Skin.ini");
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text.toUtf8());
    return path;
}

TEST(ProfileFile, ReadsLikeTheProfileApi)
{
    QTemporaryDir dir;
    const QString path = writeText(dir, "; a comment\r\n"
                                        "orphan=before any section\r\n"
                                        "[ Skin ]\r\n"
                                        "  Width = 640  \r\n"
                                        "Title=\"Quoted value\"\r\n"
                                        "this line is malformed\r\n"
                                        "=no key\r\n"
                                        "width=second occurrence loses\r\n"
                                        "[Cache\\ABC\\Current]\n"
                                        "temp=70\n");
    IniFile ini(path);
    EXPECT_EQ(ini.value("skin", "WIDTH"), "640");
    EXPECT_EQ(ini.value("Skin", "Title"), "Quoted value");
    EXPECT_EQ(ini.value("Skin", "orphan"), "");
    EXPECT_EQ(ini.keys("Skin"), (QStringList{"Width", "Title", "width"}));
    // A section name with backslashes is one flat section.
    EXPECT_EQ(ini.value("Cache\\ABC\\Current", "temp"), "70");
    EXPECT_EQ(ini.sections(), (QStringList{"Skin", "Cache\\ABC\\Current"}));
}

TEST(ProfileFile, LowerCaseReadMeetsUpperCaseWrite)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("Tester.ini");
    SetIniValue("Misc", "MixedCase", "v", path);
    EXPECT_EQ(GetIniValue("MISC", "mixedcase", path), "v");
    SettingsStore::close(); // flushes
    EXPECT_TRUE(ReadFile(path).contains("MIXEDCASE=v"));
}

TEST(ProfileFile, WritesReachTheDiskWithoutTouchingCommentsAndAreBatched)
{
    QTemporaryDir dir;
    const QString path = writeText(dir, "[A]\r\n; keep me\r\nx=1\r\n");
    {
        IniFile ini(path);
        for (int i = 0; i < 100; ++i)
            ini.setValue("B", QString("k%1").arg(i), QString::number(i));
        // Nothing written yet: one rewrite serves the whole batch.
        EXPECT_FALSE(ReadFile(path).contains("k99"));
        EXPECT_TRUE(ini.flush());
    }
    const QString text = ReadFile(path);
    EXPECT_TRUE(text.contains("; keep me"));
    EXPECT_TRUE(text.contains("[B]\r\nk0=0\r\n"));
    EXPECT_TRUE(text.contains("k99=99"));
}

TEST(ProfileFile, AnotherWritersChangesSurviveOurPendingWrites)
{
    QTemporaryDir dir;
    const QString path = writeText(dir, "[A]\r\nx=1\r\n");
    IniFile ours(path);
    EXPECT_EQ(ours.value("A", "x"), "1");
    ours.setValue("A", "mine", "ours");
    {
        IniFile theirs(path);
        theirs.setValue("A", "x", "changed elsewhere");
    } // theirs flushed on destruction
    EXPECT_EQ(ours.value("A", "x"), "changed elsewhere");
    EXPECT_EQ(ours.value("A", "mine"), "ours");
    ours.flush();
    IniFile reread(path);
    EXPECT_EQ(reread.value("A", "x"), "changed elsewhere");
    EXPECT_EQ(reread.value("A", "mine"), "ours");
}

TEST(ProfileFile, LineBreakEncodingIsReversibleAndLeavesPlainValuesAlone)
{
    for (const QString &value : {QString("plain C:\\path\\%20"), QString("a\r\nb"),
                                 QString("@ml:literal"), QString("%0A%25\n")}) {
        const QString stored = EncodeIniValue(value);
        EXPECT_FALSE(stored.contains('\n'));
        EXPECT_EQ(DecodeIniValue(stored), value);
    }
    EXPECT_EQ(EncodeIniValue("plain C:\\path\\%20"), "plain C:\\path\\%20");
}

} // namespace
