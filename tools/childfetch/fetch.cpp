#include "tools/childfetch/fetch.h"

#include <curl/curl.h>

#include <cstdlib>
#include <memory>

namespace Tarnby::Child
{

namespace
{

constexpr long MaxRedirects = 10;

struct Transfer {
    const BodySink *sink = nullptr;
};

size_t writeBody(char *data, size_t size, size_t count, void *userData)
{
    auto *transfer = static_cast<Transfer *>(userData);
    const size_t bytes = size * count;
    return (*transfer->sink)(data, bytes) ? bytes : 0;
}

int transportStatus(int curlCode)
{
    return int(StatusTransportBase) + curlCode;
}

using EasyHandle = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;

void configure(CURL *curl, const std::string &url, const std::string &agent,
               const FetchLimits &limits, Transfer &transfer)
{
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_USERAGENT, agent.c_str());
    curl_easy_setopt(curl, CURLOPT_ACCEPT_ENCODING, ""); // every encoding libcurl decodes
    curl_easy_setopt(curl, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(curl, CURLOPT_MAXREDIRS, MaxRedirects);
    // A file:// or other link must never read local files or talk other protocols.
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(curl, CURLOPT_TIMEOUT, limits.timeoutSeconds);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, limits.connectTimeoutSeconds);
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    if (limits.maxBytes > 0)
        curl_easy_setopt(curl, CURLOPT_MAXFILESIZE_LARGE, curl_off_t(limits.maxBytes));
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, writeBody);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &transfer);
}

} // namespace

std::string userAgent()
{
    const char *fromEnvironment = std::getenv("TARNBY_USER_AGENT");
    if (fromEnvironment && *fromEnvironment) return fromEnvironment;
    return std::string("Tarnby/") + TARNBY_VERSION + " (desktop weather station)";
}

int statusForTransfer(int curlCode, long httpCode, long proxyConnectCode, bool connected)
{
    if (proxyConnectCode == StatusProxyAuthentication) return StatusProxyAuthentication;
    switch (curlCode) {
    case CURLE_OK:
        if (httpCode >= 200 && httpCode < 300) return StatusOk;
        return httpCode > 0 ? int(httpCode) : transportStatus(CURLE_WEIRD_SERVER_REPLY);
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_COULDNT_RESOLVE_PROXY:
    case CURLE_COULDNT_CONNECT:
        return StatusUnreachable;
    case CURLE_OPERATION_TIMEDOUT:
        return connected ? transportStatus(curlCode) : StatusUnreachable;
    default:
        return transportStatus(curlCode);
    }
}

FetchResult fetch(const std::string &url, const BodySink &sink, const FetchLimits &limits)
{
    FetchResult result;
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK) {
        result.status = transportStatus(CURLE_FAILED_INIT);
        return result;
    }
    EasyHandle curl(curl_easy_init(), curl_easy_cleanup);
    if (!curl) {
        result.status = transportStatus(CURLE_FAILED_INIT);
        return result;
    }
    const std::string agent = userAgent();
    Transfer transfer{&sink};
    configure(curl.get(), url, agent, limits, transfer);
    const CURLcode code = curl_easy_perform(curl.get());

    long httpCode = 0;
    long connectCode = 0;
    curl_off_t connectTime = 0;
    char *effective = nullptr;
    curl_easy_getinfo(curl.get(), CURLINFO_RESPONSE_CODE, &httpCode);
    curl_easy_getinfo(curl.get(), CURLINFO_HTTP_CONNECTCODE, &connectCode);
    curl_easy_getinfo(curl.get(), CURLINFO_CONNECT_TIME_T, &connectTime);
    curl_easy_getinfo(curl.get(), CURLINFO_EFFECTIVE_URL, &effective);
    result.status = statusForTransfer(code, httpCode, connectCode, connectTime > 0);
    result.effectiveUrl = effective ? effective : url;
    return result;
}

} // namespace Tarnby::Child
