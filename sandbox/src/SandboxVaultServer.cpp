// The sandbox vault's HTTP side: routes on a loopback server, the key check, problem bodies
// and the proxy (answered by a key's handler or forwarded to a loopback URL).

#include "sandbox/SandboxVaultServer.hpp"

#include <algorithm>
#include <future>
#include <mutex>
#include <set>

#include "AnyCodable/JsonReader.hpp"
#include "AnyCodable/JsonWriter.hpp"
#include "SandboxVaultTokens.hpp"
#include "platform/CurlSession.hpp"
#include "platform/LoopbackServer.hpp"
#include "platform/Url.hpp"
#include "platform/Uuid.hpp"

namespace tovi::sandbox {

namespace {

using platform::testing::LoopbackRequest;
using platform::testing::LoopbackResponse;

LoopbackResponse json(int status, const anycodable::Value& body) {
    LoopbackResponse response;
    response.status = status;
    response.headers.set("Content-Type", "application/json");
    response.body = anycodable::toJson(body).value_or("{}");
    return response;
}

LoopbackResponse problem(int status, std::string title, const std::vector<VaultProblem>& problems = {}) {
    anycodable::Map body;
    body.set("title", std::move(title));
    body.set("status", status);
    if (!problems.empty()) {
        anycodable::Map errors;
        for (const auto& p : problems) {
            anycodable::Array messages;
            if (const auto* existing = errors.find(p.field)) {
                if (const auto* array = existing->get<anycodable::Array>()) messages = *array;
            }
            messages.emplace_back(p.message);
            errors.set(p.field, std::move(messages));
        }
        body.set("errors", std::move(errors));
    }
    return json(status, anycodable::Value(std::move(body)));
}

bool isLoopbackHttp(const platform::Url& url) {
    if (!url.scheme() || *url.scheme() != "http") return false;
    const auto host = url.percentEncodedHost().value_or("");
    return host == "127.0.0.1" || host == "localhost";
}

// Headers that belong to one hop or to the vault itself, not to the forwarded request.
bool isVaultOrHopHeader(std::string_view name) {
    for (std::string_view dropped :
         {"Host", "Content-Length", "Connection", "Transfer-Encoding", "KV-API-KEY", "KV-PROXY-KEY", "KV-PROXY-URL",
          "REMOTE_ADDR", "REMOTE_PORT", "LOCAL_ADDR", "LOCAL_PORT"}) {
        if (platform::equalsIgnoringCase(name, dropped)) return true;
    }
    return false;
}

}  // namespace

class SandboxVaultServer::Impl {
public:
    explicit Impl(Options options)
        : options_(std::move(options)),
          server_(platform::testing::LoopbackServer::Options{.keepRequests = options_.keepRequests}) {
        apiKeys_.insert(options_.apiKeys.begin(), options_.apiKeys.end());
        server_.on("POST", "/tokenize", [this](const LoopbackRequest& r) {
            return storeBody(r, [this](const anycodable::Value& body) { return tokens.tokenize(body); });
        });
        server_.on("POST", "/tokens", [this](const LoopbackRequest& r) {
            return storeBody(r, [this](const anycodable::Value& body) { return tokens.create(body); });
        });
        server_.on("GET", "/tokens/*", [this](const LoopbackRequest& r) { return getToken(r); });
        server_.on("POST", "/sessions", [this](const LoopbackRequest& r) { return createSession(r); });
        server_.on("*", "/proxy*", [this](const LoopbackRequest& r) { return proxy(r); });
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

    std::vector<SandboxVaultRequest> received() const {
        std::vector<SandboxVaultRequest> result;
        for (auto& r : server_.receivedRequests()) {
            result.push_back({std::move(r.method), std::move(r.path), std::move(r.rawQuery), std::move(r.headers),
                              std::move(r.body)});
        }
        return result;
    }
    std::size_t requestCount() const { return server_.requestCount(); }
    void clearReceived() { server_.clearReceivedRequests(); }

    SandboxVaultTokens tokens;

private:
    bool authorised(const LoopbackRequest& request) const {
        const auto key = request.header("KV-API-KEY");
        std::lock_guard lock(mutex_);
        return key && apiKeys_.contains(*key);
    }

    static std::optional<anycodable::Value> objectBody(const LoopbackRequest& request) {
        auto parsed = anycodable::readJson(request.body);
        if (!parsed || !parsed->is<anycodable::Map>()) return std::nullopt;
        return std::move(*parsed);
    }

    // POST /tokenize and POST /tokens: a JSON object in, the stored token's shape out.
    template <class Store>
    LoopbackResponse storeBody(const LoopbackRequest& request, Store store) {
        if (!authorised(request)) return problem(401, "Unauthorized");
        auto body = objectBody(request);
        if (!body) return problem(400, "The body must be a JSON object");
        auto stored = store(*body);
        if (!stored) return problem(400, "One or more validation errors occurred.", stored.error());
        return json(201, *stored);
    }

    LoopbackResponse getToken(const LoopbackRequest& request) {
        if (!authorised(request)) return problem(401, "Unauthorized");
        const std::string id = request.path.substr(std::string_view("/tokens/").size());
        auto token = id.find('/') == std::string::npos ? tokens.find(id) : std::nullopt;
        if (!token) return problem(404, "Not Found");
        return json(200, *token);
    }

    LoopbackResponse createSession(const LoopbackRequest& request) {
        if (!authorised(request)) return problem(401, "Unauthorized");
        anycodable::Map session;
        session.set("session_key", "sandbox_session_" + platform::Uuid::random().string());
        session.set("nonce", platform::Uuid::random().string());
        session.set("expires_at", "2099-12-31T23:59:59.000Z");
        return json(201, anycodable::Value(std::move(session)));
    }

    LoopbackResponse proxy(const LoopbackRequest& request) {
        if (!authorised(request)) return problem(401, "Unauthorized");
        SandboxVaultRequest incoming{request.method, request.path, request.rawQuery, request.headers, request.body};
        if (const auto key = request.header("KV-PROXY-KEY")) {
            SandboxProxyHandler handler;
            {
                std::lock_guard lock(mutex_);
                if (auto it = proxyKeys_.find(*key); it != proxyKeys_.end()) handler = it->second;
            }
            if (!handler) return problem(404, "Unknown proxy key");
            return relay(handler(incoming));
        }
        if (const auto target = request.header("KV-PROXY-URL")) return forward(request, *target);
        return problem(400, "Either KV-PROXY-KEY or KV-PROXY-URL is required");
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

    LoopbackResponse forward(const LoopbackRequest& request, const std::string& target) {
        const auto url = platform::Url::parse(target);
        if (!url || !isLoopbackHttp(*url)) return problem(400, "KV-PROXY-URL must be an http URL on this machine");
        platform::HttpRequest outgoing;
        outgoing.method = request.method;
        outgoing.url = target + request.path.substr(std::string_view("/proxy").size()) +
                       (request.rawQuery.empty() ? "" : "?" + request.rawQuery);
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
            if (stopping_) return problem(502, "The sandbox vault is stopping");
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
        if (!answer) return problem(502, "The proxy target could not be reached");
        return relay(SandboxVaultAnswer{answer->status, answer->headers, answer->body});
    }

    Options options_;
    mutable std::mutex mutex_;
    std::set<std::string> apiKeys_;
    std::map<std::string, SandboxProxyHandler> proxyKeys_;
    std::set<std::shared_ptr<platform::DataTask>> forwards_;
    bool stopping_ = false;
    // Declared before the server so that it outlives every handler that forwards through it.
    std::unique_ptr<platform::CurlSession> session_;
    platform::testing::LoopbackServer server_;
};

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
std::vector<SandboxVaultRequest> SandboxVaultServer::receivedRequests() const {
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
