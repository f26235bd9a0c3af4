#pragma once
// The sandbox vault's token store and its token rules, apart from HTTP.

#include <cstddef>
#include <expected>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/Value.hpp"

namespace tovi::sandbox {

// Why a token request was refused: the field's path ("data.number") and the rule, never the
// value.
struct VaultProblem {
    std::string field;
    std::string message;
};

// Thread safety: every member may be called from any thread.
class SandboxVaultTokens {
public:
    using Outcome = std::expected<anycodable::Value, std::vector<VaultProblem>>;

    // One token request ({"type", "data", ...}): the token as answered, stored.
    [[nodiscard]] Outcome create(const anycodable::Value& request);
    // A token request, or maps and arrays of them: the same shape with a token in each place.
    // Nothing is stored unless every request is valid.
    [[nodiscard]] Outcome tokenize(const anycodable::Value& body);

    // The token with its data as it was given.
    [[nodiscard]] std::optional<anycodable::Value> find(const std::string& id) const;
    // The masked number of a card token.
    [[nodiscard]] std::optional<std::string> maskedNumber(const std::string& id) const;
    [[nodiscard]] std::size_t size() const;

private:
    struct Stored {
        anycodable::Map full;
        std::optional<std::string> maskedNumber;
    };
    struct Pending {
        std::string id;
        Stored stored;
    };

    // Checks and shapes one token request; nothing is stored yet.
    [[nodiscard]] std::expected<std::pair<Pending, anycodable::Value>, std::vector<VaultProblem>> prepare(
        const anycodable::Value& request, const std::string& path) const;
    [[nodiscard]] std::expected<anycodable::Value, std::vector<VaultProblem>> prepareTree(
        const anycodable::Value& body, const std::string& path, std::vector<Pending>& pending) const;
    // Stores all or, when an id is taken, none.
    [[nodiscard]] std::optional<VaultProblem> commit(std::vector<Pending> pending);

    mutable std::mutex mutex_;
    std::map<std::string, Stored, std::less<>> tokens_;
};

}  // namespace tovi::sandbox
