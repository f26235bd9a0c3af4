#include "platform/LoopbackServer.hpp"

#include <httplib.h>

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

bool matches(const std::string& pattern, const std::string& path) {
    if (!pattern.empty() && pattern.back() == '*')
        return path.starts_with(std::string_view(pattern).substr(0, pattern.size() - 1));
    return pattern == path;
}

}  // namespace

class LoopbackServer::Impl {
public:
    explicit Impl(Options options) : keepRequests_(options.keepRequests) {
        const std::size_t threads = options.threads;
        server_.new_task_queue = [threads] { return new httplib::ThreadPool(threads); };
        server_.set_tcp_nodelay(true);
        server_.set_keep_alive_max_count(1'000'000);
        auto dispatch = [this](const httplib::Request& request, httplib::Response& response) {
            handle(request, response);
        };
        // A request counts as in flight from routing until its response has been written (the
        // logger runs after the write), so that stop() lets answers cut short go out first.
        server_.set_pre_routing_handler([this](const httplib::Request&, httplib::Response&) {
            std::lock_guard lock(stopMutex_);
            ++inFlight_;
            return httplib::Server::HandlerResponse::Unhandled;
        });
        server_.set_logger([this](const httplib::Request&, const httplib::Response&) {
            {
                std::lock_guard lock(stopMutex_);
                --inFlight_;
            }
            stopWake_.notify_all();
        });
        server_.Get(".*", dispatch);
        server_.Post(".*", dispatch);
        server_.Put(".*", dispatch);
        server_.Patch(".*", dispatch);
        server_.Delete(".*", dispatch);
        server_.Options(".*", dispatch);
        port_ = server_.bind_to_any_port("127.0.0.1");
        if (port_ <= 0) throw std::runtime_error("loopback server: cannot bind 127.0.0.1");
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

    void handle(const httplib::Request& request, httplib::Response& response) {
        LoopbackRequest recorded;
        recorded.method = request.method;
        recorded.path = request.path;
        if (const auto q = request.target.find('?'); q != std::string::npos) {
            recorded.rawQuery = request.target.substr(q + 1);
            recorded.query = parseQuery(recorded.rawQuery);
        }
        for (const auto& [name, value] : request.headers) recorded.headers.add(name, value);
        recorded.body = request.body;
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
            response.status = 404;
            return;
        }
        auto answer = handler(recorded);
        if (answer.delay.count() > 0) {
            std::unique_lock lock(stopMutex_);
            if (stopWake_.wait_for(lock, answer.delay, [this] { return stopping_; })) {
                // Cut short by stop(): close the connection rather than leave it waiting.
                response.status = 503;
                response.set_header("Connection", "close");
                return;
            }
        }
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

    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;

    mutable std::shared_mutex routesMutex_;
    std::vector<Route> routes_;

    const std::size_t keepRequests_;
    mutable std::mutex recordMutex_;
    std::deque<LoopbackRequest> received_;
    std::size_t receivedCount_ = 0;

    std::mutex stopMutex_;
    std::condition_variable stopWake_;
    bool stopping_ = false;
    int inFlight_ = 0;
};

LoopbackServer::LoopbackServer() : LoopbackServer(Options{}) {}
LoopbackServer::LoopbackServer(Options options) : impl_(std::make_unique<Impl>(options)) {}
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
