#pragma once
// URL rewriting shared by every download: the vendor's plain-HTTP route, the vendor
// relay and the escaping that builds relay and log addresses.

#include <QString>

namespace Tarnby
{

// With VendorPlainHttp set, a URL that contains the vendor's host name and "https://"
// and not yet "ssl=0" is lower-cased as a whole (query values too, on purpose), moved
// from the vendor's HTTPS prefix to its plain-HTTP prefix and given "ssl=0". Any
// other URL comes back unchanged, so the function may be applied twice.
QString VendorUrl(const QString &url);

// The vendor relay's address for url: <vendor>/get?url=<UrlEncode(url)>.
QString RelayUrl(const QString &url);

// On an old system (WindowsMajor 9 or below) a URL that begins with the MesoWest API,
// NWS API, NWS western region or Earth Networks API gateway host goes through the relay.
QString RelayIfOldSystem(const QString &url);

// Digits and ASCII letters stay, a blank becomes "+", anything else "%" and its
// hexadecimal UTF-16 code without zero padding. The scan covers as many positions as
// the original text had, while each escape lengthens the text: the tail of a text with
// many escapes stays as it is. Relay and log addresses depend on exactly this.
QString UrlEncode(const QString &text);

} // namespace Tarnby
