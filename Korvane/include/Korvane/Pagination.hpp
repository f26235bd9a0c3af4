#pragma once
// Pagination: where a page lies in a listing.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"

namespace korvane {

struct Pagination {
    std::optional<int> totalItems{};
    std::optional<int> pageNumber{};
    std::optional<int> pageSize{};
    std::optional<int> totalPages{};

    friend bool operator==(const Pagination&, const Pagination&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("total_items", &Pagination::totalItems),
                      optional("page_number", &Pagination::pageNumber), optional("page_size", &Pagination::pageSize),
                      optional("total_pages", &Pagination::totalPages));
    }
};

}  // namespace korvane
