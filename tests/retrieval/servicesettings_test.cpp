#include "core/processvalues.h"
#include "core/settingsstore.h"
#include "retrieval/servicesettings.h"
#include "tests/retrieval/fetchtest.h"

using namespace Tarnby;
using Tarnby::Test::ChildReply;

namespace
{

const QString kVendor = QStringLiteral("https://service.tarnby.invalid");

// A vendor service in a map: path (before "?") to the reply; anything else fails with 3.
class VendorServiceTest : public Test::ScriptedFetchTest
{
protected:
    VendorServiceTest()
    {
        children.script = [this](const QString &url) {
            const QString path = url.section(QLatin1Char('?'), 0, 0);
            return replies.value(path, ChildReply::answer("3"));
        };
    }
    void serveSettings(const QString &document)
    {
        replies[kVendor + "/GetTbSettings"] = ChildReply::answer("0", document);
    }
    void loadSettings(const QString &document)
    {
        serveSettings(document);
        LoadServiceSettings();
    }

    QHash<QString, ChildReply> replies;
};

using ServiceSettingsTest = VendorServiceTest;

TEST_F(ServiceSettingsTest, AcceptedValuesReachProcessAndStoreButKeysAreNotStored)
{
    SavePref("Misc", "Version", "0.1.00");
    loadSettings("<settings><PulseUrl>https://pulse.example/api</PulseUrl><wukey>K1</wukey>"
                 "<mapsource>tb5</mapsource><unknown>x</unknown></settings>");
    EXPECT_EQ(children.urls(), QStringList({kVendor + "/GetTbSettings?Version=0.1.00"}));
    EXPECT_TRUE(process().SettingsLoaded);
    EXPECT_EQ(QStringList({process().PulseUrl, process().WuKey, process().MapSource}),
              QStringList({"https://pulse.example/api", "K1", "tb5"}));
    // stored under the names start-up reads back, whatever case the document used
    EXPECT_EQ(QStringList({GetPref("Misc", "SettingPulseUrl"), GetPref("Misc", "SettingWuKey"),
                           GetPref("Misc", "SettingMapSource")}),
              QStringList({"https://pulse.example/api", "", "tb5"}));
}

TEST_F(ServiceSettingsTest, ValuesOutsideTheirListOrABrokenDocumentLeaveTheEarlierOnes)
{
    loadSettings("<settings><mapsource>tb</mapsource>"
                 "<intldailyforecastsource>wu</intldailyforecastsource></settings>");
    process().PulseUrl = "https://old.example";
    loadSettings("<settings><mapsource>xyz</mapsource><nwssource/>"
                 "<pulseurl>ftp://pulse.example</pulseurl><intldailyforecastsource>wb "
                 "</intldailyforecastsource></settings>");
    EXPECT_EQ(process().MapSource, "tb");
    EXPECT_EQ(process().NwsSource, "nws");
    EXPECT_EQ(process().PulseUrl, "https://old.example");
    EXPECT_EQ(process().IntlDailyForecastSource, "wb"); // the text is taken trimmed
    process().SettingsLoaded = false;                   // as at start-up
    for (const char *document : {"<settings><mapsource>wu</mapsource>", "not xml"}) {
        loadSettings(document);
        EXPECT_FALSE(process().SettingsLoaded) << document;
        EXPECT_EQ(process().MapSource, "tb");
    }
    // a document that parses counts as loaded, whatever it holds
    loadSettings("<other><mapsource>wu</mapsource></other>");
    EXPECT_TRUE(process().SettingsLoaded);
    EXPECT_EQ(process().MapSource, "tb");
}

TEST_F(ServiceSettingsTest, OnlyANewPulseUrlClearsTheToken)
{
    loadSettings("<settings><pulseurl>https://pulse.example/a</pulseurl></settings>");
    SavePref("Misc", "Token", "T1");
    loadSettings("<settings><pulseurl>https://pulse.example/a</pulseurl></settings>");
    EXPECT_EQ(GetPref("Misc", "Token"), "T1");
    loadSettings("<settings><pulseurl>https://pulse.example/b</pulseurl></settings>");
    EXPECT_EQ(GetPref("Misc", "Token"), "");
    EXPECT_EQ(process().PulseUrl, "https://pulse.example/b");
}

TEST_F(ServiceSettingsTest, AFailedLoadIsRetriedAfterAnHour)
{
    FixedClock fixed(QDateTime(QDate(2024, 6, 1), QTime(12, 0)));
    setClock(&fixed);
    ReloadServiceSettingsIfDue();
    EXPECT_EQ(children.launches.size(), 1);
    fixed.advanceSeconds(3600);
    ReloadServiceSettingsIfDue();
    EXPECT_EQ(children.launches.size(), 1);
    fixed.advanceSeconds(1);
    serveSettings("<settings/>");
    ReloadServiceSettingsIfDue();
    EXPECT_EQ(children.launches.size(), 2);
    EXPECT_TRUE(process().SettingsLoaded);
}

using ApiTokenTest = VendorServiceTest;

TEST_F(ApiTokenTest, FetchedWhenMissingAndAfterTwentyThreeHours)
{
    FixedClock fixed(QDateTime(QDate(2024, 6, 1), QTime(12, 0)));
    setClock(&fixed);
    SavePref("Misc", "Version", "0.1.00");
    replies[kVendor + "/GetPulseApiKey"] = ChildReply::answer("0", "TOKEN1\r\n");
    EXPECT_EQ(GetApiToken(), "TOKEN1");
    EXPECT_EQ(children.urls(), QStringList({kVendor + "/GetPulseApiKey?Version=0.1.00"}));
    EXPECT_EQ(GetPref("Misc", "Token"), "TOKEN1");

    replies[kVendor + "/GetPulseApiKey"] = ChildReply::answer("0", "TOKEN2");
    fixed.advanceSeconds(23 * 3600);
    EXPECT_EQ(GetApiToken(), "TOKEN1");
    fixed.advanceSeconds(1);
    EXPECT_EQ(GetApiToken(), "TOKEN2");
    EXPECT_EQ(children.launches.size(), 2);
}

using HttpsProbeTest = VendorServiceTest;

TEST_F(HttpsProbeTest, PlainHttpOnlyWhenHttpsFailsAndPlainAnswers)
{
    const QString plain = "http://www.tarnby.invalid/tarnby/app/downloadtest";
    EXPECT_FALSE(HttpsProbe()); // nothing answers: stay with HTTPS
    EXPECT_EQ(children.urls(),
              QStringList({kVendor + "/tarnby/app/downloadtest", plain + "?ssl=0"}));

    replies[plain] = ChildReply::answer("0", " ok\r\n");
    EXPECT_TRUE(HttpsProbe());
    replies[kVendor + "/tarnby/app/downloadtest"] = ChildReply::answer("0", "ok");
    children.launches.clear();
    EXPECT_FALSE(HttpsProbe());
    EXPECT_EQ(children.launches.size(), 1);
}

} // namespace
