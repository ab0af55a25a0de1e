#pragma once
// Joins the retrieval run to the readers that fill the Weather cache: each document
// kind to its parser, the run's group steps to the provider classes, and the template
// engine's tokens to the alert formatters and the station's web page. Called once at
// start by tarnby and tarnby-cli; the desktop layer adds its own hooks on top.

namespace Tarnby
{

struct SchedulerHooks;

void InstallRetrievalWiring();
// The realtime tick's live readings, per station group.
SchedulerHooks ProviderSchedulerHooks();

} // namespace Tarnby
