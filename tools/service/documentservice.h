#pragma once
// A loopback HTTP service answering with recorded documents from a folder, for tests and
// the offline demo. It listens on 127.0.0.1 only. The folder mapping and routes.tsv
// (statuses, hangs, slow and gzip answers) are described in tools/service/README.md.
// No Qt: it is shared by the Qt tests, the benchmarks and the tbservice program.

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace Tarnby
{

struct RecordedRequest {
    std::string method;
    std::string target;                                       // path and query as sent
    std::vector<std::pair<std::string, std::string>> headers; // names in lower case

    // The first header of that name (any case), or empty text.
    std::string header(const std::string &name) const;
};

class DocumentService
{
public:
    DocumentService();
    ~DocumentService();
    DocumentService(const DocumentService &) = delete;
    DocumentService &operator=(const DocumentService &) = delete;

    // Serves rootFolder on 127.0.0.1:port; port 0 picks a free one. Returns the port
    // listened on, or 0 when the port cannot be had or the service is already running.
    int start(const std::string &rootFolder, int port = 0);
    // Ends all answers in progress (held and slow ones at once), closes the port and
    // waits for the service's threads. Safe to call when not running.
    void stop();
    int port() const;

    // The latest requests, oldest first (at most the last 1000).
    std::vector<RecordedRequest> requests() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Tarnby
