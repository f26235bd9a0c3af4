#pragma once
// Internal: reading authentication challenges out of a 401 response.

#include "platform/Http.hpp"
#include "platform/HttpSession.hpp"

#include <optional>
#include <string>

namespace platform::http_internal {

struct ParsedChallenge {
    HttpAuthScheme scheme = HttpAuthScheme::basic;
    std::string realm;

    friend bool operator==(const ParsedChallenge&, const ParsedChallenge&) = default;
};

// The challenge the session answers among every WWW-Authenticate field of `headers`:
// Digest when offered (it does not reveal the password), else Basic; absent when neither
// is offered. Schemes are matched without regard to case.
[[nodiscard]] std::optional<ParsedChallenge> selectChallenge(const HttpHeaders& headers);

}  // namespace platform::http_internal
