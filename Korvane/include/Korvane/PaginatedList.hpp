#pragma once
// PaginatedList<T>: one page of a listing, the items of type T and where the page lies.
//
// Every listing of the vault answers the same two keys, so the shape is written once; each
// listing's public name is an alias of it in its own header (ProxyPaginatedList.hpp, ...).
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"

namespace korvane {

template <class T>
struct PaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<T>> data{};

    friend bool operator==(const PaginatedList&, const PaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &PaginatedList::pagination), optional("data", &PaginatedList::data));
    }
};

}  // namespace korvane
