// The two tables, the type number of incoming names and the user's selection.

#include "alerts/alertingestion.h"
#include "alerts/alerttables.h"
#include "core/settingsstore.h"
#include "tests/support/testprofile.h"

#include <QSet>

using namespace Tarnby;

namespace
{

TEST(AlertTables, TypeListKeepsItsOrderAndMultiNumberCodes)
{
    const QList<AlertType> types = AlertTypes();
    ASSERT_EQ(types.size(), 69);
    EXPECT_EQ(types.first().name, "911 Telephone Outage Emergency");
    EXPECT_EQ(types.first().code, "311");
    EXPECT_EQ(types.last().name, "Special Weather Statement");
    EXPECT_EQ(types.last().code, "900");
    const auto severeLocal = std::find_if(types.begin(), types.end(), [](const AlertType &t) {
        return t.name == "Severe Local Storm Watch";
    });
    ASSERT_NE(severeLocal, types.end());
    EXPECT_EQ(severeLocal->code, "35,38,40"); // everything behind the first comma
    EXPECT_EQ(AlertTypeList().count('|'), 68);
}

QSet<QString> offeredCodes()
{
    QSet<QString> codes;
    for (const AlertType &type : AlertTypes()) {
        for (const QString &code : type.code.split(','))
            codes.insert(code);
    }
    return codes;
}

// A number that the user cannot pick can never be selected: every number the name table
// gives and every number of the default selection must be on offer.
TEST(AlertTables, EveryNumberInUseIsOffered)
{
    const QSet<QString> offered = offeredCodes();
    const QStringList names = AlertCodeNames();
    EXPECT_EQ(names.size(), 227);
    for (const QString &name : names)
        EXPECT_TRUE(offered.contains(AlertNameCode(name))) << name.toStdString();
    for (const QString &code : DefaultSelectedAlerts().split(','))
        EXPECT_TRUE(offered.contains(code)) << code.toStdString();
}

TEST(AlertTables, NamesAreMatchedWholeAndExactlyAfterTrimming)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Flood Warning", "21"},
        {"Flood Watch", "32"},
        {"Flash Flood Advisory", "31"},
        {"  Tornado Warning ", "26"},
        {"Marine Watch", "24"},
        {"Coastal Flood Statement", "29"},
        {"Lake Effect Snow and Blowing Snow Advisory", "183"},
        {"Blowing/Drifting Snow Watch", "122"},
        {"Red Flag Warning", "307"},
        {"Red Flag Watch", "0"}, // empty cells are no names
        {"Beach Hazards Statement", "29"},
        {"Beach Hazards Warning", "0"},
        {"Air Quality Alert", "104"},
        {"Air Quality Alert Warning", "0"},
        {"Hurricane Warning", "283"},
        {"flood warning", "0"},
        {"Flood", "0"},
        {"Special Weather Statement", "0"}, // offered to the user, but no incoming name
        {"", "0"},
    };
    for (const auto &[name, code] : cases)
        EXPECT_EQ(AlertNameCode(name), code) << name;
}

TEST(AlertCode, TheFirstSelectedNameWinsElseTheLastStands)
{
    struct Case {
        const char *names;
        const char *selected;
        const char *code;
    };
    const Case cases[] = {
        {"Flood Watch", "32", "32"},
        {"Flood Watch, Tornado Warning", "26", "26"},
        {"Tornado Warning,Flood Watch", "32,1", "32"},
        {"Tornado Warning, Flood Watch", "26,32", "26"},
        {"Flood Watch, Heat Advisory", "26", "104"},
        {"Flood Watch, Ozone Action Day", "26", "0"},
        {"Child Abduction Emergency", "26", "303"},
        {"AMBER alert: abduction", ",", "303"},
        {"Abduction Watch, Flood Watch", "26", "32"}, // the last name has a number
        {"", "26", "0"},
    };
    for (const Case &c : cases)
        EXPECT_EQ(GetAlertCode(c.names, c.selected), c.code) << c.names << " / " << c.selected;
}

TEST(AlertCode, SelectionComparesWholeNumbers)
{
    struct Case {
        const char *code;
        const char *selected;
        bool taken;
    };
    const Case cases[] = {
        {"30", "3,30,31", true}, {"3", "30,31", false}, {"31", "3", false},
        {"26", "26", true},      {"26", ",", false},    {"0", ",", false},
        {"0", "26", true},       {"0", "", true},       {"104", "101,302", false},
    };
    for (const Case &c : cases)
        EXPECT_EQ(IsAlertSelected(c.code, c.selected), c.taken) << c.code << " in " << c.selected;
}

class SelectedAlertsTest : public Test::ProfileTest
{
};

TEST_F(SelectedAlertsTest, AnEmptySettingMeansTheDefaultAndACommaNothing)
{
    EXPECT_EQ(SelectedAlerts(), DefaultSelectedAlerts());
    EXPECT_TRUE(IsAlertSelected("26", SelectedAlerts()));
    EXPECT_FALSE(IsAlertSelected("104", SelectedAlerts()));
    SavePref("SevereAlert", "SelectedAlerts", ",");
    EXPECT_EQ(SelectedAlerts(), ",");
    EXPECT_FALSE(IsAlertSelected("0", SelectedAlerts()));
    SavePref("SevereAlert", "SelectedAlerts", "104");
    EXPECT_TRUE(IsAlertSelected("104", SelectedAlerts()));
}

TEST(AlertSeverity, WarningBeforeWatchInAnyCase)
{
    const std::pair<const char *, const char *> cases[] = {
        {"Tornado Warning", "warning"},         {"Tsunami Watch/Warning", "warning"},
        {"WINTER STORM WATCH", "watch"},        {"Heat Advisory", "other"},
        {"Marine Advisory/Warning", "warning"}, {"", "other"},
    };
    for (const auto &[name, severity] : cases)
        EXPECT_EQ(AlertSeverity(name), severity) << name;
}

} // namespace
