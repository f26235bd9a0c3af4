#pragma once
// DemoSession: one browser tab's live screen: a screen of the catalogue on a sandbox
// environment of its own, the tab's settings (theme, locale, demo mode), and the streams that
// carry its updates to the page.
//
// Actions and sandbox scripting arrive as JSON objects (see DemoServer.hpp for the protocol);
// every answer is a JSON object with "ok" and, on success, the screen as it now stands.
//
// Thread safety: everything but `updates()` runs on the main queue's thread. The update
// channel is shared with the server's streaming threads.

#include <array>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "SandboxEnvironment.hpp"
#include "ScreenCatalogue.hpp"
#include "platform/Executor.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/ScreenHost.hpp"

namespace tovi::demo {

using Json = nlohmann::ordered_json;

// Server-sent events for the tabs that show one session. Each stream has its own queue; a slow
// stream keeps only the latest screen, since every update carries the whole screen.
class UpdateChannel {
public:
    class Stream {
    public:
        // The next event ("event: ...\ndata: ...\n\n"), a keep-alive comment when none came
        // within `wait`, or empty once the channel is closed.
        std::string next(std::chrono::milliseconds wait);
        // Queues one event for this stream alone.
        void push(const std::string& event, const std::string& data);

    private:
        friend class UpdateChannel;
        std::mutex mutex_;
        std::condition_variable ready_;
        std::deque<std::string> events_;
        bool closed_ = false;
    };

    [[nodiscard]] std::shared_ptr<Stream> open();
    void close(const std::shared_ptr<Stream>& stream);
    // Sends to every open stream. `replaceable` events drop an older one still waiting.
    void send(const std::string& event, const std::string& data, bool replaceable);
    // Ends every stream (the session expired or the server stops).
    void closeAll();
    [[nodiscard]] bool hasStreams();

private:
    std::mutex mutex_;
    std::vector<std::shared_ptr<Stream>> streams_;
};

// The panel lists vault routes by this prefix and the route's name, after the wallet's
// operation names.
inline constexpr std::string_view kVaultRoutePrefix = "vault ";

// The locales the panel offers, the first being every tab's to begin with and the process's
// between tasks.
inline constexpr std::array<std::string_view, 2> kDemoLocales{"en_US", "de_DE"};

struct DemoSettings {
    bool customTheme = false;
    std::string locale{kDemoLocales[0]};
    bool demoMode = true;
};

class DemoSession {
public:
    using Clock = std::chrono::steady_clock;

    DemoSession(std::string id, const screens::ScreenEntry& screen, std::shared_ptr<sandbox::SandboxVaultServer> vault);
    ~DemoSession();
    DemoSession(const DemoSession&) = delete;
    DemoSession& operator=(const DemoSession&) = delete;

    [[nodiscard]] const std::string& id() const { return id_; }
    [[nodiscard]] const screens::ScreenEntry& screen() const { return screen_; }
    [[nodiscard]] Clock::time_point lastActive() const { return lastActive_; }
    void touch() { lastActive_ = Clock::now(); }

    // {"action": "tap" | "toggle" | "type" | "paste" | "delete" | "select" | "leave" |
    //  "refresh" | "dismiss" | "back", "path": ..., ...}
    [[nodiscard]] Json act(const Json& request);
    // {"wallet": {...}} | {"theme": ...} | {"locale": ...} | {"demoMode": ...} | {"reset": true}
    [[nodiscard]] Json script(const Json& request);

    // The whole page, and the screen alone (for a page that swaps it in).
    [[nodiscard]] std::string page();
    // {"version": n, "html": the screen alone}.
    [[nodiscard]] Json screenState();
    [[nodiscard]] Json tree();

    [[nodiscard]] UpdateChannel& updates() { return updates_; }
    // A new stream for a page, starting with the screen as it stands: a change made between
    // serving the page and the page connecting was sent to no stream. The page ignores a screen
    // that is not newer than its own.
    [[nodiscard]] std::shared_ptr<UpdateChannel::Stream> openStream();

private:
    void start();
    // Runs `work` under this tab's settings, as every task of its queue runs.
    template <class Work>
    auto withSettings(Work&& work) -> decltype(work());
    [[nodiscard]] platform::view::HtmlOptions htmlOptions(const platform::view::Node& tree) const;
    [[nodiscard]] Json stateOf(const platform::view::Node& tree) const;

    std::string id_;
    const screens::ScreenEntry& screen_;
    std::shared_ptr<sandbox::SandboxVaultServer> vault_;
    // Shared with the tasks of the tab's queue, which may outlive the session.
    std::shared_ptr<DemoSettings> settings_ = std::make_shared<DemoSettings>();
    std::shared_ptr<platform::Executor> queue_;
    std::uint64_t version_ = 0;
    // The panel's wallet settings so far, applied again to every new sandbox.
    std::vector<Json> walletScript_;
    Clock::time_point lastActive_ = Clock::now();
    UpdateChannel updates_;
    std::unique_ptr<screens::SandboxEnvironment> environment_;
    std::unique_ptr<platform::view::ScreenHost> host_;  // after the environment: it runs on it
};

}  // namespace tovi::demo
