#pragma once
// ApplicationPaginatedList: one page of applications.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/Application.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"

namespace korvane {

struct ApplicationPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<Application>> data{};

    friend bool operator==(const ApplicationPaginatedList&, const ApplicationPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &ApplicationPaginatedList::pagination),
                      optional("data", &ApplicationPaginatedList::data));
    }
};

}  // namespace korvane
