#pragma once
// UpdateProxyRequest: the body that replaces a proxy; its fields are in ProxyRequestBody.hpp.

#include "Korvane/ProxyRequestBody.hpp"

namespace korvane {

using UpdateProxyRequest = ProxyRequestBody<BodyFor::update>;

}  // namespace korvane
