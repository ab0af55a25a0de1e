#include "presentation/skindocument.h"
#include "presentation/skinoptions.h"
#include "tests/presentation/skinfixture.h"

#include <QHash>

using namespace Tarnby;
using namespace Tarnby::Test;

namespace
{

// A page of elements by id; writes to missing elements are counted, as a browser
// would take and drop them.
class FakePage : public SkinDocument
{
public:
    struct Element {
        QString html;
        QString classes;
    };
    QHash<QString, Element> elements;
    QStringList writes;

    bool elementExists(const QString &id) override { return elements.contains(id); }
    QString innerHtml(const QString &id) override { return elements.value(id).html; }
    void setInnerHtml(const QString &id, const QString &html) override
    {
        writes << id;
        if (elements.contains(id)) elements[id].html = html;
    }
    QString className(const QString &id) override { return elements.value(id).classes; }
    void add(int n, const QString &html, const QString &classes = QString())
    {
        elements.insert(SkinOptionElement(n), {html, classes});
    }
};

using SkinOptions = SkinTest;

TEST_F(SkinOptions, LoadSetsTheSkinsOptionsAndTheStationsWhileTheirElementsLast)
{
    SavePref("Skins", "Option2Test", "Show");
    SavePref("Skins", "Option20Test-KAMW", "http://maps.example/a|a.png");
    SavePref("Skins", "Option21Test-KAMW", "21");
    SavePref("Skins", "Option20Test-OTHER", "not this station");
    FakePage page;
    page.add(2, "");
    page.add(20, "");
    page.add(22, ""); // beyond the gap at 21: not reached
    LoadSkinOptions(page, "Test", "KAMW");
    EXPECT_EQ(page.innerHtml("2TB-SkinOption"), "Show");
    EXPECT_EQ(page.innerHtml("20TB-SkinOption"), "http://maps.example/a|a.png");
    EXPECT_EQ(page.writes.size(), 20); // 1 to 19 whether present or not, then 20
    EXPECT_FALSE(page.writes.contains("22TB-SkinOption"));
}

TEST_F(SkinOptions, SaveStopsAtTheFirstMissingElementAndKeepsTheMapClasses)
{
    FakePage page;
    page.add(1, "Hide");
    page.add(2, "7", "option TB-Skin-MapZoomLevel");
    page.add(3, "Satellite", "TB-Skin-MapType");
    page.add(5, "beyond the gap");
    SaveSkinOptions(page, "Test", "KAMW");
    EXPECT_EQ(GetPref("Skins", "Option1Test"), "Hide");
    EXPECT_EQ(GetPref("Skins", "Option2Test"), "7");
    EXPECT_EQ(GetPref("Skins", "MapZoomLevel"), "7");
    EXPECT_EQ(GetPref("Skins", "MapType"), "Satellite");
    EXPECT_EQ(GetPref("Skins", "Option5Test"), "");
}

TEST_F(SkinOptions, SaveOfAStationOptionGoesUnderTheStation)
{
    FakePage page;
    for (int n = 1; n <= 20; ++n)
        page.add(n, QString::number(n));
    SaveSkinOptions(page, "Test", "KAMW");
    EXPECT_EQ(GetPref("Skins", "Option20Test-KAMW"), "20");
    EXPECT_EQ(GetPref("Skins", "Option20Test"), "");
}

TEST_F(SkinOptions, SingleSaveTakesOnlyTheSkinsOwnOptions)
{
    FakePage page;
    page.add(4, "On");
    page.add(20, "map");
    SaveSingleSkinOption(page, "Test", 4);
    SaveSingleSkinOption(page, "Test", 20);
    SaveSingleSkinOption(page, "Test", 0);
    EXPECT_EQ(GetPref("Skins", "Option4Test"), "On");
    EXPECT_EQ(GetPref("Skins", "Option20Test"), "");
    EXPECT_EQ(GetPref("Skins", "Option20Test-"), "");
}

} // namespace
