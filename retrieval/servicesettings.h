#pragma once
// The vendor service steers the installed program: its settings document names the
// Pulse API root, the data sources and the keys of outside services, and it hands out
// the token the Pulse API requires. The service is reached through Host::Vendor.
//
// Settings: "Misc"/"Token" and "Misc"/"TokenExpiration" (in spite of its name the time
// the token was fetched, ISO date and time), "Misc"/"Setting<name>" for the stored
// service settings, "Misc"/"Version" sent along as the key Version.

#include <QString>

namespace Tarnby
{

// The current token, fetched from /GetPulseApiKey when there is none or when it was
// fetched more than 23 hours ago. Empty when the fetch failed: requests then go out
// without a token and are refused.
QString GetApiToken();
// Empties "Misc"/"Token" and "Misc"/"TokenExpiration".
void ClearApiToken();

// Fetches /GetTbSettings and applies it to the process values and "Misc"/"Setting<name>".
// A value outside its accepted list is ignored element by element; a new pulseurl clears
// the token; a document that is not XML changes nothing. A document that parses sets
// SettingsLoaded.
void LoadServiceSettings();
// Loads the service settings unless they are loaded or the last attempt is not yet an
// hour old; remembers the attempt.
void ReloadServiceSettingsIfDue();

// Whether the vendor service must be reached over plain HTTP (the VendorPlainHttp
// decision of start-up): true when /tarnby/app/downloadtest does not answer "ok" over
// HTTPS but does over the plain-HTTP host with "?ssl=0".
bool HttpsProbe();

} // namespace Tarnby
