#pragma once
// What the document service answers to one request: the folder mapping and routes.tsv
// described in tools/service/README.md. Pure file reading, no sockets.

#include <string>
#include <utility>
#include <vector>

namespace Tarnby
{

// The longest a route may hold an answer back, so that no request hangs for ever.
inline constexpr int MaxHangSeconds = 60;

struct Answer {
    int status = 404;
    std::string body;
    std::string contentType = "text/plain";
    std::vector<std::pair<std::string, std::string>> headers;
    int hangSeconds = 0;     // hold the answer back this long first
    long bytesPerSecond = 0; // 0: full speed
    bool gzip = false;       // send the body gzip-encoded
};

// The answer for a request of `path` (percent-decoded, starting with "/") and `query`
// (as sent, without the "?") from the documents under root.
Answer answerFor(const std::string &root, const std::string &path, const std::string &query);

// The body gzip-encoded; empty when zlib fails.
std::string gzipped(const std::string &body);

} // namespace Tarnby
