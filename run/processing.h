#pragma once
// The processing step of a run: each downloaded document to its kind's entry point, and
// the other steps of the station's group, in the group's order.

#include "retrieval/fetch.h"
#include "run/slots.h"

#include <QString>

namespace Tarnby
{

// One progress step, and the kind's entry point with the job's body when the job
// belongs to the run and did not fail. Kinds without an entry point only count.
void ProcessDownload(const QString &kind, const DownloadJob &job, bool failed, bool newData,
                     bool force);

// The processing order of a group ("WeatherBug", "WUnderground", "NWS", "CWOP"):
// observations through the provider classes, documents by kind, time zone and sun,
// database insert, post-processing and the group's own steps. Sets FailedConditions
// from the observation fetch and FailedTimeZone from the time zone step.
void ProcessGroup(const QString &group, RunSlots &jobs, bool newData, bool force);

// For a Weather Underground station whose daily history was not downloaded: the slow
// values kept in the Cache section go back into Current.
void CopySlowValues();

} // namespace Tarnby
