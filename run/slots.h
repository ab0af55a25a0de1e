#pragma once
// The ten download slots of a retrieval run, served in this fixed order, and what a
// finished slot's status means for the run.

#include "retrieval/fetch.h"
#include "run/runstate.h"

#include <array>

namespace Tarnby
{

enum class Slot {
    Conditions,
    Hourly,
    Detailed,
    NwsDetailed,
    Alerts,
    Links,
    Map,
    DailyHistory,
    YearlyHistory,
    UV,
};
inline constexpr int kSlotCount = 10;

struct SlotInfo {
    Slot slot;
    Failure failure;
    const char *timeoutLine; // logged when the slot's download times out
    bool deletedAtCleanUp;   // its two temporary files are deleted by name at the end
};

// The slots in the order of the run.
const std::array<SlotInfo, kSlotCount> &slotTable();
const SlotInfo &slotInfo(Slot slot);

// The jobs of one run, one per slot.
class RunSlots
{
public:
    DownloadJob &operator[](Slot slot) { return m_jobs[static_cast<int>(slot)]; }
    const DownloadJob &operator[](Slot slot) const { return m_jobs[static_cast<int>(slot)]; }

private:
    std::array<DownloadJob, kSlotCount> m_jobs;
};

// What the statuses of a run's slots tell about the run as a whole.
struct StatusFindings {
    bool ServerNotFound = false;
    bool ProxyAuthRequired = false;
    bool TokenRejected = false;
};

// Takes a finished slot's status (0 for an empty one) into the failure flags: 0 clears
// the slot's flag, anything else sets it. 3 is a server not found, 407 a proxy that
// wants authentication. 401 also sets FailedDetailed, whatever the slot, and for a
// WeatherBug station the token counts as refused when the slot is Conditions, Hourly
// or Detailed.
void TakeStatus(Slot slot, double status, bool weatherBugGroup, RunState &state,
                StatusFindings &findings);

} // namespace Tarnby
