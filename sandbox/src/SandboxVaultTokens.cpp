#include "SandboxVaultTokens.hpp"

#include <ctime>

#include <fmt/format.h>

#include "platform/Uuid.hpp"

namespace tovi::sandbox {

namespace {

constexpr const char* kTenantId = "5A0E2C4B-6F1D-4E8A-9B3C-7D2E1F0A9B8C";
constexpr const char* kCreatedBy = "9C8B7A6D-5E4F-4A3B-8C2D-1E0F9A8B7C6D";

bool allDigits(std::string_view text) {
    if (text.empty()) return false;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
    }
    return true;
}

std::string nowIso8601() {
    const auto now = std::chrono::system_clock::now();
    const auto seconds = std::chrono::system_clock::to_time_t(now);
    const auto millis = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}.{:03}Z", utc.tm_year + 1900, utc.tm_mon + 1, utc.tm_mday,
                       utc.tm_hour, utc.tm_min, utc.tm_sec, millis);
}

// Ids travel as one path segment of GET /tokens/{id}: letters, digits, "-" and "_" only, so
// that every stored token can be read back ("/" would split the segment, "." and ".." are
// rewritten by clients, escapes are decoded).
bool isValidId(std::string_view id) {
    if (id.empty() || id.size() > 128) return false;
    for (char c : id) {
        const bool ok =
            (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (!ok) return false;
    }
    return true;
}

// An integer given as a JSON integer or as a string of digits.
std::optional<std::int64_t> integerField(const anycodable::Value* value) {
    if (!value) return std::nullopt;
    if (const auto* i = value->get<std::int64_t>()) return *i;
    if (const auto* u = value->get<std::uint64_t>()) {
        if (*u <= 1'000'000) return static_cast<std::int64_t>(*u);
        return std::nullopt;
    }
    if (const auto* s = value->get<std::string>(); s && allDigits(*s) && s->size() <= 6) return std::stoll(*s);
    return std::nullopt;
}

struct CardCheck {
    anycodable::Map shown;
    std::string masked;
};

// The card rules; the answer's data shows the masked number and the expiry only.
std::expected<CardCheck, std::vector<VaultProblem>> checkCard(const anycodable::Map& data, const std::string& path) {
    std::vector<VaultProblem> problems;
    const auto* number = data.find("number") ? data.find("number")->get<std::string>() : nullptr;
    if (!number || !allDigits(*number) || number->size() < 13 || number->size() > 19) {
        problems.push_back({path + ".number", "must be a string of 13 to 19 digits"});
    }
    const auto month = integerField(data.find("expiration_month"));
    if (!month || *month < 1 || *month > 12) {
        problems.push_back({path + ".expiration_month", "must be a month from 1 to 12"});
    }
    const auto year = integerField(data.find("expiration_year"));
    if (!year || *year < 1000 || *year > 9999) {
        problems.push_back({path + ".expiration_year", "must be a four-digit year"});
    }
    if (const auto* cvc = data.find("cvc")) {
        const auto* text = cvc->get<std::string>();
        if (!text || !allDigits(*text) || text->size() < 3 || text->size() > 4) {
            problems.push_back({path + ".cvc", "must be a string of 3 or 4 digits"});
        }
    }
    if (!problems.empty()) return std::unexpected(std::move(problems));
    CardCheck check;
    check.masked = number->substr(0, 6) + std::string(number->size() - 10, 'X') + number->substr(number->size() - 4);
    check.shown.set("number", check.masked);
    check.shown.set("expiration_month", *month);
    check.shown.set("expiration_year", *year);
    return check;
}

}  // namespace

std::expected<std::pair<SandboxVaultTokens::Pending, anycodable::Value>, std::vector<VaultProblem>>
SandboxVaultTokens::prepare(const anycodable::Value& request, const std::string& path) const {
    const std::string prefix = path.empty() ? "" : path + ".";
    const auto* map = request.get<anycodable::Map>();
    if (!map) return std::unexpected(std::vector<VaultProblem>{{path, "must be a token request object"}});
    const auto* type = map->find("type") ? map->find("type")->get<std::string>() : nullptr;
    if (!type || type->empty()) return std::unexpected(std::vector<VaultProblem>{{prefix + "type", "is required"}});
    const anycodable::Value* data = map->find("data");
    if (!data || data->isNull() || data->isEmpty()) {
        return std::unexpected(std::vector<VaultProblem>{{prefix + "data", "is required"}});
    }
    std::optional<std::string> id;
    if (const auto* given = map->find("id")) {
        const auto* text = given->get<std::string>();
        if (!text || !isValidId(*text)) {
            return std::unexpected(
                std::vector<VaultProblem>{{prefix + "id", "must be 1 to 128 letters, digits, \"-\" or \"_\""}});
        }
        id = *text;
    }

    anycodable::Value shownData = *data;
    std::optional<std::string> masked;
    if (*type == "card") {
        const auto* card = data->get<anycodable::Map>();
        if (!card) return std::unexpected(std::vector<VaultProblem>{{prefix + "data", "must be an object"}});
        auto checked = checkCard(*card, prefix + "data");
        if (!checked) return std::unexpected(std::move(checked.error()));
        shownData = std::move(checked->shown);
        masked = std::move(checked->masked);
    }

    Pending pending;
    pending.id = id.value_or(platform::Uuid::random().string());
    anycodable::Map token;
    token.set("id", pending.id);
    token.set("type", *type);
    token.set("tenant_id", kTenantId);
    token.set("data", *data);
    for (const char* key : {"metadata", "search_indexes", "containers", "expires_at", "fingerprint_expression"}) {
        if (const auto* value = map->find(key); value && !value->isNull()) token.set(key, *value);
    }
    token.set("created_by", kCreatedBy);
    token.set("created_at", nowIso8601());
    pending.stored = Stored{token, masked};

    anycodable::Map shown = token;
    shown.set("data", std::move(shownData));
    return std::pair{std::move(pending), anycodable::Value(std::move(shown))};
}

std::expected<anycodable::Value, std::vector<VaultProblem>> SandboxVaultTokens::prepareTree(
    const anycodable::Value& body, const std::string& path, std::vector<Pending>& pending) const {
    const std::string prefix = path.empty() ? "" : path + ".";
    if (const auto* map = body.get<anycodable::Map>()) {
        if (map->contains("type")) {
            auto prepared = prepare(body, path);
            if (!prepared) return std::unexpected(std::move(prepared.error()));
            pending.push_back(std::move(prepared->first));
            return std::move(prepared->second);
        }
        anycodable::Map out;
        for (const auto& [key, value] : *map) {
            auto item = prepareTree(value, prefix + key, pending);
            if (!item) return item;
            out.set(key, std::move(*item));
        }
        return anycodable::Value(std::move(out));
    }
    if (const auto* array = body.get<anycodable::Array>()) {
        anycodable::Array out;
        for (std::size_t i = 0; i < array->size(); ++i) {
            auto item = prepareTree((*array)[i], path + "[" + std::to_string(i) + "]", pending);
            if (!item) return item;
            out.push_back(std::move(*item));
        }
        return anycodable::Value(std::move(out));
    }
    return std::unexpected(std::vector<VaultProblem>{{path, "must be a token request, an object or an array"}});
}

std::optional<VaultProblem> SandboxVaultTokens::commit(std::vector<Pending> pending) {
    std::lock_guard lock(mutex_);
    for (const auto& p : pending) {
        if (tokens_.contains(p.id)) return VaultProblem{"id", "is already taken"};
    }
    for (auto& p : pending) tokens_.insert_or_assign(p.id, std::move(p.stored));
    return std::nullopt;
}

SandboxVaultTokens::Outcome SandboxVaultTokens::create(const anycodable::Value& request) {
    auto prepared = prepare(request, "");
    if (!prepared) return std::unexpected(std::move(prepared.error()));
    std::vector<Pending> pending;
    pending.push_back(std::move(prepared->first));
    if (auto problem = commit(std::move(pending))) return std::unexpected(std::vector<VaultProblem>{*problem});
    return std::move(prepared->second);
}

SandboxVaultTokens::Outcome SandboxVaultTokens::tokenize(const anycodable::Value& body) {
    std::vector<Pending> pending;
    auto tree = prepareTree(body, "", pending);
    if (!tree) return tree;
    if (auto problem = commit(std::move(pending))) return std::unexpected(std::vector<VaultProblem>{*problem});
    return tree;
}

std::optional<anycodable::Value> SandboxVaultTokens::find(const std::string& id) const {
    std::lock_guard lock(mutex_);
    auto it = tokens_.find(id);
    if (it == tokens_.end()) return std::nullopt;
    return anycodable::Value(it->second.full);
}

std::optional<std::string> SandboxVaultTokens::maskedNumber(const std::string& id) const {
    std::lock_guard lock(mutex_);
    auto it = tokens_.find(id);
    if (it == tokens_.end()) return std::nullopt;
    return it->second.maskedNumber;
}

std::size_t SandboxVaultTokens::size() const {
    std::lock_guard lock(mutex_);
    return tokens_.size();
}

}  // namespace tovi::sandbox
