#include "presentation/skinpage.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

class SkinFolder : public SkinTest
{
protected:
    QString makeSkin(const QString &name, const QStringList &templates)
    {
        const QString folder = InterfaceSkinFolder(name);
        CreateFolder(folder);
        for (const QString &file : templates)
            WriteFileAtomic(folder + u'/' + file, QStringLiteral("x"));
        return folder;
    }
};

// A skin with only Skin.tbt serves every family at home and abroad (without Skini.tbt it
// has no international flag); abroad, a family without its own template takes Skini.tbt.
TEST_F(SkinFolder, TemplateChoiceByFamilyAndPlace)
{
    const QString only = makeSkin("Only", {"Skin.tbt"});
    const QString kinds = makeSkin("Kinds", {"Skin.tbt", "Skini.tbt"});
    const QString full =
        makeSkin("Full", {"Skin.tbt", "Skini.tbt", "Skinwu.tbt", "Skiniwu.tbt", "Skincwop.tbt",
                          "Skinicwop.tbt", "Skinnws.tbt", "Skininws.tbt"});
    const struct {
        const char *stationType;
        bool international;
        const char *expected; // from the full skin
    } rows[] = {{"", false, "Skin.tbt"},
                {"", true, "Skini.tbt"},
                {"PWS (WUnderground)", false, "Skinwu.tbt"},
                {"ICAO (WUnderground)", true, "Skiniwu.tbt"},
                {"CWOP", false, "Skincwop.tbt"},
                {"CWOP", true, "Skinicwop.tbt"},
                {"NWS", false, "Skinnws.tbt"},
                {"NWS", true, "Skininws.tbt"}};
    for (const auto &r : rows) {
        SCOPED_TRACE(::testing::Message() << r.stationType << ' ' << r.international);
        const QString type = QString::fromLatin1(r.stationType);
        EXPECT_EQ(
            GetSkinTemplateName(only, type, SkinHasInternationalTemplate(only) && r.international),
            "Skin.tbt");
        EXPECT_EQ(GetSkinTemplateName(kinds, type, r.international),
                  r.international ? "Skini.tbt" : "Skin.tbt");
        EXPECT_EQ(GetSkinTemplateName(full, type, r.international), r.expected);
    }
}

TEST_F(SkinFolder, SkinIniSizesAreWholePixelsAboveZero)
{
    const QString folder = InterfaceSkinFolder(QStringLiteral("Sizes"));
    CreateFolder(folder);
    WriteFileAtomic(folder + "/Skin.ini", "[Skin]\nMinVersion = 7.0.1\nMinWidth=abc\n"
                                          "MinHeight=0\ndefaultwidth=640\nDefaultHeight= 480 \n");
    const SkinIni ini = ReadSkinIni(folder);
    EXPECT_EQ(ini.MinVersion, "7.0.1");
    EXPECT_FALSE(ini.MinWidth.has_value());
    EXPECT_FALSE(ini.MinHeight.has_value());
    EXPECT_EQ(ini.DefaultWidth, 640);
    EXPECT_EQ(ini.DefaultHeight, 480);
    EXPECT_FALSE(ReadSkinIni(InterfaceSkinFolder("Missing")).DefaultWidth.has_value());
}

TEST_F(SkinFolder, ASkinNeedingANewerProgramIsNotShown)
{
    SkinIni ini;
    EXPECT_TRUE(SkinIsCompatible(ini, "0.1.00"));
    ini.MinVersion = "0.1.0";
    EXPECT_TRUE(SkinIsCompatible(ini, "0.1.00"));
    ini.MinVersion = "0.2.0";
    EXPECT_FALSE(SkinIsCompatible(ini, "0.1.00"));
}

TEST_F(SkinFolder, AUsableSkinStaysWithItsSavedSize)
{
    installSkin("TestSkin");
    SavePref("Misc", "IfaceWidth", "500");
    EXPECT_EQ(ChooseInterfaceSkin(), "TestSkin");
    EXPECT_EQ(GetPref("Misc", "IfaceWidth"), "500");
}

TEST_F(SkinFolder, AnEmptyMissingOrTooNewSkinFallsBackOnTheStockOneAndForgetsTheSize)
{
    const QString folder = installSkin("TestSkin", false);
    SavePref("Misc", "Version", "0.1.00");
    const std::pair<const char *, const char *> rows[] = {
        {"", nullptr}, {"NoSuchSkin", nullptr}, {"TestSkin", "[Skin]\nMinVersion=7.0.0\n"}};
    for (const auto &[skinSetting, skinIni] : rows) {
        if (skinIni) WriteFileAtomic(folder + "/Skin.ini", QString::fromLatin1(skinIni));
        SavePref("Skins", "Interface", skinSetting);
        SavePref("Misc", "IfaceWidth", "500");
        SavePref("Misc", "IfaceHeight", "400");
        EXPECT_EQ(ChooseInterfaceSkin(), "Splendid4") << skinSetting;
        EXPECT_EQ(GetPref("Skins", "Interface"), "Splendid4");
        EXPECT_EQ(GetPref("Misc", "IfaceWidth"), "");
        EXPECT_EQ(GetPref("Misc", "IfaceHeight"), "");
    }
}

using SkinPage = SkinTest;

// The interface window's test reads the rendered page; here the page before and without one.
TEST_F(SkinPage, TheDefaultPageStandsInUntilARenderAndStaysWithoutATemplate)
{
    const QString folder = installSkin("TestSkin");
    selectStation("KAMW", "NWS");
    const QString page = EnsureSkinPage(folder);
    EXPECT_EQ(page, SkinPagePath(folder, "KAMW"));
    EXPECT_EQ(ReadFile(page), ReadFile(folder + "/Default.html"));
    WriteFileAtomic(page, "rendered");
    EnsureSkinPage(folder);
    EXPECT_EQ(ReadFile(page), "rendered");
    DeleteFile(folder + "/Skin.tbt");
    EXPECT_FALSE(RenderSkinPage(folder));
    EXPECT_EQ(ReadFile(page), "rendered");
}

} // namespace
