#include "platform/LoopbackServer.hpp"

#include <httplib.h>

#include "LoopbackWorkers.hpp"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <condition_variable>
#include <deque>
#include <filesystem>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>
#include <thread>
#include <utility>

namespace platform::testing {

namespace {

// After stop(), a worker thread that holds an idle keep-alive connection keeps waiting for the
// next request until the keep-alive time-out (5 s) runs out, and the server's destructor joins
// it. Shutting down every connection accepted on `port` wakes them at once. The
// sockets are found by their local port, so one that was closed and whose number was reused
// (by a client socket, or another server's) is never touched.
void shutDownAcceptedConnections(int port) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", ignored)) {
        int fd = -1;
        try {
            fd = std::stoi(entry.path().filename().string());
        } catch (const std::exception&) {
            continue;
        }
        sockaddr_in address{};
        socklen_t length = sizeof address;
        if (getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) != 0 || address.sin_family != AF_INET ||
            ntohs(address.sin_port) != port) {
            continue;
        }
        int listening = 0;
        socklen_t optionLength = sizeof listening;
        if (getsockopt(fd, SOL_SOCKET, SO_ACCEPTCONN, &listening, &optionLength) != 0 || listening != 0) continue;
        ::shutdown(fd, SHUT_RDWR);
    }
}

int hexValue(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

std::string percentDecode(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size()) {
            const int hi = hexValue(text[i + 1]);
            const int lo = hexValue(text[i + 2]);
            if (hi >= 0 && lo >= 0) {
                out += static_cast<char>(hi * 16 + lo);
                i += 2;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

std::vector<std::pair<std::string, std::string>> parseQuery(std::string_view query) {
    std::vector<std::pair<std::string, std::string>> items;
    while (!query.empty()) {
        const auto amp = query.find('&');
        const auto item = query.substr(0, amp);
        if (!item.empty()) {
            const auto eq = item.find('=');
            items.emplace_back(percentDecode(item.substr(0, eq)),
                               eq == std::string_view::npos ? std::string() : percentDecode(item.substr(eq + 1)));
        }
        if (amp == std::string_view::npos) break;
        query.remove_prefix(amp + 1);
    }
    return items;
}

// The library listens with a backlog of 5, fixed when it was built: a burst of new connections
// overflows it, and the kernel drops their SYNs, which clients send again only after 1 s, then
// 3 s more; some of those it answers with SYN cookies instead and, finding no room to accept
// them, resets them (2 resets and 137 answers past 1 s in one 50-connection soak). Listening
// again on the bound socket raises the backlog.
class WideBacklogServer final : public httplib::Server {
public:
    void widenBacklog() { ::listen(svr_sock_, SOMAXCONN); }
};

// What the library did on this worker thread for the request being served: whether it was
// counted in flight (routing started) and whether a handler of ours answered it. The library
// serves one request at a time per thread, from parsing through the logger.
struct RequestState {
    bool counted = false;
    bool answered = false;
};
thread_local RequestState tRequest;

// A body that is too large is still read (and dropped) up to this much further, so that a
// client still sending gets the 413 rather than a reset connection.
constexpr std::size_t kDrainBytes = 16u << 20;

bool matches(const std::string& pattern, const std::string& path) {
    if (!pattern.empty() && pattern.back() == '*')
        return path.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
    return pattern == path;
}

}  // namespace

class LoopbackServer::Impl {
public:
    explicit Impl(Options options)
        : keepRequests_(options.keepRequests),
          maxBodyBytes_(options.maxBodyBytes),
          refusal_(std::move(options.refusal)) {
        const std::size_t kept = options.threads;
        const std::size_t most = std::max(options.maxThreads, options.threads);
        server_.new_task_queue = [kept, most] {
            return new loopback_internal::LoopbackWorkers(kept, most, std::chrono::seconds(10));
        };
        server_.set_tcp_nodelay(true);
        server_.set_keep_alive_max_count(1'000'000);
        server_.set_keep_alive_timeout(std::max<std::chrono::seconds::rep>(options.idleTimeout.count(), 1));
        server_.set_read_timeout(options.readTimeout);
        server_.set_write_timeout(options.writeTimeout);
        server_.set_payload_max_length(maxBodyBytes_);
        auto withoutBody = [this](const httplib::Request& request, httplib::Response& response) {
            handle(request, {}, response);
        };
        auto withBody = [this](const httplib::Request& request, httplib::Response& response,
                               const httplib::ContentReader& reader) { readAndHandle(request, response, reader); };
        // A request counts as in flight from routing until its response has been written (the
        // logger runs after the write), so that stop() lets answers cut short go out first.
        server_.set_pre_routing_handler([this](const httplib::Request&, httplib::Response&) {
            std::lock_guard lock(stopMutex_);
            ++inFlight_;
            tRequest.counted = true;
            return httplib::Server::HandlerResponse::Unhandled;
        });
        server_.set_error_handler(
            httplib::Server::HandlerWithResponse([this](const httplib::Request&, httplib::Response& response) {
                if (tRequest.answered || !refusal_) return httplib::Server::HandlerResponse::Unhandled;
                refuse(response, response.status);
                return httplib::Server::HandlerResponse::Handled;
            }));
        server_.set_logger([this](const httplib::Request&, const httplib::Response&) {
            const bool counted = std::exchange(tRequest, RequestState{}).counted;
            if (!counted) return;
            {
                std::lock_guard lock(stopMutex_);
                --inFlight_;
            }
            stopWake_.notify_all();
        });
        server_.Get(".*", withoutBody);
        server_.Options(".*", withoutBody);
        server_.Post(".*", withBody);
        server_.Put(".*", withBody);
        server_.Patch(".*", withBody);
        server_.Delete(".*", withBody);
        port_ = server_.bind_to_any_port("127.0.0.1");
        if (port_ <= 0) throw std::runtime_error("loopback server: cannot bind 127.0.0.1");
        server_.widenBacklog();
        thread_ = std::thread([this] { server_.listen_after_bind(); });
        while (!server_.is_running()) std::this_thread::yield();
    }

    ~Impl() { stop(); }

    void stop() {
        {
            std::lock_guard lock(stopMutex_);
            stopping_ = true;
        }
        stopWake_.notify_all();
        server_.stop();
        {
            std::unique_lock lock(stopMutex_);
            stopWake_.wait_for(lock, std::chrono::seconds(2), [this] { return inFlight_ == 0; });
        }
        shutDownAcceptedConnections(port_);
        if (thread_.joinable()) thread_.join();
    }

    void on(std::string method, std::string pattern, LoopbackHandler handler) {
        std::unique_lock lock(routesMutex_);
        routes_.push_back(Route{std::move(method), std::move(pattern), std::move(handler)});
    }

    int port() const { return port_; }

    std::vector<LoopbackRequest> received() const {
        std::lock_guard lock(recordMutex_);
        return {received_.begin(), received_.end()};
    }
    std::size_t count() const {
        std::lock_guard lock(recordMutex_);
        return receivedCount_;
    }
    void clear() {
        std::lock_guard lock(recordMutex_);
        received_.clear();
        receivedCount_ = 0;
    }

private:
    struct Route {
        std::string method;
        std::string pattern;
        LoopbackHandler handler;
    };

    LoopbackHandler find(const std::string& method, const std::string& path) const {
        std::shared_lock lock(routesMutex_);
        for (auto it = routes_.rbegin(); it != routes_.rend(); ++it) {
            const bool methodMatches =
                it->method == "*" || it->method == method || (method == "HEAD" && it->method == "GET");
            if (methodMatches && matches(it->pattern, path)) return it->handler;
        }
        return nullptr;
    }

    // Reads a body, keeping at most `maxBodyBytes_` of it, then answers.
    void readAndHandle(const httplib::Request& request, httplib::Response& response,
                       const httplib::ContentReader& reader) {
        std::string body;
        std::size_t seen = 0;
        const bool multipart = request.is_multipart_form_data();
        auto receive = [&](const char* data, std::size_t length) {
            seen += length;
            if (seen > maxBodyBytes_) return seen - maxBodyBytes_ <= kDrainBytes;
            if (!multipart) body.append(data, length);
            return true;
        };
        const bool complete =
            multipart ? reader([](const httplib::MultipartFormData&) { return true; }, receive) : reader(receive);
        // The library itself answers 413 to a declared length over the limit, having read it.
        if (seen > maxBodyBytes_ || response.status == 413) {
            tRequest.answered = true;
            refuse(response, 413);
            if (!complete) response.set_header("Connection", "close");
            return;
        }
        if (!complete) {
            tRequest.answered = true;
            refuse(response, 400);
            response.set_header("Connection", "close");
            return;
        }
        handle(request, std::move(body), response);
    }

    void refuse(httplib::Response& response, int status) const {
        response.status = status;
        if (!refusal_) return;
        write(refusal_(status), response);
    }

    static void write(LoopbackResponse answer, httplib::Response& response) {
        response.status = answer.status;
        for (const auto& [name, value] : answer.headers) {
            if (equalsIgnoringCase(name, "Content-Type") || equalsIgnoringCase(name, "Content-Length")) continue;
            response.set_header(name, value);
        }
        const auto contentType = answer.headers.get("Content-Type").value_or("text/plain");
        if (answer.closeMidBody) {
            auto body = std::make_shared<std::string>(std::move(answer.body));
            response.set_content_provider(body->size(), contentType,
                                          [body](size_t offset, size_t, httplib::DataSink& sink) {
                                              if (offset > 0) return false;  // abort: the connection closes
                                              return sink.write(body->data(), body->size() / 2);
                                          });
        } else if (!answer.body.empty() || answer.headers.contains("Content-Type")) {
            response.set_content(std::move(answer.body), contentType);
        }
    }

    void handle(const httplib::Request& request, std::string body, httplib::Response& response) {
        tRequest.answered = true;
        LoopbackRequest recorded;
        recorded.method = request.method;
        recorded.path = request.path;
        if (const auto q = request.target.find('?'); q != std::string::npos) {
            recorded.rawQuery = request.target.substr(q + 1);
            recorded.query = parseQuery(recorded.rawQuery);
        }
        for (const auto& [name, value] : request.headers) recorded.headers.add(name, value);
        recorded.body = std::move(body);
        {
            std::lock_guard lock(recordMutex_);
            ++receivedCount_;
            if (keepRequests_ > 0) {
                if (received_.size() == keepRequests_) received_.pop_front();
                received_.push_back(recorded);
            }
        }

        const auto handler = find(recorded.method, recorded.path);
        if (!handler) {
            refuse(response, 404);
            return;
        }
        auto answer = handler(recorded);
        if (answer.delay.count() > 0) {
            std::unique_lock lock(stopMutex_);
            if (stopWake_.wait_for(lock, answer.delay, [this] { return stopping_; })) {
                // Cut short by stop(): close the connection rather than leave it waiting.
                lock.unlock();
                refuse(response, 503);
                response.set_header("Connection", "close");
                return;
            }
        }
        write(std::move(answer), response);
    }

    WideBacklogServer server_;
    int port_ = 0;
    std::thread thread_;

    mutable std::shared_mutex routesMutex_;
    std::vector<Route> routes_;

    const std::size_t keepRequests_;
    const std::size_t maxBodyBytes_;
    const std::function<LoopbackResponse(int)> refusal_;
    mutable std::mutex recordMutex_;
    std::deque<LoopbackRequest> received_;
    std::size_t receivedCount_ = 0;

    std::mutex stopMutex_;
    std::condition_variable stopWake_;
    bool stopping_ = false;
    int inFlight_ = 0;
};

LoopbackServer::LoopbackServer() : LoopbackServer(Options{}) {}
LoopbackServer::LoopbackServer(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}
LoopbackServer::~LoopbackServer() = default;

void LoopbackServer::on(std::string method, std::string pathPattern, LoopbackHandler handler) {
    impl_->on(std::move(method), std::move(pathPattern), std::move(handler));
}

std::string LoopbackServer::baseUrl() const {
    return "http://127.0.0.1:" + std::to_string(impl_->port());
}
int LoopbackServer::port() const {
    return impl_->port();
}
std::vector<LoopbackRequest> LoopbackServer::receivedRequests() const {
    return impl_->received();
}
std::size_t LoopbackServer::requestCount() const {
    return impl_->count();
}
void LoopbackServer::clearReceivedRequests() {
    impl_->clear();
}
void LoopbackServer::stop() {
    impl_->stop();
}

}  // namespace platform::testing
