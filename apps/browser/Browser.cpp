#include "browser/Browser.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/posix/stream_descriptor.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/beast/core/buffers_to_string.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/websocket.hpp>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <deque>
#include <filesystem>
#include <vector>

#include "platform/Base64.hpp"

extern char** environ;

namespace tovi::browser {

namespace {

namespace asio = boost::asio;
namespace websocket = boost::beast::websocket;
using Clock = std::chrono::steady_clock;
using nlohmann::json;

// Chromium prints this on stderr, followed by the browser's DevTools address, once it listens.
constexpr std::string_view listening = "DevTools listening on ";

// What the keys a form needs send; `text` is the character a key types, if any.
struct Key {
    std::string_view key;
    int code;
    const char* text;
};
constexpr Key keys[] = {{"Enter", 13, "\r"}, {"Tab", 9, ""},         {"Backspace", 8, ""},
                        {"Delete", 46, ""},  {"Escape", 27, ""},     {"ArrowLeft", 37, ""},
                        {"ArrowUp", 38, ""}, {"ArrowRight", 39, ""}, {"ArrowDown", 40, ""}};

// The outcome of one asynchronous operation; shared with its handler, so that a step that gives
// up at its deadline leaves nothing dangling behind.
struct Outcome {
    bool done = false;
    boost::system::error_code error;
};

}  // namespace

struct Browser::Impl {
    BrowserOptions options;
    std::filesystem::path profile;
    pid_t pid = -1;
    asio::io_context io;
    asio::posix::stream_descriptor stderrPipe{io};
    std::string stderrText;  // chromium's stderr: the start, then a bounded tail
    std::array<char, 4096> stderrChunk{};
    websocket::stream<asio::ip::tcp::socket> ws{io};
    boost::beast::flat_buffer incoming;
    std::string outgoing;
    std::string sessionId;
    int lastId = 0;
    std::deque<json> events;
    bool broken = false;

    explicit Impl(BrowserOptions o) : options(o) {}
    ~Impl();

    Clock::time_point deadline() const { return Clock::now() + options.timeout; }

    BrowserError failure(const std::string& what) const {
        return BrowserError(what + (stderrText.empty() ? "" : "\nchromium's stderr:\n" + stderrText));
    }

    // Runs the I/O until the operation that `start` begins completes; throws when it fails or
    // the deadline passes first. After a timeout the connection is closed and the Browser is
    // unusable: the protocol stream is in an unknown state.
    template <class Start>
    void await(const std::string& what, Clock::time_point until, Start start) {
        if (broken) throw BrowserError(what + ": the browser failed earlier");
        auto outcome = std::make_shared<Outcome>();
        start([outcome](boost::system::error_code error, auto&&...) {
            outcome->done = true;
            outcome->error = error;
        });
        io.restart();
        while (!outcome->done && io.run_one_until(until) > 0) {
        }
        if (!outcome->done || outcome->error) {
            broken = true;
            boost::system::error_code ignored;
            ws.next_layer().close(ignored);
            throw failure(what + (outcome->done ? ": " + outcome->error.message() : ": no answer in time"));
        }
    }

    void start();
    void spawnChromium();
    std::string awaitDevToolsAddress();
    void drainStderr();
    void connect(const std::string& address);
    json receive(const std::string& what, Clock::time_point until);
    json command(const std::string& method, const json& params);
    json awaitEvent(const std::string& method, const std::string& what);
};

Browser::Impl::~Impl() {
    if (pid > 0) {
        ::kill(-pid, SIGKILL);  // the whole group: renderers and helpers too
        int status = 0;
        while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
        }
    }
    std::error_code ignored;
    if (!profile.empty() && std::filesystem::remove_all(profile, ignored) == static_cast<std::uintmax_t>(-1)) {
        std::filesystem::remove_all(profile, ignored);  // a dying helper may still have added a file
    }
}

void Browser::Impl::spawnChromium() {
    std::string folder = (std::filesystem::temp_directory_path() / "tovi-browser-XXXXXX").string();
    if (::mkdtemp(folder.data()) == nullptr) {
        throw BrowserError("cannot make a profile folder " + folder + ": " + strerror(errno));
    }
    profile = folder;
    int fds[2];
    if (::pipe2(fds, O_CLOEXEC) != 0) throw BrowserError(std::string("cannot make a pipe: ") + strerror(errno));
    std::vector<std::string> args = {"chromium",
                                     "--headless",
                                     "--no-sandbox",
                                     "--disable-gpu",
                                     "--disable-quic",
                                     "--no-first-run",
                                     "--disable-background-networking",
                                     "--disable-component-update",
                                     "--disable-sync",
                                     "--remote-debugging-port=0",
                                     "--user-data-dir=" + profile.string(),
                                     "about:blank"};
    std::vector<char*> argv;
    for (std::string& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_addopen(&files, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&files, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files, fds[1], 2);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);  // its own group, killed as one
    posix_spawnattr_setpgroup(&attributes, 0);
    const int rc = ::posix_spawnp(&pid, "chromium", &files, &attributes, argv.data(), environ);
    posix_spawn_file_actions_destroy(&files);
    posix_spawnattr_destroy(&attributes);
    ::close(fds[1]);
    if (rc != 0) {
        ::close(fds[0]);
        pid = -1;
        if (rc == ENOENT) {
            throw BrowserError(
                "chromium is not installed (no `chromium` on PATH). Install Debian's package: "
                "`sudo apt-get install chromium`, or run `bash scripts/setup.sh`.");
        }
        throw BrowserError(std::string("cannot start chromium: ") + strerror(rc));
    }
    stderrPipe.assign(fds[0]);
}

std::string Browser::Impl::awaitDevToolsAddress() {
    const auto until = deadline();
    std::string pending;
    for (;;) {
        std::size_t length = 0;
        // An end of file here means chromium exited; its stderr says why.
        await("waiting for chromium to open its DevTools port", until, [&](auto handler) {
            asio::async_read_until(stderrPipe, asio::dynamic_buffer(pending), '\n',
                                   [&length, handler](boost::system::error_code error, std::size_t n) {
                                       length = n;
                                       handler(error);
                                   });
        });
        std::string line = pending.substr(0, length);
        pending.erase(0, length);
        stderrText += line;
        if (line.starts_with(listening)) {
            stderrText += pending;
            line.erase(0, listening.size());
            while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
            return line;
        }
    }
}

// Keeps reading chromium's stderr whenever the I/O runs, so that a chatty chromium never blocks
// on a full pipe; the last few kilobytes stay for error messages.
void Browser::Impl::drainStderr() {
    stderrPipe.async_read_some(asio::buffer(stderrChunk), [this](boost::system::error_code error, std::size_t n) {
        if (error) return;
        stderrText.append(stderrChunk.data(), n);
        if (stderrText.size() > 8192) stderrText.erase(0, stderrText.size() - 4096);
        drainStderr();
    });
}

void Browser::Impl::connect(const std::string& address) {
    // ws://127.0.0.1:PORT/devtools/browser/ID
    const std::string scheme = "ws://";
    const auto slash = address.find('/', scheme.size());
    const auto colon = address.rfind(':', slash);
    if (!address.starts_with(scheme) || slash == std::string::npos || colon < scheme.size()) {
        throw failure("chromium gave an address this client cannot use: " + address);
    }
    const std::string host = address.substr(scheme.size(), colon - scheme.size());
    const std::string port = address.substr(colon + 1, slash - colon - 1);
    const auto until = deadline();
    asio::ip::tcp::resolver resolver(io);
    boost::system::error_code error;
    const auto endpoints = resolver.resolve(host, port, error);
    if (error) throw failure("resolving " + address + ": " + error.message());
    await("connecting to " + address, until,
          [&](auto handler) { asio::async_connect(ws.next_layer(), endpoints, handler); });
    ws.read_message_max(256u << 20);  // full-page screenshots are large
    await("opening the DevTools socket", until,
          [&](auto handler) { ws.async_handshake(host + ":" + port, address.substr(slash), handler); });
}

void Browser::Impl::start() {
    spawnChromium();
    const std::string address = awaitDevToolsAddress();
    drainStderr();
    connect(address);
    // One tab, attached in flat mode: its commands and events carry its session id.
    const json target = command("Target.createTarget", {{"url", "about:blank"}});
    sessionId = command("Target.attachToTarget", {{"targetId", target.at("targetId")}, {"flatten", true}})
                    .at("sessionId")
                    .get<std::string>();
    command("Page.enable", json::object());
    command("Emulation.setDeviceMetricsOverride",
            {{"width", options.width}, {"height", options.height}, {"deviceScaleFactor", 1}, {"mobile", false}});
}

json Browser::Impl::receive(const std::string& what, Clock::time_point until) {
    incoming.clear();
    await(what, until, [&](auto handler) { ws.async_read(incoming, handler); });
    json message = json::parse(boost::beast::buffers_to_string(incoming.data()), nullptr, false);
    if (message.is_discarded()) throw failure(what + ": chromium sent a message that is not JSON");
    return message;
}

json Browser::Impl::command(const std::string& method, const json& params) {
    const int id = ++lastId;
    json message = {{"id", id}, {"method", method}, {"params", params}};
    if (!sessionId.empty()) message["sessionId"] = sessionId;
    outgoing = message.dump();
    const auto until = deadline();
    await(method, until, [&](auto handler) { ws.async_write(asio::buffer(outgoing), handler); });
    for (;;) {
        json reply = receive(method, until);
        if (!reply.contains("id")) {
            events.push_back(std::move(reply));
            if (events.size() > 1000) events.pop_front();
            continue;
        }
        if (reply["id"] != id) continue;
        if (reply.contains("error")) throw BrowserError(method + " failed: " + reply["error"].dump());
        return reply.value("result", json::object());
    }
}

json Browser::Impl::awaitEvent(const std::string& method, const std::string& what) {
    const auto until = deadline();
    for (;;) {
        for (auto it = events.begin(); it != events.end(); ++it) {
            if (it->value("method", "") == method) {
                json event = std::move(*it);
                events.erase(it);
                return event;
            }
        }
        events.push_back(receive(what, until));
    }
}

Browser::Browser(BrowserOptions options) : impl_(std::make_unique<Impl>(options)) {
    impl_->start();  // on a throw, impl_ is destroyed and takes chromium and its folder with it
}

Browser::~Browser() = default;

void Browser::setTimeout(std::chrono::milliseconds timeout) {
    impl_->options.timeout = timeout;
}

void Browser::navigate(const std::string& url) {
    impl_->events.clear();
    const json result = impl_->command("Page.navigate", {{"url", url}});
    if (const std::string error = result.value("errorText", ""); !error.empty()) {
        throw BrowserError("loading " + url + ": " + error);
    }
    impl_->awaitEvent("Page.loadEventFired", "loading " + url);
}

json Browser::evaluate(const std::string& expression) {
    const json result = impl_->command("Runtime.evaluate",
                                       {{"expression", expression}, {"returnByValue", true}, {"awaitPromise", true}});
    if (result.contains("exceptionDetails")) {
        const json& details = result["exceptionDetails"];
        const std::string text =
            details.contains("exception") ? details["exception"].value("description", "") : details.value("text", "");
        throw BrowserError("page script threw: " + text + "\nscript: " + expression.substr(0, 300));
    }
    return result.at("result").value("value", json());
}

void Browser::click(double x, double y) {
    for (const char* type : {"mouseMoved", "mousePressed", "mouseReleased"}) {
        json event = {{"type", type}, {"x", x}, {"y", y}};
        if (std::strcmp(type, "mouseMoved") != 0) {
            event["button"] = "left";
            event["clickCount"] = 1;
        }
        impl_->command("Input.dispatchMouseEvent", event);
    }
}

void Browser::insertText(const std::string& text) {
    impl_->command("Input.insertText", {{"text", text}});
}

void Browser::pressKey(const std::string& key) {
    const Key* found = nullptr;
    for (const Key& k : keys) {
        if (k.key == key) found = &k;
    }
    if (found == nullptr) throw BrowserError("pressKey: no key named " + key);
    json event = {{"key", key}, {"code", key}, {"windowsVirtualKeyCode", found->code}};
    event["type"] = *found->text != 0 ? "keyDown" : "rawKeyDown";
    if (*found->text != 0) event["text"] = found->text;
    impl_->command("Input.dispatchKeyEvent", event);
    event.erase("text");
    event["type"] = "keyUp";
    impl_->command("Input.dispatchKeyEvent", event);
}

std::string Browser::screenshot() {
    const json size = impl_->command("Page.getLayoutMetrics", json::object()).at("cssContentSize");
    const json clip = {{"x", 0}, {"y", 0}, {"width", size.at("width")}, {"height", size.at("height")}, {"scale", 1}};
    const json shot =
        impl_->command("Page.captureScreenshot", {{"format", "png"}, {"captureBeyondViewport", true}, {"clip", clip}});
    auto png = platform::base64Decode(shot.at("data").get<std::string>());
    if (!png) throw BrowserError("Page.captureScreenshot sent data that is not base64");
    return *png;
}

json Browser::send(const std::string& method, json params) {
    return impl_->command(method, params);
}

}  // namespace tovi::browser
