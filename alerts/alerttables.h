#pragma once
// The two alert tables: the list of alert types the user picks from, and the mapping of
// the names that services give their alerts to those type numbers.

#include <QList>
#include <QString>

namespace Tarnby
{

// The alert types offered to the user, as the options store them: "name,code" items
// joined by "|". A code may itself hold commas ("35,38,40").
QString AlertTypeList();

struct AlertType {
    QString name;
    QString code; // everything behind the first comma of the item
};
// AlertTypeList() split into its items, in the list's order.
QList<AlertType> AlertTypes();

// The type list selected when the user has chosen nothing (SevereAlert/SelectedAlerts
// empty).
QString DefaultSelectedAlerts();

// The type number of one incoming alert name, compared exactly after trimming ("Flash
// Flood Watch" gives "30"); "0" for any name the table does not hold.
QString AlertNameCode(const QString &name);
// Every name the mapping knows, for tests and the options' checks.
QStringList AlertCodeNames();

} // namespace Tarnby
