#pragma once
// ReactorFormulaPaginatedList: one page of reactor formulas.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/ReactorFormula.hpp"

namespace korvane {

struct ReactorFormulaPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<ReactorFormula>> data{};

    friend bool operator==(const ReactorFormulaPaginatedList&, const ReactorFormulaPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &ReactorFormulaPaginatedList::pagination),
                      optional("data", &ReactorFormulaPaginatedList::data));
    }
};

}  // namespace korvane
