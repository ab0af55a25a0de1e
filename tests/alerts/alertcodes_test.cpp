// The two tables, the type number of incoming names and the user's selection.

#include "alerts/alertingestion.h"
#include "alerts/alerttables.h"
#include "tests/support/testprofile.h"

#include <QSet>

using namespace Tarnby;

namespace
{

// A number the user cannot pick can never be selected: every number the name table gives
// and every number of the default selection must be on offer.
TEST(AlertTables, EveryNumberInUseIsOffered)
{
    const QList<AlertType> types = AlertTypes();
    ASSERT_EQ(types.size(), 69);
    QSet<QString> offered;
    for (const AlertType &type : types) {
        for (const QString &code : type.code.split(','))
            offered.insert(code);
    }
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
        {"  Tornado Warning ", "26"}, {"Air Quality Alert Warning", "0"}, {"flood warning", "0"}};
    for (const auto &[name, code] : cases)
        EXPECT_EQ(AlertNameCode(name), code) << name;
}

TEST(AlertCode, TheFirstSelectedNameWinsElseTheLastStands)
{
    const std::tuple<const char *, const char *, const char *> cases[] = {
        {"Flood Watch, Tornado Warning", "26", "26"},
        {"Tornado Warning,Flood Watch", "32,1", "32"},
        {"Flood Watch, Ozone Action Day", "26", "0"},
        {"AMBER alert: abduction", ",", "303"},
        {"Abduction Watch, Flood Watch", "26", "32"} // the last name has a number
    };
    for (const auto &[names, selected, code] : cases)
        EXPECT_EQ(GetAlertCode(names, selected), code) << names << " / " << selected;
}

using SelectedAlertsTest = Test::ProfileTest;

TEST_F(SelectedAlertsTest, WholeNumbersAreSelectedAndUnknownTypesUnlessNothingIs)
{
    const std::tuple<const char *, const char *, bool> cases[] = {
        {"30", "3,30,31", true}, {"3", "30,31", false}, {"0", "26", true},
        {"0", ",", false},       {"26", ",", false},    {"0", "", true}};
    for (const auto &[code, selected, taken] : cases)
        EXPECT_EQ(IsAlertSelected(code, selected), taken) << code << " in " << selected;
}

} // namespace
