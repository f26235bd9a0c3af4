#include "DemoSession.hpp"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "DemoPage.hpp"
#include "Gallery.hpp"
#include "HostActions.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "ToviUI/ToviTheme.hpp"
#include "TreeJson.hpp"
#include "platform/Locale.hpp"
#include "platform/MainQueue.hpp"
#include "platform/ThreadPool.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/Inspect.hpp"

namespace tovi::demo {

using namespace platform::view;

namespace {

// How many events wait for a stream that does not read.
constexpr std::size_t kStreamBacklog = 64;

// The theme and the locale are process-wide, as on a phone; a tab's are put in place around
// each piece of its work, and the defaults after it.
void applySettings(const DemoSettings& settings) {
    if (settings.customTheme) {
        gallery::setCustomBrandTheme();
    } else {
        ToviTheme::set();
    }
    platform::setCurrentLocale(settings.locale);
}

void restoreDefaults() {
    ToviTheme::set();
    platform::setCurrentLocale(kDemoLocales[0]);
}

// The main queue as one tab sees it: every task runs under the tab's settings.
class SettingsQueue final : public platform::Executor {
public:
    SettingsQueue(std::shared_ptr<platform::Executor> main, std::shared_ptr<const DemoSettings> settings)
        : main_(std::move(main)), settings_(std::move(settings)) {}

    void post(platform::Task task) override { main_->post(wrap(std::move(task))); }
    void postAfter(std::chrono::milliseconds delay, platform::Task task) override {
        main_->postAfter(delay, wrap(std::move(task)));
    }
    [[nodiscard]] bool isCurrent() const override { return main_->isCurrent(); }

private:
    platform::Task wrap(platform::Task task) const {
        return [settings = settings_, task = std::move(task)]() mutable {
            applySettings(*settings);
            task();
            restoreDefaults();
        };
    }

    std::shared_ptr<platform::Executor> main_;
    std::shared_ptr<const DemoSettings> settings_;
};

Json failure(std::string message) {
    return Json{{"ok", false}, {"error", std::move(message)}};
}

// What a node takes from a page, as the page's script reads it: "tap:0/2", "field:1", ...
std::string actionName(const ViewRef& ref) {
    const NodeData& d = ref.node().data();
    const char* kind = nullptr;
    if (d.as<TextFieldProps>() != nullptr) {
        kind = "field";
    } else if (d.on.toggle) {
        kind = "toggle";
    } else if (d.on.refresh) {
        kind = "refresh";
    } else if (d.on.tap) {
        kind = "tap";
    }
    return kind == nullptr ? std::string() : std::string(kind) + ":" + ref.path();
}

void nameNodes(const ViewRef& ref, std::unordered_map<const NodeData*, std::string>& names) {
    if (std::string name = actionName(ref); !name.empty()) names.try_emplace(&ref.node().data(), std::move(name));
    for (const ViewRef& child : ref.children()) nameNodes(child, names);
}

// What the panel scripts: a wallet operation (this tab's sandbox) or a vault route (the one
// vault every tab shares), by the names the panel lists.
struct Scripted {
    std::optional<sandbox::SandboxOperation> operation;
    std::optional<sandbox::SandboxVaultRoute> route;
};

Scripted scriptedNamed(std::string_view name) {
    if (name.starts_with(kVaultRoutePrefix)) {
        return {.operation = std::nullopt, .route = sandbox::routeNamed(name.substr(kVaultRoutePrefix.size()))};
    }
    return {.operation = sandbox::operationNamed(name), .route = std::nullopt};
}

// Applies one setting of the panel; the reason when it is malformed.
std::optional<std::string> applyScript(sandbox::SandboxToviClient& wallet, sandbox::SandboxVaultServer& vault,
                                       const Json& setting) {
    if (!setting.is_object()) return "\"wallet\" must be an object with \"operation\" and \"effect\"";
    const std::string name = setting.value("operation", "");
    const Scripted target = scriptedNamed(name);
    if (!target.operation && !target.route) return "no wallet operation or vault route is named \"" + name + "\"";
    const std::string effect = setting.value("effect", "");
    if (effect == "failNext" || effect == "failAlways") {
        const std::string message = setting.value("message", "The sandbox was told to fail.");
        if (message.empty() || message.size() > 200) return "the message must have 1 to 200 characters";
        // A vault failure is a server's answer: 503 with the message as its problem title.
        if (target.route && effect == "failNext") vault.failNext(*target.route, 503, message);
        if (target.route && effect == "failAlways") vault.failAlways(*target.route, 503, message);
        if (target.operation && effect == "failNext") wallet.failNext(*target.operation, message);
        if (target.operation && effect == "failAlways") wallet.failAlways(*target.operation, message);
    } else if (effect == "latency") {
        const auto ms = setting.find("ms");
        if (ms == setting.end() || !ms->is_number_integer() || ms->get<std::int64_t>() < 0 ||
            ms->get<std::int64_t>() > 60'000) {
            return "\"ms\" must be a whole number from 0 to 60000";
        }
        const std::chrono::milliseconds latency(ms->get<std::int64_t>());
        if (target.route) vault.setLatency(*target.route, latency);
        if (target.operation) wallet.setLatency(*target.operation, latency);
    } else if (effect == "clear") {
        if (target.route) {
            vault.clearFailures(*target.route);
            vault.setLatency(*target.route, std::chrono::milliseconds(0));
        }
        if (target.operation) {
            wallet.clearFailures(*target.operation);
            wallet.setLatency(*target.operation, std::chrono::milliseconds(0));
        }
    } else {
        return "\"effect\" must be failNext, failAlways, latency or clear";
    }
    return std::nullopt;
}

}  // namespace

// ---- UpdateChannel ---------------------------------------------------------------------------

std::string UpdateChannel::Stream::next(std::chrono::milliseconds wait) {
    std::unique_lock lock(mutex_);
    ready_.wait_for(lock, wait, [&] { return closed_ || !events_.empty(); });
    if (closed_) return {};
    if (events_.empty()) return ": keep-alive\n\n";
    std::string event = std::move(events_.front());
    events_.pop_front();
    return event;
}

void UpdateChannel::Stream::push(const std::string& event, const std::string& data) {
    std::lock_guard lock(mutex_);
    if (events_.size() >= kStreamBacklog) events_.pop_front();
    events_.push_back("event: " + event + "\ndata: " + data + "\n\n");
    ready_.notify_one();
}

std::shared_ptr<UpdateChannel::Stream> UpdateChannel::open() {
    auto stream = std::make_shared<Stream>();
    std::lock_guard lock(mutex_);
    streams_.push_back(stream);
    return stream;
}

void UpdateChannel::close(const std::shared_ptr<Stream>& stream) {
    std::lock_guard lock(mutex_);
    std::erase(streams_, stream);
}

void UpdateChannel::send(const std::string& event, const std::string& data, bool replaceable) {
    std::string message = "event: " + event + "\ndata: " + data + "\n\n";
    std::lock_guard lock(mutex_);
    for (const auto& stream : streams_) {
        std::lock_guard streamLock(stream->mutex_);
        if (replaceable) {
            const std::string prefix = "event: " + event + "\n";
            std::erase_if(stream->events_, [&](const std::string& e) { return e.starts_with(prefix); });
        }
        if (stream->events_.size() >= kStreamBacklog) stream->events_.pop_front();
        stream->events_.push_back(message);
        stream->ready_.notify_one();
    }
}

void UpdateChannel::closeAll() {
    std::lock_guard lock(mutex_);
    for (const auto& stream : streams_) {
        std::lock_guard streamLock(stream->mutex_);
        stream->closed_ = true;
        stream->ready_.notify_all();
    }
    streams_.clear();
}

bool UpdateChannel::hasStreams() {
    std::lock_guard lock(mutex_);
    return !streams_.empty();
}

// ---- DemoSession -----------------------------------------------------------------------------

DemoSession::DemoSession(std::string id, const screens::ScreenEntry& screen,
                         std::shared_ptr<sandbox::SandboxVaultServer> vault)
    : id_(std::move(id)),
      screen_(screen),
      vault_(std::move(vault)),
      queue_(std::make_shared<SettingsQueue>(platform::sharedMainQueue(), settings_)) {
    start();
}

DemoSession::~DemoSession() {
    updates_.closeAll();
    withSettings([&] {
        host_.reset();
        environment_.reset();
    });
}

template <class Work>
auto DemoSession::withSettings(Work&& work) -> decltype(work()) {
    struct Restore {
        ~Restore() { restoreDefaults(); }
    } restore;
    applySettings(*settings_);
    return work();
}

void DemoSession::start() {
    withSettings([&] {
        // Versions keep growing across restarts, so that a page never mistakes a new screen
        // for an old one.
        if (host_) version_ += host_->generation();
        host_.reset();
        environment_ = std::make_unique<screens::SandboxEnvironment>(queue_, platform::backgroundPool(), vault_);
        environment_->wallet()->setSandboxMode(settings_->demoMode);
        for (const Json& setting : walletScript_) (void)applyScript(*environment_->wallet(), *vault_, setting);
        host_ = std::make_unique<ScreenHost>(screen_.make(*environment_), HostOptions{.mainQueue = queue_});
        host_->setOnRebuild([this](const Node& tree) {
            if (updates_.hasStreams()) updates_.send("update", stateOf(tree).dump(), true);
        });
        (void)host_->tree();
    });
}

std::shared_ptr<UpdateChannel::Stream> DemoSession::openStream() {
    auto stream = updates_.open();
    stream->push("update", screenState().dump());
    return stream;
}

HtmlOptions DemoSession::htmlOptions(const Node& tree) const {
    HtmlOptions options = toviHtmlOptions(std::string(screen_.title));
    auto names = std::make_shared<std::unordered_map<const NodeData*, std::string>>();
    nameNodes(inspect(tree), *names);
    options.nodeName = [names](const NodeData& d) {
        auto it = names->find(&d);
        return it == names->end() ? std::string() : it->second;
    };
    return options;
}

Json DemoSession::stateOf(const Node& tree) const {
    return Json{{"version", version_ + host_->generation()}, {"html", renderHtmlRoot(tree, htmlOptions(tree))}};
}

Json DemoSession::screenState() {
    return withSettings([&] {
        host_->flush();
        return stateOf(host_->tree());
    });
}

std::string DemoSession::page() {
    return withSettings([&] {
        host_->flush();
        const Node& tree = host_->tree();
        HtmlOptions options = htmlOptions(tree);
        const PageChrome chrome = sessionChrome(id_, screen_, *settings_, version_ + host_->generation());
        options.head = chrome.head;
        options.bodyStart = chrome.bodyStart;
        options.bodyEnd = chrome.bodyEnd;
        return renderHtml(tree, options);
    });
}

Json DemoSession::tree() {
    return withSettings([&] {
        host_->flush();
        return Json{{"ok", true}, {"tree", screens::treeJson(inspect(host_->tree()))}};
    });
}

Json DemoSession::act(const Json& request) {
    touch();
    auto action = request.find("action");
    if (action == request.end() || !action->is_string() || !screens::isHostAction(action->get<std::string>())) {
        return failure(
            "\"action\" must name an action: tap, toggle, type, paste, delete, select, leave, refresh, "
            "dismiss or back");
    }
    return withSettings([&] {
        // Keys land where the page's caret is, so the caret is placed first.
        if (auto caret = request.find("caret"); caret != request.end()) {
            if (!caret->is_object()) return failure("\"caret\" must be an object with \"location\" and \"length\"");
            Json select = *caret;
            for (const char* key : {"id", "text", "path"}) {
                if (request.contains(key)) select[key] = request[key];
            }
            if (auto placed = screens::runHostAction(*host_, "select", select); !placed) {
                return failure(placed.error());
            }
        }
        auto done = screens::runHostAction(*host_, action->get<std::string>(), request);
        host_->flush();
        Json answer = stateOf(host_->tree());
        answer["ok"] = done.has_value();
        if (!done) answer["error"] = done.error();
        return answer;
    });
}

Json DemoSession::script(const Json& request) {
    touch();
    if (!request.is_object() || request.size() != 1) {
        return failure("send one setting: wallet, theme, locale, demoMode or reset");
    }
    const std::string key = request.begin().key();
    const Json& value = request.begin().value();
    bool restart = false;
    if (key == "wallet") {
        if (auto error = applyScript(*environment_->wallet(), *vault_, value)) return failure(*error);
        // Kept, so that a restarted screen meets the same sandbox.
        walletScript_.push_back(value);
    } else if (key == "theme" && value.is_string() && (value == "default" || value == "custom")) {
        settings_->customTheme = value == "custom";
        host_->invalidate();
    } else if (key == "locale" && value.is_string() &&
               std::ranges::find(kDemoLocales, value.get<std::string>()) != kDemoLocales.end()) {
        settings_->locale = value.get<std::string>();
        restart = true;  // amounts and dates were formatted when they were loaded
    } else if (key == "demoMode" && value.is_boolean()) {
        settings_->demoMode = value.get<bool>();
        restart = true;  // the view model reads it when it is made
    } else if (key == "reset" && value == true) {
        restart = true;
    } else {
        return failure("unknown setting \"" + key + "\" or a value it does not take");
    }
    if (restart) start();
    Json answer = screenState();
    answer["ok"] = true;
    return answer;
}

}  // namespace tovi::demo
