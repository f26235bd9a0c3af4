#pragma once
// CreateProxyRequest: the body that creates a proxy. "name" and "destination_url" are always on
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

struct CreateProxyRequest {
    std::string name{};
    std::string destinationUrl{};
    std::optional<platform::Uuid> requestReactorId{};
    std::optional<platform::Uuid> responseReactorId{};
    std::optional<ProxyTransform> requestTransform{};
    std::optional<ProxyTransform> responseTransform{};
    std::optional<Application> application{};
    std::optional<std::map<std::string, std::string>> configuration{};
    std::optional<bool> requireAuth{};

    friend bool operator==(const CreateProxyRequest&, const CreateProxyRequest&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &CreateProxyRequest::name),
                      required("destination_url", &CreateProxyRequest::destinationUrl),
                      optional("request_reactor_id", &CreateProxyRequest::requestReactorId),
                      optional("response_reactor_id", &CreateProxyRequest::responseReactorId),
                      optional("request_transform", &CreateProxyRequest::requestTransform),
                      optional("response_transform", &CreateProxyRequest::responseTransform),
                      optional("application", &CreateProxyRequest::application),
                      optional("configuration", &CreateProxyRequest::configuration),
                      optional("require_auth", &CreateProxyRequest::requireAuth));
    }
};

}  // namespace korvane
