#pragma once
// UpdatePrivacy: the privacy settings an update may change (the classification is fixed).
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct UpdatePrivacy {
    std::optional<std::string> impactLevel{};
    std::optional<std::string> restrictionPolicy{};

    friend bool operator==(const UpdatePrivacy&, const UpdatePrivacy&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("impact_level", &UpdatePrivacy::impactLevel),
                      optional("restriction_policy", &UpdatePrivacy::restrictionPolicy));
    }
};

}  // namespace korvane
