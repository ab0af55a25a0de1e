#include "tools/service/documentservice.h"

#include "tools/service/answer.h"

#include <httplib.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace Tarnby
{

namespace
{

constexpr const char *LoopbackAddress = "127.0.0.1";
constexpr size_t MaxRecordedRequests = 1000;
constexpr int WorkerThreads = 16;
// Slow answers go out in ten pieces a second.
constexpr auto PacingInterval = std::chrono::milliseconds(100);

std::string lowerAscii(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return char(c >= 'A' && c <= 'Z' ? c + 32 : c); });
    return text;
}

std::string queryOf(const std::string &target)
{
    const size_t mark = target.find('?');
    return mark == std::string::npos ? std::string() : target.substr(mark + 1);
}

RecordedRequest recordOf(const httplib::Request &request)
{
    RecordedRequest record{request.method, request.target, {}};
    for (const auto &[name, value] : request.headers)
        record.headers.emplace_back(lowerAscii(name), value);
    return record;
}

} // namespace

std::string RecordedRequest::header(const std::string &name) const
{
    const std::string wanted = lowerAscii(name);
    for (const auto &[key, value] : headers)
        if (key == wanted) return value;
    return {};
}

struct DocumentService::Private {
    std::unique_ptr<httplib::Server> server;
    std::thread listener;
    std::string root;
    int port = 0;

    mutable std::mutex mutex;
    std::condition_variable stopRequested;
    bool stopping = false;
    std::deque<RecordedRequest> requests;

    // Waits, ending early when the service stops; false when it stopped.
    template <class Duration> bool pause(Duration duration)
    {
        std::unique_lock lock(mutex);
        return !stopRequested.wait_for(lock, duration, [this] { return stopping; });
    }

    void record(const httplib::Request &request)
    {
        std::lock_guard lock(mutex);
        requests.push_back(recordOf(request));
        if (requests.size() > MaxRecordedRequests) requests.pop_front();
    }

    std::unique_ptr<httplib::Server> makeServer();
    void answer(const httplib::Request &request, httplib::Response &response);
    void sendBody(httplib::Response &response, Answer &answer);
};

void DocumentService::Private::answer(const httplib::Request &request, httplib::Response &response)
{
    record(request);
    Answer answer = answerFor(root, request.path, queryOf(request.target));
    if (answer.hangSeconds > 0 && !pause(std::chrono::seconds(answer.hangSeconds))) {
        response.status = 503;
        return;
    }
    response.status = answer.status;
    for (const auto &[name, value] : answer.headers)
        response.set_header(name, value);
    sendBody(response, answer);
}

// Bodies go out through a content provider of known length: that way the server never
// compresses on its own, and a slow answer can be paced.
void DocumentService::Private::sendBody(httplib::Response &response, Answer &answer)
{
    if (answer.gzip) {
        answer.body = gzipped(answer.body);
        response.set_header("Content-Encoding", "gzip");
    }
    if (answer.body.empty()) {
        response.set_content(std::string(), answer.contentType);
        return;
    }
    auto body = std::make_shared<std::string>(std::move(answer.body));
    const size_t piece =
        answer.bytesPerSecond > 0 ? size_t(std::max(1L, answer.bytesPerSecond / 10)) : body->size();
    response.set_content_provider(
        body->size(), answer.contentType,
        [this, body, piece](size_t offset, size_t length, httplib::DataSink &sink) {
            const size_t size = std::min(piece, length);
            if (!sink.write(body->data() + offset, size)) return false;
            return offset + size >= body->size() || pause(PacingInterval);
        });
}

std::unique_ptr<httplib::Server> DocumentService::Private::makeServer()
{
    auto server = std::make_unique<httplib::Server>();
    server->new_task_queue = [] { return new httplib::ThreadPool(WorkerThreads); };
    // Short idle times let stop() finish soon after the last client.
    server->set_keep_alive_timeout(1);
    server->set_read_timeout(2);
    // httplib's default also sets SO_REUSEPORT, which would let a second service share
    // the port unnoticed.
    server->set_socket_options([](socket_t socket) {
        const int yes = 1;
        ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
    });
    server->Get(".*", [this](const httplib::Request &request, httplib::Response &response) {
        answer(request, response);
    });
    return server;
}

DocumentService::DocumentService() : d(std::make_unique<Private>()) {}

DocumentService::~DocumentService()
{
    stop();
}

int DocumentService::start(const std::string &rootFolder, int port)
{
    if (d->server) return 0;
    try {
        auto server = d->makeServer();
        const int bound = port == 0 ? server->bind_to_any_port(LoopbackAddress)
                                    : (server->bind_to_port(LoopbackAddress, port) ? port : 0);
        if (bound <= 0) return 0;
        d->root = rootFolder;
        d->stopping = false;
        d->listener = std::thread([running = server.get()] { running->listen_after_bind(); });
        d->server = std::move(server);
        d->port = bound;
    } catch (const std::exception &) { // no thread to be had
        return 0;
    }
    // stop() only takes effect once the server runs; the port already accepts meanwhile.
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(5);
    while (!d->server->is_running() && std::chrono::steady_clock::now() < deadline)
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    return d->port;
}

void DocumentService::stop()
{
    if (!d->server) return;
    {
        std::lock_guard lock(d->mutex);
        d->stopping = true;
    }
    d->stopRequested.notify_all();
    d->server->stop();
    d->listener.join();
    d->server.reset();
    d->port = 0;
}

int DocumentService::port() const
{
    return d->port;
}

std::vector<RecordedRequest> DocumentService::requests() const
{
    std::lock_guard lock(d->mutex);
    return {d->requests.begin(), d->requests.end()};
}

} // namespace Tarnby
