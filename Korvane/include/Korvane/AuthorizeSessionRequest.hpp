#pragma once
// AuthorizeSessionRequest: the body that grants a session, named by its nonce, permissions or
// access rules. "expires_at" is text sent unchanged.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/AccessRule.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct AuthorizeSessionRequest {
    std::string nonce{};
    std::optional<std::string> expiresAt{};
    std::optional<std::vector<std::string>> permissions{};
    std::optional<std::vector<AccessRule>> rules{};

    friend bool operator==(const AuthorizeSessionRequest&, const AuthorizeSessionRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("nonce", &AuthorizeSessionRequest::nonce),
                      optional("expires_at", &AuthorizeSessionRequest::expiresAt),
                      optional("permissions", &AuthorizeSessionRequest::permissions),
                      optional("rules", &AuthorizeSessionRequest::rules));
    }
};

}  // namespace korvane
