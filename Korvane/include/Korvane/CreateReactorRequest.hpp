#pragma once
// CreateReactorRequest: the body that creates a reactor. "name" is always on the wire; the
// rest only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/Application.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ReactorFormula.hpp"

namespace korvane {

struct CreateReactorRequest {
    std::string name{};
    std::optional<ReactorFormula> formula{};
    std::optional<Application> application{};
    std::optional<std::map<std::string, std::string>> configuration{};

    friend bool operator==(const CreateReactorRequest&, const CreateReactorRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &CreateReactorRequest::name),
                      optional("formula", &CreateReactorRequest::formula),
                      optional("application", &CreateReactorRequest::application),
                      optional("configuration", &CreateReactorRequest::configuration));
    }
};

}  // namespace korvane
