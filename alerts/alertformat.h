#pragma once
// The texts made from the stored alerts (the Alerts branch of the Weather cache): the
// short title of one alert, the list of all short titles, and the bulletins in HTML or
// plain form. They read the branch afresh on each call and never fail: a missing key is
// an empty text.

#include <QString>

namespace Tarnby
{

// A short name for an alert from its full title: "The Flood Warning remains in effect"
// gives "Flood Warning". A title that is empty or speaks of "cancelled" or "expired"
// (in any case) gives an empty text, which drops the alert from the title list.
QString GetAlertShortTitle(const QString &title);

// All short titles, "A, B & C" (" &amp; " with html); titles left empty are passed over
// without moving the " & ", which belongs to the last alert. "N/A" when no alert has one.
QString GetAlertsInfo(bool html);

// All bulletins, each with its issue and expiry lines. html marks up the bulletin's
// headings and sections (red headings with colour) and parts bulletins by five "<BR>";
// plain text runs each bulletin into one line of sentences, parted by CR LF.
QString GetAlertsFullText(bool html, bool colour);

// What the template tokens of the alerts show: the bulletins (fullText) or the short
// titles, with the HTML dress and colour, or plain.
QString AlertTokenText(bool fullText, bool html);

} // namespace Tarnby
