#pragma once
// ProxyTransform: code that a proxy runs over a request or an answer passing through it.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct ProxyTransform {
    std::optional<std::string> code{};

    friend bool operator==(const ProxyTransform&, const ProxyTransform&) = default;

    static constexpr auto jsonFields() { return fields(optional("code", &ProxyTransform::code)); }
};

}  // namespace korvane
