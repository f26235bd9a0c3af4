#include "HostActions.hpp"

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>

namespace tovi::screens {

using Json = nlohmann::ordered_json;
using platform::view::HostResult;
using platform::view::HostTarget;
using platform::view::ScreenHost;
using Outcome = std::expected<void, std::string>;

namespace {

// Large enough for any text a person pastes, small enough that a typo cannot stall the host.
constexpr std::int64_t kMaxCount = 10'000;
constexpr std::int64_t kMaxPosition = 1'000'000;

std::optional<std::string> text(const Json& input, const char* key) {
    auto it = input.find(key);
    if (it == input.end() || !it->is_string()) return std::nullopt;
    return it->get<std::string>();
}

// A whole number member within [low, high]; `fallback` when absent; nothing when malformed.
std::optional<std::int64_t> whole(const Json& input, const char* key, std::int64_t low, std::int64_t high,
                                  std::optional<std::int64_t> fallback = std::nullopt) {
    auto it = input.find(key);
    if (it == input.end()) return fallback;
    if (!it->is_number_integer()) return std::nullopt;
    const auto value = it->get<std::int64_t>();
    if (value < low || value > high) return std::nullopt;
    return value;
}

std::expected<HostTarget, std::string> target(const Json& input) {
    if (auto id = text(input, "id")) return HostTarget::id(*id);
    if (auto t = text(input, "text")) return HostTarget::text(*t);
    if (auto path = text(input, "path")) return HostTarget::path(*path);
    return std::unexpected("name the node with \"id\", \"text\" or \"path\" (a string)");
}

Outcome result(const HostResult& done) {
    if (!done) return std::unexpected(done.error().message);
    return {};
}

using Run = std::function<Outcome(ScreenHost&, const HostTarget&, const Json&)>;

struct Action {
    std::string_view name;
    bool needsTarget;
    Run run;
};

Outcome withKeys(const Json& input, const std::function<HostResult(const std::string&)>& act) {
    const auto keys = text(input, "keys");
    if (!keys) return std::unexpected("missing \"keys\" (the text to enter)");
    return result(act(*keys));
}

const std::array<Action, 10>& actions() {
    static const std::array<Action, 10> table{
        Action{"tap", true, [](ScreenHost& h, const HostTarget& t, const Json&) { return result(h.tap(t)); }},
        Action{"toggle", true, [](ScreenHost& h, const HostTarget& t, const Json&) { return result(h.toggle(t)); }},
        Action{"type", true,
               [](ScreenHost& h, const HostTarget& t, const Json& in) {
                   return withKeys(in, [&](const std::string& keys) { return h.type(t, keys); });
               }},
        Action{"paste", true,
               [](ScreenHost& h, const HostTarget& t, const Json& in) {
                   return withKeys(in, [&](const std::string& keys) { return h.paste(t, keys); });
               }},
        Action{"delete", true,
               [](ScreenHost& h, const HostTarget& t, const Json& in) -> Outcome {
                   const auto times = whole(in, "times", 1, kMaxCount, 1);
                   if (!times) return std::unexpected("\"times\" must be a whole number from 1 to 10000");
                   return result(h.deleteBackward(t, static_cast<std::size_t>(*times)));
               }},
        Action{"select", true,
               [](ScreenHost& h, const HostTarget& t, const Json& in) -> Outcome {
                   const auto location = whole(in, "location", 0, kMaxPosition);
                   const auto length = whole(in, "length", 0, kMaxPosition, 0);
                   if (!location || !length) {
                       return std::unexpected("\"location\" and \"length\" must be whole numbers from 0");
                   }
                   return result(h.selectRange(
                       t, platform::TextRange{static_cast<std::size_t>(*location), static_cast<std::size_t>(*length)}));
               }},
        Action{"leave", true, [](ScreenHost& h, const HostTarget& t, const Json&) { return result(h.leave(t)); }},
        Action{"refresh", true, [](ScreenHost& h, const HostTarget& t, const Json&) { return result(h.refresh(t)); }},
        Action{"dismiss", false,
               [](ScreenHost& h, const HostTarget&, const Json&) { return result(h.dismissSheet()); }},
        Action{"back", false, [](ScreenHost& h, const HostTarget&, const Json&) { return result(h.back()); }},
    };
    return table;
}

}  // namespace

bool isHostAction(std::string_view name) {
    return std::ranges::any_of(actions(), [&](const Action& a) { return a.name == name; });
}

std::expected<void, std::string> runHostAction(ScreenHost& host, std::string_view action, const Json& input) {
    for (const Action& a : actions()) {
        if (a.name != action) continue;
        if (!a.needsTarget) return a.run(host, HostTarget{}, input);
        auto t = target(input);
        if (!t) return std::unexpected(t.error());
        return a.run(host, *t, input);
    }
    return std::unexpected("unknown action \"" + std::string(action) + "\"");
}

}  // namespace tovi::screens
