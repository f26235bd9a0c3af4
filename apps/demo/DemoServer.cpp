#include "DemoServer.hpp"

#include <httplib.h>

#include <deque>
#include <future>
#include <map>
#include <optional>
#include <thread>
#include <type_traits>

#include "DemoPage.hpp"
#include "DemoSession.hpp"
#include "KorvaneElements/Telemetry.hpp"
#include "ScreenCatalogue.hpp"
#include "platform/Console.hpp"
#include "platform/MainQueue.hpp"
#include "platform/Uuid.hpp"
#include "sandbox/SandboxVaultServer.hpp"

namespace tovi::demo {

namespace {

using namespace std::chrono_literals;

// How long an HTTP thread waits for the main queue before it gives up with 503.
constexpr auto kMainQueueWait = 10s;
// A stream with nothing to say sends a comment this often, which also finds closed tabs.
constexpr auto kKeepAlive = 15s;
constexpr auto kConsolePump = 200ms;
constexpr std::size_t kConsoleKept = 200;
constexpr const char* kSessionRoute = "/s/([0-9a-fA-F-]{36})";

void reply(httplib::Response& res, int status, const Json& body) {
    res.status = status;
    res.set_content(body.dump(-1, ' ', false, Json::error_handler_t::replace), "application/json");
}

void replyError(httplib::Response& res, int status, std::string message) {
    reply(res, status, Json{{"ok", false}, {"error", std::move(message)}});
}

}  // namespace

class DemoServer::Impl {
public:
    explicit Impl(DemoOptions o) : options(o) {}
    ~Impl();

    std::expected<void, std::string> start();

    // Runs `work` on the main queue and answers its result; absent when the main queue did not
    // get to it in time. `work` owns everything it uses: it may run after the caller gave up.
    template <class Work>
    std::optional<std::invoke_result_t<Work&>> onMain(Work work);

    void routes();
    void sweep();
    void pumpConsole();
    void sessionRequest(const httplib::Request& req, httplib::Response& res, Json (*handle)(DemoSession&, const Json&));

    DemoOptions options;
    std::shared_ptr<platform::MainQueue> queue = std::make_shared<platform::MainQueue>();
    std::thread mainThread;
    httplib::Server http;
    std::thread httpThread;
    int port = 0;
    std::atomic<std::size_t> liveSessions{0};

    // Main queue only.
    std::shared_ptr<sandbox::SandboxVaultServer> vault;
    std::map<std::string, std::unique_ptr<DemoSession>, std::less<>> sessions;
    std::unique_ptr<platform::ConsoleCapture> console;
    std::deque<std::string> recentConsole;
    bool stopping = false;
};

template <class Work>
std::optional<std::invoke_result_t<Work&>> DemoServer::Impl::onMain(Work work) {
    using Result = std::invoke_result_t<Work&>;
    auto promise = std::make_shared<std::promise<Result>>();
    auto future = promise->get_future();
    queue->post([promise, work = std::move(work)]() mutable { promise->set_value(work()); });
    if (future.wait_for(kMainQueueWait) != std::future_status::ready) return std::nullopt;
    return future.get();
}

std::expected<void, std::string> DemoServer::Impl::start() {
    platform::setMainQueue(queue);
    mainThread = std::thread([q = queue] { q->run(); });
    const bool ready = onMain([this] {
                           // Nothing of the demo leaves the machine: element telemetry stays off.
                           korvane::elements::setTelemetryEnabled(false);
                           console = std::make_unique<platform::ConsoleCapture>();
                           vault = std::make_shared<sandbox::SandboxVaultServer>();
                           queue->postAfter(options.sweepInterval, [this] { sweep(); });
                           queue->postAfter(kConsolePump, [this] { pumpConsole(); });
                           return true;
                       }).value_or(false);
    if (!ready) return std::unexpected("the main queue did not start");

    http.new_task_queue = [threads = options.threads] { return new httplib::ThreadPool(threads); };
    http.set_payload_max_length(options.maxBodyBytes);
    http.set_tcp_nodelay(true);
    http.set_keep_alive_max_count(10'000);
    http.set_read_timeout(5s);
    routes();
    port = options.port == 0 ? http.bind_to_any_port("127.0.0.1") : options.port;
    if (options.port != 0 && !http.bind_to_port("127.0.0.1", options.port)) port = -1;
    if (port <= 0) return std::unexpected("cannot listen on 127.0.0.1:" + std::to_string(options.port));
    httpThread = std::thread([this] { http.listen_after_bind(); });
    return {};
}

DemoServer::Impl::~Impl() {
    // The sessions first: closing them ends their event streams, which hold HTTP threads.
    if (mainThread.joinable()) {
        (void)onMain([this] {
            stopping = true;
            sessions.clear();
            liveSessions = 0;
            vault.reset();
            console.reset();
            return true;
        });
    }
    http.stop();
    if (httpThread.joinable()) httpThread.join();
    queue->stop();
    if (mainThread.joinable()) mainThread.join();
    platform::setMainQueue(nullptr);
}

void DemoServer::Impl::sweep() {
    if (stopping) return;
    const auto now = DemoSession::Clock::now();
    std::erase_if(sessions, [&](const auto& entry) { return now - entry.second->lastActive() > options.sessionTtl; });
    liveSessions = sessions.size();
    queue->postAfter(options.sweepInterval, [this] { sweep(); });
}

void DemoServer::Impl::pumpConsole() {
    if (stopping) return;
    for (std::string& line : console->take()) {
        // A person running the demo reads them in the terminal too.
        std::fprintf(stdout, "%s\n", line.c_str());
        for (auto& [id, session] : sessions) session->updates().send("console", line, false);
        recentConsole.push_back(std::move(line));
        if (recentConsole.size() > kConsoleKept) recentConsole.pop_front();
    }
    std::fflush(stdout);
    queue->postAfter(kConsolePump, [this] { pumpConsole(); });
}

void DemoServer::Impl::sessionRequest(const httplib::Request& req, httplib::Response& res,
                                      Json (*handle)(DemoSession&, const Json&)) {
    Json body = Json::parse(req.body, nullptr, /*allow_exceptions=*/false);
    if (body.is_discarded() || !body.is_object()) return replyError(res, 400, "the body must be one JSON object");
    auto answer =
        onMain([this, id = std::string(req.matches[1]), body = std::move(body), handle]() -> std::optional<Json> {
            auto it = sessions.find(id);
            if (it == sessions.end()) return std::nullopt;
            return handle(*it->second, body);
        });
    if (!answer) return replyError(res, 503, "the demo is busy; try again");
    if (!*answer) return replyError(res, 404, "no session " + std::string(req.matches[1]) + " (it may have expired)");
    const Json& result = **answer;
    reply(res, result.value("ok", false) ? 200 : 400, result);
}

void DemoServer::Impl::routes() {
    // Only this machine's names: a page elsewhere must not reach the demo through a name that
    // resolves to loopback.
    http.set_pre_routing_handler([this](const httplib::Request& req, httplib::Response& res) {
        const std::string host = req.get_header_value("Host");
        const std::string suffix = ":" + std::to_string(port);
        if (host == "127.0.0.1" + suffix || host == "localhost" + suffix)
            return httplib::Server::HandlerResponse::Unhandled;
        replyError(res, 403, "the demo answers requests to 127.0.0.1 and localhost only");
        return httplib::Server::HandlerResponse::Handled;
    });
    http.set_error_handler([this](const httplib::Request&, httplib::Response& res) {
        if (!res.body.empty()) return;
        if (res.status == 413) {
            return replyError(res, 413,
                              "the request body is larger than " + std::to_string(options.maxBodyBytes) + " bytes");
        }
        replyError(res, res.status, res.status == 404 ? "no such page" : "the request could not be served");
    });

    http.Get("/", [](const httplib::Request&, httplib::Response& res) {
        res.set_content(homePage(screens::screenCatalogue()), "text/html; charset=utf-8");
    });
    http.Get("/demo.js", [](const httplib::Request&, httplib::Response& res) {
        res.set_header("Cache-Control", "no-cache");
        res.set_content(std::string(demoScript()), "application/javascript");
    });
    http.Get("/new", [this](const httplib::Request& req, httplib::Response& res) {
        const std::string name = req.get_param_value("screen");
        const screens::ScreenEntry* screen = screens::findScreen(name);
        if (screen == nullptr) {
            res.status = 404;
            return res.set_content(messagePage("Unknown screen", "No screen is named \"" + name + "\"."),
                                   "text/html; charset=utf-8");
        }
        auto id = onMain([this, screen]() -> std::optional<std::string> {
            if (sessions.size() >= options.maxSessions) return std::nullopt;
            std::string made = platform::Uuid::random().string();
            sessions.emplace(made, std::make_unique<DemoSession>(made, *screen, vault));
            liveSessions = sessions.size();
            return made;
        });
        if (!id || !*id) {
            res.status = 503;
            return res.set_content(messagePage("Busy", "Too many sessions are open; try again in a few minutes."),
                                   "text/html; charset=utf-8");
        }
        res.set_redirect("/s/" + **id, 303);
    });
    http.Get(kSessionRoute, [this](const httplib::Request& req, httplib::Response& res) {
        auto page = onMain([this, id = std::string(req.matches[1])]() -> std::optional<std::string> {
            auto it = sessions.find(id);
            if (it == sessions.end()) return std::nullopt;
            it->second->touch();
            return it->second->page();
        });
        if (!page || !*page) {
            res.status = page ? 404 : 503;
            return res.set_content(messagePage("Session ended", "This session has expired. Start the screen again."),
                                   "text/html; charset=utf-8");
        }
        res.set_content(std::move(**page), "text/html; charset=utf-8");
    });
    http.Post(std::string(kSessionRoute) + "/act", [this](const httplib::Request& req, httplib::Response& res) {
        sessionRequest(req, res, [](DemoSession& s, const Json& body) { return s.act(body); });
    });
    http.Post(std::string(kSessionRoute) + "/sandbox", [this](const httplib::Request& req, httplib::Response& res) {
        sessionRequest(req, res, [](DemoSession& s, const Json& body) { return s.script(body); });
    });
    http.Get(std::string(kSessionRoute) + "/tree", [this](const httplib::Request& req, httplib::Response& res) {
        auto tree = onMain([this, id = std::string(req.matches[1])]() -> std::optional<Json> {
            auto it = sessions.find(id);
            if (it == sessions.end()) return std::nullopt;
            return it->second->tree();
        });
        if (!tree || !*tree) return replyError(res, tree ? 404 : 503, "no such session");
        reply(res, 200, **tree);
    });
    http.Get(std::string(kSessionRoute) + "/events", [this](const httplib::Request& req, httplib::Response& res) {
        const std::string id = req.matches[1];
        auto stream = onMain([this, id]() -> std::shared_ptr<UpdateChannel::Stream> {
            auto it = sessions.find(id);
            if (it == sessions.end()) return nullptr;
            auto opened = it->second->updates().open();
            // A new page starts with the lines written before it connected, and with the screen
            // as it is now: a rebuild between serving the page and this connection reached no
            // stream. The page ignores a state no newer than its own.
            for (const std::string& line : recentConsole) opened->push("console", line);
            opened->push("update", it->second->screenState().dump());
            return opened;
        });
        if (!stream || !*stream) return replyError(res, stream ? 404 : 503, "no such session");
        res.set_header("Cache-Control", "no-cache");
        res.set_chunked_content_provider(
            "text/event-stream",
            [stream = *stream](std::size_t, httplib::DataSink& sink) {
                const std::string event = stream->next(kKeepAlive);
                if (event.empty()) {
                    sink.done();
                    return true;
                }
                return sink.write(event.data(), event.size());
            },
            [this, id, stream = *stream](bool) {
                queue->post([this, id, stream] {
                    if (auto it = sessions.find(id); it != sessions.end()) it->second->updates().close(stream);
                });
            });
    });
}

std::expected<std::unique_ptr<DemoServer>, std::string> DemoServer::start(DemoOptions options) {
    auto impl = std::make_unique<Impl>(options);
    if (auto started = impl->start(); !started) return std::unexpected(started.error());
    return std::unique_ptr<DemoServer>(new DemoServer(std::move(impl)));
}

DemoServer::DemoServer(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
DemoServer::~DemoServer() = default;

int DemoServer::port() const {
    return impl_->port;
}

std::string DemoServer::url() const {
    return "http://127.0.0.1:" + std::to_string(impl_->port);
}

std::size_t DemoServer::sessionCount() const {
    return impl_->liveSessions.load();
}

}  // namespace tovi::demo
