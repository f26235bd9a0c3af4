#pragma once
// CreateProxyRequest: the body that creates a proxy; its fields are in ProxyRequestBody.hpp.

#include "Korvane/ProxyRequestBody.hpp"

namespace korvane {

using CreateProxyRequest = ProxyRequestBody<BodyFor::create>;

}  // namespace korvane
