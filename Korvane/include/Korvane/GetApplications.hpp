#pragma once
// GetApplications: the query of an application listing as a record (no operation takes it;
// ApplicationsAPI::callGet takes the values one by one).
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct GetApplications {
    std::optional<std::vector<platform::Uuid>> id{};
    std::optional<std::vector<std::string>> type{};
    std::optional<int> page{};
    std::optional<int> size{};

    friend bool operator==(const GetApplications&, const GetApplications&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &GetApplications::id), optional("type", &GetApplications::type),
                      optional("page", &GetApplications::page), optional("size", &GetApplications::size));
    }
};

}  // namespace korvane
