#pragma once
// GetTokenByIdResponse: a token as `KorvaneElements::getTokenById` answers it. `data` is a
// tree of opaque leaves: the host can put them into elements but cannot read them.

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/EncryptionMetadata.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/Privacy.hpp"
#include "Korvane/Token.hpp"
#include "KorvaneElements/JSON.hpp"
#include "platform/Uuid.hpp"

namespace korvane::elements {

struct GetTokenByIdResponse {
    std::optional<std::string> id{};
    std::optional<std::string> type{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<JSON> data{};
    std::optional<std::map<std::string, std::string>> metadata{};
    std::optional<korvane::EncryptionMetadata> encryption{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<korvane::Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<korvane::Date> modifiedAt{};
    std::optional<std::string> fingerprint{};
    std::optional<std::string> fingerprintExpression{};
    std::optional<anycodable::AnyCodable> mask{};
    std::optional<korvane::Privacy> privacy{};
    std::optional<std::vector<std::string>> searchIndexes{};
    std::optional<korvane::Date> expiresAt{};
    std::optional<std::vector<std::string>> containers{};
};

// Every field of `token` but its data, with `data` in its place.
[[nodiscard]] GetTokenByIdResponse toGetTokenByIdResponse(const korvane::Token& token, std::optional<JSON> data);

}  // namespace korvane::elements
