#pragma once
// UpdateReactorRequest: the body that replaces a reactor's name, application and configuration
// (there is no formula member to send). "name" is always on the wire.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/Application.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct UpdateReactorRequest {
    std::string name{};
    std::optional<Application> application{};
    std::optional<std::map<std::string, std::string>> configuration{};

    friend bool operator==(const UpdateReactorRequest&, const UpdateReactorRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &UpdateReactorRequest::name),
                      optional("application", &UpdateReactorRequest::application),
                      optional("configuration", &UpdateReactorRequest::configuration));
    }
};

}  // namespace korvane
