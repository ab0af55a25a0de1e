// The benchmark skin against its golden output, and templates made to break the engine.
//
// TARNBY_UPDATE_GOLDEN=1 writes the golden file anew from the literal expansion.

#include "tests/template/templatetest.h"

#include "core/files.h"
#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "template/loopdriver.h"
#include "template/tokentext.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace Tarnby;
using Tarnby::Test::TemplateTest;

namespace
{

class GoldenSkin : public TemplateTest
{
protected:
    void SetUp() override
    {
        TemplateTest::SetUp();
        loadCache();
        setUnits("F", true);
        process().ProfilePath = "/home/tarnby/.local/share/Tarnby";
        process().StationType = "NWS";
        process().MapSource = "tb";
        SavePref("CityCode", "City", "Ames, IA (Ames Municipal Airport)");
        SavePref("CityCode", "ZipCode", "50010");
        SavePref("OnDownload", "ObservedDisplay", "True");
        SavePref("OnDownload", "TimeDisplay", "True");
        SavePref("Skins", "Option1Splendid4", "blue");
        SavePref("Skins", "Option2Splendid4", "[TEMP PLAIN SINGLE]");
        SavePref("Skins", "Option3Splendid4", "Verdana");
    }
    static QString literalExpansion(const QString &text)
    {
        TokenText::setReferenceMode(true);
        const QString out = expand(text, true);
        TokenText::setReferenceMode(false);
        return out;
    }
};

TEST_F(GoldenSkin, MatchesTheLiteralSequenceAndTheGoldenOutput)
{
    const QString skin = Tarnby::Test::readDataFile("template/skin.tbt");
    ASSERT_GT(skin.size(), 100000);
    const QString out = expand(skin, true);
    const QString literal = literalExpansion(skin);
    ASSERT_EQ(out, literal);
    const QString golden = Tarnby::Test::dataFile("template/skin.expected");
    if (qEnvironmentVariableIsSet("TARNBY_UPDATE_GOLDEN")) WriteFileAtomic(golden, literal);
    EXPECT_EQ(out, ReadFile(golden));
    EXPECT_FALSE(out.contains("[HOURLY"));
    EXPECT_TRUE(out.contains("[TEMP SOMETHING UNKNOWN]"));
}

// None of these may crash or hang; the benchmark measures how long they take.
TEST_F(GoldenSkin, HostileTemplatesEndInBoundedOutput)
{
    const QString skin = Tarnby::Test::readDataFile("template/skin.tbt");
    const QString big = skin.repeated(5 * 1024 * 1024 / skin.size() + 1);
    EXPECT_EQ(expand(big, true).count("<TR CLASS='Odd'>"), 24 * (big.size() / skin.size()));

    QByteArray bytes(5 * 1024 * 1024, Qt::Uninitialized);
    QRandomGenerator rng(42);
    rng.fillRange(reinterpret_cast<quint32 *>(bytes.data()), bytes.size() / 4);
    EXPECT_LE(expand(QString::fromLatin1(bytes), true, true).size(), 2 * bytes.size());

    QString unknown;
    for (int i = 0; i < 10000; ++i)
        unknown += QStringLiteral("[UNKNOWN TOKEN %1] ").arg(i);
    EXPECT_EQ(expand(unknown, true, true), unknown);

    const QString unbalanced =
        QString("[DAILY LOOP COUNT=99][TEMPLATE][HOURLY LOOP COUNT=99]x").repeated(200) +
        QString("[/TEMPLATE][/DAILY LOOP]").repeated(3) + "[MOON LOOP COUNT=99]";
    EXPECT_LE(expand(unbalanced, true, true).size(), kMaxExpandedText);
}

} // namespace
