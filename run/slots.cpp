#include "run/slots.h"

namespace Tarnby
{

namespace
{

constexpr std::array<SlotInfo, kSlotCount> kSlots{{
    {Slot::Conditions, Failure::Conditions, "Conditions timed out (modRetrieveWeather)", true},
    {Slot::Hourly, Failure::Hourly, "Hourly timed out (modRetrieveWeather)", true},
    {Slot::Detailed, Failure::Detailed, "Detailed timed out (modRetrieveWeather)", true},
    {Slot::NwsDetailed, Failure::NwsDetailed, "NWS detailed timed out (modRetrieveWeather)", true},
    {Slot::Alerts, Failure::Alerts, "Alerts timed out (modRetrieveWeather)", true},
    {Slot::Links, Failure::Links, "Links timed out (modRetrieveWeather)", true},
    {Slot::Map, Failure::Map, "Map timed out (modRetrieveWeather)", true},
    {Slot::DailyHistory, Failure::History, "Daily history timed out (modRetrieveWeather)", true},
    // The yearly history has always logged the daily words.
    {Slot::YearlyHistory, Failure::History, "Daily history timed out (modRetrieveWeather)", true},
    {Slot::UV, Failure::Uv, "UV timed out (modRetrieveWeather)", false},
}};

constexpr bool inEnumOrder()
{
    for (std::size_t i = 0; i < kSlots.size(); ++i)
        if (static_cast<std::size_t>(kSlots[i].slot) != i) return false;
    return true;
}
static_assert(inEnumOrder(), "kSlots must list the slots in the order of enum Slot");

bool tokenSlot(Slot slot)
{
    return slot == Slot::Conditions || slot == Slot::Hourly || slot == Slot::Detailed;
}

} // namespace

const std::array<SlotInfo, kSlotCount> &slotTable()
{
    return kSlots;
}

const SlotInfo &slotInfo(Slot slot)
{
    return kSlots[static_cast<std::size_t>(slot)];
}

void TakeStatus(Slot slot, double status, bool weatherBugGroup, RunState &state,
                StatusFindings &findings)
{
    state.failed(slotInfo(slot).failure) = status != DownloadStatus::Ok;
    if (status == DownloadStatus::ServerNotFound) findings.ServerNotFound = true;
    if (status == DownloadStatus::ProxyAuthenticationRequired) findings.ProxyAuthRequired = true;
    if (status == DownloadStatus::Unauthorized) {
        state.failed(Failure::Detailed) = true;
        if (weatherBugGroup && tokenSlot(slot)) findings.TokenRejected = true;
    }
}

} // namespace Tarnby
