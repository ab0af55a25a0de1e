// Alert documents into the Alerts branch: golden documents, the user's selection and
// the identity of an alert set.

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
// key) and, where an alert is stored, <case>.html and <case>.txt (the full text with
// colour and the plain one). The prefix of the case names the service.
QStringList goldenCases()
{
    QStringList cases;
    const QDir folder(Test::dataFile(QStringLiteral("alerts")));
    for (const QString &file :
         folder.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name))
        cases.append(file.chopped(5));
    return cases;
}

void parseDocument(const QString &name)
{
    const QString path = alertDocument(name + QStringLiteral(".json"));
    if (name.startsWith(QStringLiteral("nws-")))
        ProcessNwsAlerts(path);
    else
        ProcessWeatherBugAlerts(path);
}

QString expectedText(const QString &name, const char *extension)
{
    return ReadFile(alertDocument(name + QLatin1String(extension)));
}

class GoldenAlertTest : public AlertTest, public ::testing::WithParamInterface<QString>
{
};

TEST_P(GoldenAlertTest, DocumentReplacesTheBranch)
{
    seedEarlierAlerts();
    setAlertsFailed(true); // the run's flag from an earlier failure
    parseDocument(GetParam());
    EXPECT_FALSE(AlertsFailed());
    EXPECT_EQ(alertsBranch().join('\n') + '\n', expectedText(GetParam(), ".expected"));
    if (FileExists(alertDocument(GetParam() + ".html"))) {
        EXPECT_EQ(GetAlertsFullText(true, true) + '\n', expectedText(GetParam(), ".html"));
        EXPECT_EQ(GetAlertsFullText(false, false) + '\n', expectedText(GetParam(), ".txt"));
    }
}

INSTANTIATE_TEST_SUITE_P(Documents, GoldenAlertTest, ::testing::ValuesIn(goldenCases()),
                         [](const auto &info) {
                             return QString(info.param).replace('-', '_').toStdString();
                         });

struct SelectionCase {
    const char *selected;
    std::vector<const char *> titles;
    const char *epoch;
};

class NwsSelectionTest : public AlertTest, public ::testing::WithParamInterface<SelectionCase>
{
};

TEST_P(NwsSelectionTest, KeepsTheSelectedAndTheUnknownTypes)
{
    SavePref("SevereAlert", "SelectedAlerts", GetParam().selected);
    ProcessNwsAlerts(alertDocument("nws-mixed.json"));
    const auto &titles = GetParam().titles;
    EXPECT_EQ(GetCache("Alerts", "Count"), QString::number(titles.size()));
    for (std::size_t i = 0; i < titles.size(); ++i)
        EXPECT_EQ(GetCache("Alerts", "title" + QString::number(i + 1)), titles[i]);
    EXPECT_EQ(GetCache("Alerts", "AlertEpoch"), GetParam().epoch);
    EXPECT_EQ(GetCache("Alerts", "AlertsAvailable"), titles.empty() ? "False" : "True");
}

INSTANTIATE_TEST_SUITE_P(
    Selections, NwsSelectionTest,
    ::testing::Values(
        SelectionCase{"", // the default: no heat advisories
                      {"Flood Watch", "Special Weather Statement", "Tornado Warning"},
                      "NWS-IDP-PROD-3965873-3369046,urn:oid:2.49.0.1.840.0.5d7e9f-sws,"
                      "urn:oid:2.49.0.1.840.0.8e4f5a-tor"},
        SelectionCase{"104,26",
                      {"Special Weather Statement", "Heat Advisory", "Tornado Warning"},
                      "urn:oid:2.49.0.1.840.0.5d7e9f-sws,urn:oid:2.49.0.1.840.0.7c1d2e-heat,"
                      "urn:oid:2.49.0.1.840.0.8e4f5a-tor"},
        SelectionCase{",", {}, ""}));

TEST_F(AlertTest, PulseEpochIsTheLastAlertReadEvenWhenItIsNotKept)
{
    ProcessWeatherBugAlerts(alertDocument("pulse-three-alerts.json"));
    EXPECT_EQ(GetCache("Alerts", "Count"), "2"); // the air quality alert is not selected
    EXPECT_EQ(GetCache("Alerts", "AlertEpoch"), "b8e0f1a3-55c2-4d19-9e07-c3a1d2e4f603");
    SavePref("SevereAlert", "SelectedAlerts", ",");
    ProcessWeatherBugAlerts(alertDocument("pulse-three-alerts.json"));
    EXPECT_EQ(GetCache("Alerts", "Count"), "0");
    EXPECT_EQ(GetCache("Alerts", "Type"), "");
    EXPECT_EQ(GetCache("Alerts", "AlertEpoch"), "b8e0f1a3-55c2-4d19-9e07-c3a1d2e4f603");
}

TEST_F(AlertTest, PulseTimesAreLocalAndPlainExpiriesAreNeverFiltered)
{
    SaveCache("Current", "observed", "1/12/2024 10:00:00 AM");
    const QString document = ReadFile(alertDocument("pulse-three-alerts.json"))
                                 .replace("2024-01-13T06:00:00Z", "2024-03-13T06:00:00Z");
    const std::optional<AlertSet> set = ReadWeatherBugAlerts(document, "test");
    ASSERT_TRUE(set);
    ASSERT_EQ(set->alerts.size(), 2); // two months ahead, but the expiry has no " on "
    EXPECT_EQ(set->alerts[0].issued, "1/12/2024 9:04:00 AM"); // 15:04 UTC in Chicago
    EXPECT_EQ(set->alerts[0].expires, "3/13/2024 1:00:00 AM");
}

TEST_F(AlertTest, ProcessAlertsDownloadPicksTheServiceByTheStation)
{
    SavePref("CityCode", "ZipCode", "97201");
    ProcessAlertsDownload(alertDocument("nws-floodwatch.json"), true, false);
    EXPECT_EQ(GetCache("Alerts", "Type"), "NWS");
    SavePref("CityCode", "ZipCode", "0");
    ProcessAlertsDownload(alertDocument("pulse-three-alerts.json"), false, false);
    EXPECT_EQ(GetCache("Alerts", "Type"), "EarthNetworks");
}

} // namespace
