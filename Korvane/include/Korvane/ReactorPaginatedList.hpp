#pragma once
// ReactorPaginatedList: one page of reactors.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/Reactor.hpp"

namespace korvane {

struct ReactorPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<Reactor>> data{};

    friend bool operator==(const ReactorPaginatedList&, const ReactorPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &ReactorPaginatedList::pagination),
                      optional("data", &ReactorPaginatedList::data));
    }
};

}  // namespace korvane
