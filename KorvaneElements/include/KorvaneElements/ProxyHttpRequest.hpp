#pragma once
// ProxyHttpRequest: what `KorvaneElements::proxy` sends through the vault's proxy.
//
//   method   default GET
//   path     appended as it stands to `url` (or to the base path and "/proxy")
//   query    "key=value" items joined by "&", in key order, not percent-encoded
//   body     may hold element references (see ElementReferenceValue.hpp)
//   headers  the caller's headers; the library's own ones win
//   url      replaces the base path and "/proxy"

#include <map>
#include <optional>
#include <string>

#include "AnyCodable/Value.hpp"
#include "KorvaneElements/HttpMethod.hpp"

namespace korvane::elements {

struct ProxyHttpRequest {
    std::optional<HttpMethod> method{};
    std::optional<std::string> path{};
    std::optional<std::map<std::string, std::string>> query{};
    std::optional<anycodable::Map> body{};
    std::optional<std::map<std::string, std::string>> headers{};
    std::optional<std::string> url{};
};

}  // namespace korvane::elements
