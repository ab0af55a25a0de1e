#pragma once
// The process-wide state of the retrieval run: the counters the progress bar is drawn
// from, the guard flags and the failure flags of the download slots. The flags outlive
// a run: a slot that failed stays failed until it succeeds again or a manual run
// clears it.

#include <array>

namespace Tarnby
{

enum class Failure {
    Conditions,
    Hourly,
    Detailed,
    NwsDetailed,
    Alerts,
    Links,
    Map,
    History, // both history slots
    Uv,
    TimeZone, // set by the time zone step when its lookup fails
};
inline constexpr int kFailureCount = 10;

struct RunState {
    int DownloadsCompleted = 0;
    int DownloadsActive = 0;
    int ProgressSteps = 0;
    int ProgressTotal = 20; // ten downloads and ten processing steps
    int ProgressPercent = 0;
    bool RetrievalRunning = false;
    // Tells the interface to hold its renders back while parsers write the cache.
    bool ProcessingData = false;
    std::array<bool, kFailureCount> failures{};

    bool &failed(Failure flag) { return failures[static_cast<int>(flag)]; }
    bool failed(Failure flag) const { return failures[static_cast<int>(flag)]; }
};

// The one instance. Tests may assign a fresh RunState{}.
RunState &runState();

} // namespace Tarnby
