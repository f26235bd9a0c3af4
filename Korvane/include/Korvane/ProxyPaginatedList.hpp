#pragma once
// ProxyPaginatedList: one page of proxies.

#include "Korvane/PaginatedList.hpp"
#include "Korvane/Proxy.hpp"

namespace korvane {

using ProxyPaginatedList = PaginatedList<Proxy>;

}  // namespace korvane
