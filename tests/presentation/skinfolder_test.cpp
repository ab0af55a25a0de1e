#include "presentation/skinpage.h"
#include "tests/presentation/skinfixture.h"

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

struct TemplateCase {
    const char *stationType;
    bool international;
    const char *expected;
};

class TemplateChoice : public SkinTest, public ::testing::WithParamInterface<TemplateCase>
{
protected:
    QString makeSkin(const QStringList &templates)
    {
        const QString folder = InterfaceSkinFolder(QStringLiteral("Choice"));
        CreateFolder(folder);
        for (const QString &name : templates)
            WriteFileAtomic(folder + u'/' + name, QStringLiteral("x"));
        return folder;
    }
};

// A skin with only Skin.tbt serves every family, at home and abroad: without Skini.tbt
// the skin has no international flag.
TEST_P(TemplateChoice, OnlySkinTbtServesEveryStation)
{
    const QString folder = makeSkin({QStringLiteral("Skin.tbt")});
    const TemplateCase &c = GetParam();
    const bool international = SkinHasInternationalTemplate(folder) && c.international;
    EXPECT_EQ(GetSkinTemplateName(folder, QString::fromLatin1(c.stationType), international),
              "Skin.tbt");
}

// Abroad, a family without its own template abroad takes Skini.tbt.
TEST_P(TemplateChoice, MissingFamilyFilesFallBackOnTheirKind)
{
    const QString folder = makeSkin({QStringLiteral("Skin.tbt"), QStringLiteral("Skini.tbt")});
    const TemplateCase &c = GetParam();
    EXPECT_EQ(GetSkinTemplateName(folder, QString::fromLatin1(c.stationType), c.international),
              c.international ? "Skini.tbt" : "Skin.tbt");
}

TEST_P(TemplateChoice, FullSkinHasAFileForEachFamily)
{
    const QString folder =
        makeSkin({"Skin.tbt", "Skini.tbt", "Skinwu.tbt", "Skiniwu.tbt", "Skincwop.tbt",
                  "Skinicwop.tbt", "Skinnws.tbt", "Skininws.tbt"});
    const TemplateCase &c = GetParam();
    EXPECT_EQ(GetSkinTemplateName(folder, QString::fromLatin1(c.stationType), c.international),
              c.expected);
}

INSTANTIATE_TEST_SUITE_P(Families, TemplateChoice,
                         ::testing::Values(TemplateCase{"", false, "Skin.tbt"},
                                           TemplateCase{"", true, "Skini.tbt"},
                                           TemplateCase{"PWS (WeatherBug)", false, "Skin.tbt"},
                                           TemplateCase{"PWS (WUnderground)", false, "Skinwu.tbt"},
                                           TemplateCase{"ICAO (WUnderground)", true, "Skiniwu.tbt"},
                                           TemplateCase{"CWOP", false, "Skincwop.tbt"},
                                           TemplateCase{"CWOP", true, "Skinicwop.tbt"},
                                           TemplateCase{"NWS", false, "Skinnws.tbt"},
                                           TemplateCase{"NWS", true, "Skininws.tbt"}));

class SkinFolder : public SkinTest
{
};

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

struct FallbackCase {
    const char *name;
    const char *skinSetting;
    const char *skinIni; // written into the installed TestSkin; null leaves it
};

class SkinFallback : public SkinTest, public ::testing::WithParamInterface<FallbackCase>
{
};

TEST_P(SkinFallback, FallsBackOnTheStockSkinAndForgetsTheSize)
{
    const FallbackCase &c = GetParam();
    const QString folder = installSkin("TestSkin", false);
    if (c.skinIni) WriteFileAtomic(folder + "/Skin.ini", QString::fromLatin1(c.skinIni));
    SavePref("Misc", "Version", "0.1.00");
    SavePref("Skins", "Interface", c.skinSetting);
    SavePref("Misc", "IfaceWidth", "500");
    SavePref("Misc", "IfaceHeight", "400");
    EXPECT_EQ(ChooseInterfaceSkin(), "Splendid4");
    EXPECT_EQ(GetPref("Skins", "Interface"), "Splendid4");
    EXPECT_EQ(GetPref("Misc", "IfaceWidth"), "");
    EXPECT_EQ(GetPref("Misc", "IfaceHeight"), "");
}

INSTANTIATE_TEST_SUITE_P(Reasons, SkinFallback,
                         ::testing::Values(FallbackCase{"empty", "", nullptr},
                                           FallbackCase{"missing", "NoSuchSkin", nullptr},
                                           FallbackCase{"newer", "TestSkin",
                                                        "[Skin]\nMinVersion=7.0.0\n"}),
                         [](const auto &info) { return std::string(info.param.name); });

class SkinPage : public SkinTest
{
};

TEST_F(SkinPage, RenderExpandsTheTemplateIntoTheStationsPage)
{
    const QString folder = installSkin("TestSkin");
    selectStation("KAMW", "NWS");
    SaveCache("Current", "station-id", "KAMW");
    SaveCache("Current", "temp", "72");
    ASSERT_TRUE(RenderSkinPage(folder));
    const QString page = ReadFile(SkinPagePath(folder, "KAMW"));
    EXPECT_TRUE(page.contains("<h2 id=\"station\">KAMW</h2>")) << page.toStdString();
    EXPECT_TRUE(page.contains("<span id=\"temp\">72&deg;")) << page.toStdString();
}

TEST_F(SkinPage, WithoutATemplateTheOldPageStays)
{
    const QString folder = installSkin("TestSkin");
    selectStation("KAMW", "NWS");
    DeleteFile(folder + "/Skin.tbt");
    CreateFolder(SkinCacheFolder(folder, "KAMW"));
    WriteFileAtomic(SkinPagePath(folder, "KAMW"), "old page");
    EXPECT_FALSE(RenderSkinPage(folder));
    EXPECT_EQ(ReadFile(SkinPagePath(folder, "KAMW")), "old page");
}

TEST_F(SkinPage, UntilTheFirstRenderTheDefaultPageStandsIn)
{
    const QString folder = installSkin("TestSkin");
    selectStation("KAMW", "NWS");
    const QString page = EnsureSkinPage(folder);
    EXPECT_EQ(page, SkinPagePath(folder, "KAMW"));
    EXPECT_EQ(ReadFile(page), ReadFile(folder + "/Default.html"));
    WriteFileAtomic(page, "rendered");
    EnsureSkinPage(folder);
    EXPECT_EQ(ReadFile(page), "rendered");
}

} // namespace
