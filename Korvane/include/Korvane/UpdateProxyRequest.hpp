#pragma once
// UpdateProxyRequest: the body that replaces a proxy. "name" and "destination_url" are always on
// the wire; the rest only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/Application.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ProxyTransform.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct UpdateProxyRequest {
    std::string name{};
    std::string destinationUrl{};
    std::optional<platform::Uuid> requestReactorId{};
    std::optional<platform::Uuid> responseReactorId{};
    std::optional<ProxyTransform> requestTransform{};
    std::optional<ProxyTransform> responseTransform{};
    std::optional<Application> application{};
    std::optional<std::map<std::string, std::string>> configuration{};
    std::optional<bool> requireAuth{};

    friend bool operator==(const UpdateProxyRequest&, const UpdateProxyRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &UpdateProxyRequest::name),
                      required("destination_url", &UpdateProxyRequest::destinationUrl),
                      optional("request_reactor_id", &UpdateProxyRequest::requestReactorId),
                      optional("response_reactor_id", &UpdateProxyRequest::responseReactorId),
                      optional("request_transform", &UpdateProxyRequest::requestTransform),
                      optional("response_transform", &UpdateProxyRequest::responseTransform),
                      optional("application", &UpdateProxyRequest::application),
                      optional("configuration", &UpdateProxyRequest::configuration),
                      optional("require_auth", &UpdateProxyRequest::requireAuth));
    }
};

}  // namespace korvane
