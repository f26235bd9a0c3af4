#pragma once
// ReactRequest: the body that runs a reactor. `args` is open JSON, handed to the reactor as it is.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "AnyCodable/AnyCodable.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ReactRequest {
    std::optional<anycodable::AnyCodable> args{};
    std::optional<std::string> callbackUrl{};
    std::optional<int> timeoutMs{};

    friend bool operator==(const ReactRequest&, const ReactRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("args", &ReactRequest::args), optional("callback_url", &ReactRequest::callbackUrl),
                      optional("timeout_ms", &ReactRequest::timeoutMs));
    }
};

}  // namespace korvane
