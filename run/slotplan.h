#pragma once
// Which download slots a run serves: by the station's group, whether it lies outside
// the United States, whether only alerts are wanted, and by how fresh the cached data
// are. The Map slot is always served; what it fetches is the map step's choice.

#include "run/runurls.h"
#include "run/slots.h"

#include <QDateTime>
#include <QString>

namespace Tarnby
{

struct SlotPlanInput {
    QString group;
    bool international = false;
    bool alertsOnly = false;
};

// Sets Enabled and Url of every slot but the Map's URL. For a station outside the US the
// cache sections UV and Alerts are deleted; a history slot whose slow values in the
// station's Cache section are not numbers is forced on and those values cleared.
void EnableSlots(RunSlots &jobs, const RunUrls &urls, const SlotPlanInput &input,
                 const QDateTime &now);

} // namespace Tarnby
