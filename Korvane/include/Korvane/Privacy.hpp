#pragma once
// Privacy: how a token's data is classified and who may read it.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct Privacy {
    std::optional<std::string> classification{};
    std::optional<std::string> impactLevel{};
    std::optional<std::string> restrictionPolicy{};

    friend bool operator==(const Privacy&, const Privacy&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("classification", &Privacy::classification),
                      optional("impact_level", &Privacy::impactLevel),
                      optional("restriction_policy", &Privacy::restrictionPolicy));
    }
};

}  // namespace korvane
