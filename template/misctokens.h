#pragma once
// The misc pass of template expansion: alerts, dates and times, folders, the skin, the
// station, the update stamps and the skin options.

#include "template/tokentext.h"

#include <QString>

#include <functional>

namespace Tarnby
{

QString ExpandMiscTokens(QString text);
void ExpandMiscTokens(TokenText &text);

// The observation and download stamps as [UPDATED] (html) and [UPDATED PLAIN] show them.
// A "DualDisplay" of "True" in "OnDownload" is first turned into "TimeDisplay" and
// "ObservedDisplay".
QString FormatUpdated(bool html);
// "Updated 5 minutes ago", from the observation time; "N/A" when it cannot be read.
QString FormatUpdatedAgo();

// The address of the station's web page behind [STATION URL]. The layer that knows the
// service hosts installs it; without it the token is empty.
void setStationWebPageSource(std::function<QString()> source);

// The interface skin in use ("Skins"/"Interface", "Splendid4" when empty).
QString InterfaceSkinName();

} // namespace Tarnby
