#include "ScenarioRunner.hpp"

#include <array>
#include <chrono>
#include <expected>
#include <functional>
#include <optional>

#include <nlohmann/json.hpp>

#include "HostActions.hpp"
#include "ScreenCatalogue.hpp"
#include "ToviUI/ToviAssets.hpp"
#include "TreeJson.hpp"
#include "platform/Console.hpp"
#include "platform/Locale.hpp"
#include "platform/MainQueue.hpp"
#include "platform/testing/ManualMainQueue.hpp"
#include "platform/view/HtmlRenderer.hpp"
#include "platform/view/ScreenHost.hpp"

namespace tovi::scenario {

using Json = nlohmann::ordered_json;
using Outcome = std::expected<Json, std::string>;

namespace {

// Long enough for any scenario, short enough that a typo cannot stall a run for hours.
constexpr std::int64_t kMaxAdvanceMs = 24LL * 60 * 60 * 1000;

// A string member, or absent.
std::optional<std::string> text(const Json& input, const char* key) {
    auto it = input.find(key);
    if (it == input.end() || !it->is_string()) return std::nullopt;
    return it->get<std::string>();
}

// A whole number member within [low, high], or absent.
std::optional<std::int64_t> whole(const Json& input, const char* key, std::int64_t low, std::int64_t high) {
    auto it = input.find(key);
    if (it == input.end() || !it->is_number_integer()) return std::nullopt;
    const auto value = it->get<std::int64_t>();
    if (value < low || value > high) return std::nullopt;
    return value;
}

}  // namespace

class ScenarioRunner::Impl {
public:
    std::vector<std::string> handle(std::string_view line);

private:
    struct Command {
        std::string_view name;
        Outcome (Impl::*run)(const Json& input);
    };

    Outcome start(const Json& input);
    Outcome screens(const Json& input);
    Outcome advance(const Json& input);
    Outcome idle(const Json& input);
    Outcome tree(const Json& input);
    Outcome html(const Json& input);
    Outcome console(const Json& input);
    Outcome requests(const Json& input);

    // Every command, once: the protocol on one screen.
    static constexpr std::array kCommands{
        Command{"start", &Impl::start},     Command{"screens", &Impl::screens},   Command{"advance", &Impl::advance},
        Command{"idle", &Impl::idle},       Command{"tree", &Impl::tree},         Command{"html", &Impl::html},
        Command{"console", &Impl::console}, Command{"requests", &Impl::requests},
    };

    Outcome run(const Json& input);
    std::optional<std::string> needScreen() const;
    std::optional<std::string> applySandbox(const Json& options);

    platform::ManualMainQueueScope main_;
    platform::ConsoleCapture consoleCapture_;
    std::size_t consoleSeen_ = 0;
    std::unique_ptr<screens::SandboxEnvironment> environment_;
    std::unique_ptr<platform::view::ScreenHost> host_;  // after the environment: it runs on it
    std::string screen_;
};

std::vector<std::string> ScenarioRunner::Impl::handle(std::string_view line) {
    Json result;
    Json input = Json::parse(line, nullptr, /*allow_exceptions=*/false);
    if (input.is_discarded() || !input.is_object()) {
        result = {{"ok", false}, {"error", "each line must be one JSON object"}};
    } else {
        if (input.contains("seq")) result["seq"] = input["seq"];
        Outcome outcome = run(input);
        main_->runUntilIdle();
        if (outcome) {
            result["ok"] = true;
            for (auto& [key, value] : outcome->items()) result[key] = value;
        } else {
            result["ok"] = false;
            result["error"] = outcome.error();
        }
    }
    std::vector<std::string> out;
    const std::vector<std::string> lines = consoleCapture_.lines();
    for (; consoleSeen_ < lines.size(); ++consoleSeen_) {
        out.push_back(Json{{"event", "console"}, {"line", lines[consoleSeen_]}}.dump());
    }
    out.push_back(result.dump(-1, ' ', false, Json::error_handler_t::replace));
    return out;
}

Outcome ScenarioRunner::Impl::run(const Json& input) {
    const auto cmd = text(input, "cmd");
    if (!cmd) return std::unexpected("missing \"cmd\" (a string)");
    for (const Command& command : kCommands) {
        if (command.name == *cmd) return (this->*command.run)(input);
    }
    if (screens::isHostAction(*cmd)) {
        if (auto missing = needScreen()) return std::unexpected(*missing);
        auto done = screens::runHostAction(*host_, *cmd, input);
        if (!done) return std::unexpected(done.error());
        return Json::object();
    }
    return std::unexpected("unknown command \"" + *cmd + "\"");
}

std::optional<std::string> ScenarioRunner::Impl::needScreen() const {
    if (!host_) return "no screen is running; send {\"cmd\":\"start\",\"screen\":...} first";
    return std::nullopt;
}

Outcome ScenarioRunner::Impl::start(const Json& input) {
    const auto name = text(input, "screen");
    if (!name) return std::unexpected("missing \"screen\" (a name from {\"cmd\":\"screens\"})");
    const screens::ScreenEntry* entry = screens::findScreen(*name);
    if (entry == nullptr) return std::unexpected("no screen is named \"" + *name + "\"");
    // Screens format amounts and dates for the device's settings: a scenario names them, so that
    // its output is the same on every machine.
    const std::string locale = text(input, "locale").value_or("en_US");
    const std::string zone = text(input, "timeZone").value_or("UTC");
    if (!platform::isKnownTimeZone(zone)) return std::unexpected("unknown time zone \"" + zone + "\"");
    host_.reset();
    environment_.reset();
    main_->discardPending();
    platform::setCurrentLocale(locale);
    (void)platform::setCurrentTimeZone(zone);
    environment_ = std::make_unique<screens::SandboxEnvironment>(platform::sharedMainQueue(), main_.queue());
    if (auto it = input.find("sandbox"); it != input.end()) {
        if (auto error = applySandbox(*it)) {
            environment_.reset();
            return std::unexpected(*error);
        }
    }
    host_ = std::make_unique<platform::view::ScreenHost>(entry->make(*environment_));
    screen_ = *name;
    (void)host_->tree();
    return Json{{"screen", screen_}};
}

std::optional<std::string> ScenarioRunner::Impl::applySandbox(const Json& options) {
    if (!options.is_object()) return "\"sandbox\" must be an object";
    auto& wallet = *environment_->wallet();
    for (const auto& [key, value] : options.items()) {
        if (!value.is_object()) return "sandbox \"" + key + "\" must be an object of operations";
        for (const auto& [operationText, setting] : value.items()) {
            const auto operation = sandbox::operationNamed(operationText);
            if (!operation) return "no sandbox operation is named \"" + operationText + "\"";
            if (key == "latencyMs" && setting.is_number_integer() && setting.get<std::int64_t>() >= 0 &&
                setting.get<std::int64_t>() <= kMaxAdvanceMs) {
                wallet.setLatency(*operation, std::chrono::milliseconds(setting.get<std::int64_t>()));
            } else if (key == "failNext" && setting.is_string()) {
                wallet.failNext(*operation, setting.get<std::string>());
            } else if (key == "failAlways" && setting.is_string()) {
                wallet.failAlways(*operation, setting.get<std::string>());
            } else {
                return "sandbox \"" + key + "\" of " + operationText +
                       ": expected latencyMs (milliseconds), failNext or failAlways (a message)";
            }
        }
    }
    return std::nullopt;
}

Outcome ScenarioRunner::Impl::screens(const Json&) {
    Json list = Json::array();
    for (const auto& entry : screens::screenCatalogue()) {
        list.push_back({{"name", entry.name}, {"title", entry.title}});
    }
    return Json{{"screens", std::move(list)}};
}

Outcome ScenarioRunner::Impl::advance(const Json& input) {
    const auto ms = whole(input, "ms", 0, kMaxAdvanceMs);
    if (!ms) return std::unexpected("\"ms\" must be a whole number of milliseconds from 0 to one day");
    const std::size_t ran = main_->advance(std::chrono::milliseconds(*ms));
    return Json{{"ran", ran}};
}

Outcome ScenarioRunner::Impl::idle(const Json&) {
    return Json{{"ran", main_->runUntilIdle()}};
}

Outcome ScenarioRunner::Impl::tree(const Json&) {
    if (auto missing = needScreen()) return std::unexpected(*missing);
    return Json{{"tree", screens::treeJson(platform::view::inspect(host_->tree()))}};
}

Outcome ScenarioRunner::Impl::html(const Json&) {
    if (auto missing = needScreen()) return std::unexpected(*missing);
    return Json{{"html", platform::view::renderHtml(host_->tree(), toviHtmlOptions(screen_))}};
}

Outcome ScenarioRunner::Impl::console(const Json&) {
    return Json{{"lines", consoleCapture_.lines()}};
}

Outcome ScenarioRunner::Impl::requests(const Json&) {
    if (!environment_) return std::unexpected("no screen is running");
    Json wallet = Json::array();
    for (const auto& event : environment_->wallet()->events()) {
        static constexpr const char* kinds[] = {"started", "succeeded", "failed"};
        wallet.push_back(
            {{"operation", sandbox::operationName(event.operation)}, {"kind", kinds[static_cast<int>(event.kind)]}});
    }
    Json vault = Json::array();
    for (const auto& request : environment_->vault().receivedRequests()) {
        vault.push_back({{"method", request.method}, {"path", request.path}});
    }
    return Json{{"wallet", std::move(wallet)}, {"vault", std::move(vault)}};
}

ScenarioRunner::ScenarioRunner() : impl_(std::make_unique<Impl>()) {}
ScenarioRunner::~ScenarioRunner() = default;

std::vector<std::string> ScenarioRunner::handle(std::string_view line) {
    return impl_->handle(line);
}

}  // namespace tovi::scenario
