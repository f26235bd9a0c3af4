// The sandbox vault's HTTP side: one table of routes on a loopback server, each behind the key
// check, the host's script (latency, failures) and the request record; and the proxy (answered
// by a key's handler or forwarded to a loopback URL).

#include "sandbox/SandboxVaultServer.hpp"

#include <array>
#include <deque>
#include <future>
#include <map>
#include <mutex>
#include <set>

#include "AnyCodable/JsonReader.hpp"
#include "SandboxVaultHttp.hpp"
#include "SandboxVaultTokens.hpp"
#include "platform/CurlSession.hpp"
#include "platform/Uuid.hpp"

namespace tovi::sandbox {

namespace {

using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;

// Headers that belong to one hop or to the vault itself, not to the forwarded request.
bool isVaultOrHopHeader(std::string_view name) {
    for (std::string_view dropped :
         {"Host", "Content-Length", "Connection", "Transfer-Encoding", "KV-API-KEY", "KV-PROXY-KEY", "KV-PROXY-URL",
          "REMOTE_ADDR", "REMOTE_PORT", "LOCAL_ADDR", "LOCAL_PORT"}) {
        if (platform::equalsIgnoringCase(name, dropped)) return true;
    }
    return false;
}

SandboxVaultRequest vaultRequest(const LoopbackRequest& r) {
    return {r.method, r.path, r.rawQuery, r.headers, r.body};
}

// A route's scripted latency and failure.
struct Script {
    std::chrono::milliseconds latency{0};
    std::optional<std::pair<int, std::string>> failure;  // status, title
    int remaining = 0;                                   // < 0: always
};

}  // namespace

class SandboxVaultServer::Impl {
public:
    explicit Impl(Options options) : options_(std::move(options)), server_(serverOptions(options_)) {
        apiKeys_.insert(options_.apiKeys.begin(), options_.apiKeys.end());
        for (const Route& row : kRoutes) {
            server_.on(row.method, row.pattern, [this, &row](const LoopbackRequest& r) { return serve(row, r); });
        }
    }

    ~Impl() { stop(); }

    void stop() {
        std::vector<std::shared_ptr<platform::DataTask>> forwards;
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
            forwards.assign(forwards_.begin(), forwards_.end());
        }
        for (const auto& task : forwards) task->cancel();
        server_.stop();
    }

    std::string baseUrl() const { return server_.baseUrl(); }
    int port() const { return server_.port(); }

    void addApiKey(std::string key) {
        std::lock_guard lock(mutex_);
        apiKeys_.insert(std::move(key));
    }
    void addProxyKey(std::string key, SandboxProxyHandler handler) {
        std::lock_guard lock(mutex_);
        proxyKeys_.insert_or_assign(std::move(key), std::move(handler));
    }

    void setLatency(SandboxVaultRoute route, std::chrono::milliseconds latency) {
        std::lock_guard lock(mutex_);
        scripts_.at(static_cast<std::size_t>(route)).latency = latency;
    }
    void setFailure(SandboxVaultRoute route, int status, std::string title, int times) {
        if (times == 0) return;
        std::lock_guard lock(mutex_);
        auto& script = scripts_.at(static_cast<std::size_t>(route));
        script.failure.emplace(status, std::move(title));
        script.remaining = times;
    }
    void clearFailures(SandboxVaultRoute route) {
        std::lock_guard lock(mutex_);
        scripts_.at(static_cast<std::size_t>(route)).failure.reset();
    }

    std::vector<SandboxVaultRecord> received() const {
        std::lock_guard lock(mutex_);
        return {records_.begin(), records_.end()};
    }
    std::size_t requestCount() const {
        std::lock_guard lock(mutex_);
        return recordCount_;
    }
    void clearReceived() {
        std::lock_guard lock(mutex_);
        records_.clear();
        recordCount_ = 0;
    }

    SandboxVaultTokens tokens;

    struct Route {
        SandboxVaultRoute route;
        const char* method;
        const char* pattern;
        LoopbackResponse (Impl::*answer)(const LoopbackRequest&);
    };
    static const Route kRoutes[6];

private:
    static platform::testing::LoopbackServer::Options serverOptions(const Options& options) {
        platform::testing::LoopbackServer::Options server;
        server.keepRequests = 0;  // the vault keeps its own records, after the key check
        server.maxBodyBytes = options.maxBodyBytes;
        server.readTimeout = options.readTimeout;
        server.writeTimeout = options.writeTimeout;
        server.idleTimeout = options.idleTimeout;
        server.refusal = refusalAnswer;
        return server;
    }

    // Every route: the key, then the script, then the answer; recorded once the key is known.
    LoopbackResponse serve(const Route& row, const LoopbackRequest& request) {
        const auto receivedAt = std::chrono::system_clock::now();
        const auto started = std::chrono::steady_clock::now();
        if (!authorised(request)) return problemAnswer(401, "Unauthorized");
        if (options_.observer) options_.observer(vaultRequest(request));
        std::chrono::milliseconds latency;
        std::optional<std::pair<int, std::string>> failure;
        {
            std::lock_guard lock(mutex_);
            auto& script = scripts_.at(static_cast<std::size_t>(row.route));
            latency = script.latency;
            if (script.failure) {
                failure = script.failure;
                if (script.remaining > 0 && --script.remaining == 0) script.failure.reset();
            }
        }
        auto response = failure ? problemAnswer(failure->first, failure->second) : (this->*row.answer)(request);
        response.delay = latency;
        const auto took =
            std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - started);
        std::lock_guard lock(mutex_);
        ++recordCount_;
        if (options_.keepRequests > 0) {
            if (records_.size() >= options_.keepRequests) records_.pop_front();
            records_.push_back({request.method, request.path, response.status, request.body.size(),
                                response.body.size(), receivedAt, took + latency});
        }
        return response;
    }

    bool authorised(const LoopbackRequest& request) const {
        const auto key = request.header("KV-API-KEY");
        std::lock_guard lock(mutex_);
        return key && apiKeys_.contains(*key);
    }

    // POST /tokenize and POST /tokens: a JSON object in, the stored token's shape out.
    template <class Store>
    static LoopbackResponse storeBody(const LoopbackRequest& request, Store store) {
        auto parsed = anycodable::readJson(request.body);
        if (!parsed || !parsed->is<anycodable::Map>()) return problemAnswer(400, "The body must be a JSON object");
        auto stored = store(*parsed);
        if (!stored) return problemAnswer(400, "One or more validation errors occurred.", stored.error());
        return jsonAnswer(201, *stored);
    }
    LoopbackResponse tokenize(const LoopbackRequest& request) {
        return storeBody(request, [this](const anycodable::Value& body) { return tokens.tokenize(body); });
    }
    LoopbackResponse createToken(const LoopbackRequest& request) {
        return storeBody(request, [this](const anycodable::Value& body) { return tokens.create(body); });
    }

    LoopbackResponse readToken(const LoopbackRequest& request) {
        const auto token = tokens.find(request.path.substr(std::string_view("/tokens/").size()));
        if (!token) return problemAnswer(404, "Not Found");
        return jsonAnswer(200, *token);
    }

    LoopbackResponse createSession(const LoopbackRequest&) {
        anycodable::Map session;
        session.set("session_key", "sandbox_session_" + platform::Uuid::random().string());
        session.set("nonce", platform::Uuid::random().string());
        session.set("expires_at", "2099-12-31T23:59:59.000Z");
        return jsonAnswer(201, anycodable::Value(std::move(session)));
    }

    LoopbackResponse proxy(const LoopbackRequest& request) {
        if (const auto key = request.header("KV-PROXY-KEY")) {
            SandboxProxyHandler handler;
            {
                std::lock_guard lock(mutex_);
                if (auto it = proxyKeys_.find(*key); it != proxyKeys_.end()) handler = it->second;
            }
            if (!handler) return problemAnswer(404, "Unknown proxy key");
            return relay(handler(vaultRequest(request)));
        }
        if (const auto target = request.header("KV-PROXY-URL")) return forward(request, *target);
        return problemAnswer(400, "Either KV-PROXY-KEY or KV-PROXY-URL is required");
    }

    static LoopbackResponse relay(SandboxVaultAnswer answer) {
        LoopbackResponse response;
        response.status = answer.status;
        for (const auto& [name, value] : answer.headers) {
            if (!isVaultOrHopHeader(name)) response.headers.add(name, value);
        }
        response.body = std::move(answer.body);
        return response;
    }

    LoopbackResponse forward(const LoopbackRequest& request, const std::string& proxyUrl) {
        auto url = proxyTarget(proxyUrl, std::string_view(request.path).substr(std::string_view("/proxy").size()),
                               request.rawQuery);
        if (!url) return problemAnswer(400, "KV-PROXY-URL must be an http URL on this machine");
        platform::HttpRequest outgoing;
        outgoing.method = request.method;
        outgoing.url = std::move(*url);
        outgoing.body = request.body;
        outgoing.timeout = options_.proxyTimeout;
        for (const auto& [name, value] : request.headers) {
            if (!isVaultOrHopHeader(name)) outgoing.headers.add(name, value);
        }

        auto answered = std::make_shared<std::promise<platform::HttpResult>>();
        auto result = answered->get_future();
        std::shared_ptr<platform::DataTask> task;
        {
            std::lock_guard lock(mutex_);
            if (stopping_) return problemAnswer(502, "The sandbox vault is stopping");
            if (!session_) session_ = std::make_unique<platform::CurlSession>();
            task = session_->dataTask(std::move(outgoing),
                                      [answered](platform::HttpResult r) { answered->set_value(std::move(r)); });
            forwards_.insert(task);
        }
        task->resume();
        auto answer = result.get();
        {
            std::lock_guard lock(mutex_);
            forwards_.erase(task);
        }
        if (!answer) return problemAnswer(502, "The proxy target could not be reached");
        return relay(SandboxVaultAnswer{answer->status, answer->headers, answer->body});
    }

    Options options_;
    mutable std::mutex mutex_;
    std::set<std::string> apiKeys_;
    std::map<std::string, SandboxProxyHandler> proxyKeys_;
    std::array<Script, kSandboxVaultRouteCount> scripts_{};
    std::deque<SandboxVaultRecord> records_;
    std::size_t recordCount_ = 0;
    std::set<std::shared_ptr<platform::DataTask>> forwards_;
    bool stopping_ = false;
    // Declared before the server so that it outlives every handler that forwards through it.
    std::unique_ptr<platform::CurlSession> session_;
    platform::testing::LoopbackServer server_;
};

// One row per route pattern; the two proxy rows share one script.
const SandboxVaultServer::Impl::Route SandboxVaultServer::Impl::kRoutes[6] = {
    {SandboxVaultRoute::tokenize, "POST", "/tokenize", &Impl::tokenize},
    {SandboxVaultRoute::createToken, "POST", "/tokens", &Impl::createToken},
    {SandboxVaultRoute::readToken, "GET", "/tokens/*", &Impl::readToken},
    {SandboxVaultRoute::createSession, "POST", "/sessions", &Impl::createSession},
    {SandboxVaultRoute::proxy, "*", "/proxy", &Impl::proxy},
    {SandboxVaultRoute::proxy, "*", "/proxy/*", &Impl::proxy},
};

std::string routeName(SandboxVaultRoute route) {
    for (const auto& row : SandboxVaultServer::Impl::kRoutes) {
        if (row.route == route)
            return std::string(std::string_view(row.method) == "*" ? "ANY" : row.method) + " " + row.pattern;
    }
    return "?";
}

std::optional<SandboxVaultRoute> routeNamed(std::string_view name) {
    for (const auto& row : SandboxVaultServer::Impl::kRoutes) {
        if (routeName(row.route) == name) return row.route;
    }
    return std::nullopt;
}

SandboxVaultServer::SandboxVaultServer() : SandboxVaultServer(Options{}) {}
SandboxVaultServer::SandboxVaultServer(Options options) : impl_(std::make_unique<Impl>(std::move(options))) {}
SandboxVaultServer::~SandboxVaultServer() = default;

std::string SandboxVaultServer::baseUrl() const {
    return impl_->baseUrl();
}
int SandboxVaultServer::port() const {
    return impl_->port();
}
void SandboxVaultServer::addApiKey(std::string key) {
    impl_->addApiKey(std::move(key));
}
void SandboxVaultServer::addProxyKey(std::string key, SandboxProxyHandler handler) {
    impl_->addProxyKey(std::move(key), std::move(handler));
}
void SandboxVaultServer::setLatency(SandboxVaultRoute route, std::chrono::milliseconds latency) {
    impl_->setLatency(route, latency);
}
void SandboxVaultServer::failNext(SandboxVaultRoute route, int status, std::string title, int times) {
    impl_->setFailure(route, status, std::move(title), times);
}
void SandboxVaultServer::failAlways(SandboxVaultRoute route, int status, std::string title) {
    impl_->setFailure(route, status, std::move(title), -1);
}
void SandboxVaultServer::clearFailures(SandboxVaultRoute route) {
    impl_->clearFailures(route);
}
std::vector<SandboxVaultRecord> SandboxVaultServer::receivedRequests() const {
    return impl_->received();
}
std::size_t SandboxVaultServer::requestCount() const {
    return impl_->requestCount();
}
void SandboxVaultServer::clearReceivedRequests() {
    impl_->clearReceived();
}
std::size_t SandboxVaultServer::tokenCount() const {
    return impl_->tokens.size();
}

void SandboxVaultServer::readMaskedNumber(std::string tokenId,
                                          std::move_only_function<void(std::optional<std::string>)> completion) {
    completion(impl_->tokens.maskedNumber(tokenId));
}

void SandboxVaultServer::stop() {
    impl_->stop();
}

}  // namespace tovi::sandbox
