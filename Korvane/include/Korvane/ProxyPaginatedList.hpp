#pragma once
// ProxyPaginatedList: one page of proxies.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <optional>
#include <vector>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/Pagination.hpp"
#include "Korvane/Proxy.hpp"

namespace korvane {

struct ProxyPaginatedList {
    std::optional<Pagination> pagination{};
    std::optional<std::vector<Proxy>> data{};

    friend bool operator==(const ProxyPaginatedList&, const ProxyPaginatedList&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("pagination", &ProxyPaginatedList::pagination),
                      optional("data", &ProxyPaginatedList::data));
    }
};

}  // namespace korvane
