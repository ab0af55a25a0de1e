// Alert documents into the Alerts branch: golden documents, the user's selection and the
// choice of service.

#include "alerts/alertformat.h"
#include "core/files.h"
#include "core/settingsstore.h"
#include "tests/alerts/alertfixture.h"

#include <QDir>

using namespace Tarnby;
using Tarnby::Test::alertDocument;
using Tarnby::Test::AlertTest;

namespace
{

// tests/data/alerts/<case>.json beside <case>.expected (the branch, "key=value" sorted by
// key) and, where alerts are stored, <case>.html and <case>.txt (the full text with colour,
// and the plain one). The case's prefix names the service.
QStringList goldenCases()
{
    QStringList cases;
    for (const QString &file : QDir(Test::dataFile("alerts")).entryList({"*.json"}, QDir::Files))
        cases.append(file.chopped(5));
    return cases;
}

class GoldenAlertTest : public AlertTest, public ::testing::WithParamInterface<QString>
{
protected:
    QString expected(const char *extension) const
    {
        return ReadFile(alertDocument(GetParam() + extension));
    }
};

TEST_P(GoldenAlertTest, DocumentReplacesTheBranch)
{
    seedEarlierAlerts();
    setAlertsFailed(true); // the run's flag from an earlier failure
    const QString path = alertDocument(GetParam() + ".json");
    GetParam().startsWith("nws-") ? ProcessNwsAlerts(path) : ProcessWeatherBugAlerts(path);
    EXPECT_FALSE(AlertsFailed());
    EXPECT_EQ(alertsBranch().join('\n') + '\n', expected(".expected"));
    if (FileExists(alertDocument(GetParam() + ".html"))) {
        EXPECT_EQ(GetAlertsFullText(true, true) + '\n', expected(".html"));
        EXPECT_EQ(GetAlertsFullText(false, false) + '\n', expected(".txt"));
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, GoldenAlertTest, ::testing::ValuesIn(goldenCases()),
                         [](const auto &info) {
                             return QString(info.param).replace('-', '_').toStdString();
                         });

TEST_F(AlertTest, NwsKeepsTheSelectedAndTheUnknownTypes)
{
    SavePref("SevereAlert", "SelectedAlerts", "104,26");
    ProcessNwsAlerts(alertDocument("nws-mixed.json"));
    QStringList stored;
    for (int i = 1; i <= GetCache("Alerts", "Count").toInt(); ++i)
        stored << GetCache("Alerts", "title" + QString::number(i));
    EXPECT_EQ(stored,
              QStringList({"Special Weather Statement", "Heat Advisory", "Tornado Warning"}));
}

TEST_F(AlertTest, PulseExpiriesAsSentAreNeverFiltered)
{
    SaveCache("Current", "observed", "1/12/2024 10:00:00 AM");
    const QString document = ReadFile(alertDocument("pulse-three-alerts.json"))
                                 .replace("2024-01-13T06:00:00Z", "2024-03-13T06:00:00Z");
    const std::optional<AlertSet> set = ReadWeatherBugAlerts(document, "test");
    ASSERT_TRUE(set);
    ASSERT_EQ(set->alerts.size(), 2);
    EXPECT_EQ(set->alerts[0].expires, "3/13/2024 1:00:00 AM"); // two months on, daylight time
}

TEST_F(AlertTest, TheStationChoosesTheService)
{
    SavePref("CityCode", "ZipCode", "97201");
    ProcessAlertsDownload(alertDocument("nws-floodwatch.json"), true, false);
    EXPECT_EQ(GetCache("Alerts", "Type"), "NWS");
    SavePref("CityCode", "ZipCode", "0");
    ProcessAlertsDownload(alertDocument("pulse-three-alerts.json"), false, false);
    EXPECT_EQ(GetCache("Alerts", "Type"), "EarthNetworks");
}

} // namespace
