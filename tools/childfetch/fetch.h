#pragma once
// One HTTP GET for the downloader children (dl, tbdownloader), and the status numbers
// they write. No Qt here: the children must start fast.
//
// Status numbers (the decimal text of the status file):
//   0          success: the last answer after redirects was 2xx
//   1          bad command line (nothing was fetched)
//   2          tbdownloader only: the page was fetched but no link in it matched
//   3          the host could not be reached: name or proxy not resolved, connection
//              refused, no route, or the connection attempt timed out
//   401, 407   the server refused the credentials / the proxy wants authentication
//              (also a 407 answer to the proxy's CONNECT)
//   100..599   any other final HTTP status (404, 500, a 3xx without a usable Location)
//   1000 + n   transport failure with libcurl error n, e.g. 1028 time-out after
//              connecting, 1047 too many redirects, 1060 TLS certificate refused,
//              1023 the output could not be written, 1001 scheme other than http(s),
//              1003 malformed URL, 1063 answer larger than allowed

#include <cstddef>
#include <functional>
#include <string>

namespace Tarnby::Child
{

enum Status : int {
    StatusOk = 0,
    StatusBadCommandLine = 1,
    StatusNoLinkFound = 2,
    StatusUnreachable = 3,
    StatusUnauthorized = 401,
    StatusProxyAuthentication = 407,
    StatusTransportBase = 1000,
    StatusOutputNotWritten = StatusTransportBase + 23, // libcurl's write error
    StatusTooLarge = StatusTransportBase + 63,         // libcurl's file size exceeded
};

// Receives the body piece by piece; returning false aborts the transfer.
using BodySink = std::function<bool(const char *data, std::size_t size)>;

struct FetchResult {
    int status = StatusBadCommandLine;
    std::string effectiveUrl; // the URL of the last answer, after redirects
};

struct FetchLimits {
    long timeoutSeconds = 120;       // whole transfer; the parent usually kills earlier
    long connectTimeoutSeconds = 30; // a connection not made in time counts as unreachable
    long long maxBytes = 0;          // 0: no limit
};

// GET with redirects (at most 10, http and https only), gzip/deflate/brotli accepted,
// proxies from the usual environment variables, User-Agent from userAgent().
FetchResult fetch(const std::string &url, const BodySink &sink, const FetchLimits &limits = {});

// TARNBY_USER_AGENT when set and not empty, else "Tarnby/<version> (desktop weather
// station)".
std::string userAgent();

// The status number for a finished transfer; see the table above.
int statusForTransfer(int curlCode, long httpCode, long proxyConnectCode, bool connected);

} // namespace Tarnby::Child
