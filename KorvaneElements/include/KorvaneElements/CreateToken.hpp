#pragma once
// CreateToken: the host's form of a new token. `data` may hold element references (see
// ElementReferenceValue.hpp); they are replaced when `KorvaneElements::createToken` sends it,
// and the rest maps field by field onto korvane::CreateTokenRequest.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/Value.hpp"
#include "Korvane/EncryptionMetadata.hpp"
#include "Korvane/Privacy.hpp"

namespace korvane::elements {

struct CreateToken {
    std::optional<std::string> id{};
    std::optional<std::string> type{};
    anycodable::Map data{};
    std::optional<korvane::EncryptionMetadata> encryption{};
    std::optional<korvane::Privacy> privacy{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<std::string> mask{};
    std::optional<bool> deduplicateToken{};
    std::optional<std::string> expiresAt{};
    std::optional<std::vector<std::string>> containers{};
};

}  // namespace korvane::elements
