#pragma once
// ProxyRequestBody<For>: the body that creates a proxy (CreateProxyRequest) or replaces one
// (UpdateProxyRequest); both carry the same fields (see BodyFor.hpp). "name" and
// "destination_url" are always on the wire; the rest only when present.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/Application.hpp"
#include "Korvane/BodyFor.hpp"
#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ProxyTransform.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

template <BodyFor For>
struct ProxyRequestBody {
    std::string name{};
    std::string destinationUrl{};
    std::optional<platform::Uuid> requestReactorId{};
    std::optional<platform::Uuid> responseReactorId{};
    std::optional<ProxyTransform> requestTransform{};
    std::optional<ProxyTransform> responseTransform{};
    std::optional<Application> application{};
    std::optional<std::map<std::string, std::string>> configuration{};
    std::optional<bool> requireAuth{};

    friend bool operator==(const ProxyRequestBody&, const ProxyRequestBody&) = default;

    static constexpr auto jsonFields() {
        return fields(required("name", &ProxyRequestBody::name),
                      required("destination_url", &ProxyRequestBody::destinationUrl),
                      optional("request_reactor_id", &ProxyRequestBody::requestReactorId),
                      optional("response_reactor_id", &ProxyRequestBody::responseReactorId),
                      optional("request_transform", &ProxyRequestBody::requestTransform),
                      optional("response_transform", &ProxyRequestBody::responseTransform),
                      optional("application", &ProxyRequestBody::application),
                      optional("configuration", &ProxyRequestBody::configuration),
                      optional("require_auth", &ProxyRequestBody::requireAuth));
    }
};

}  // namespace korvane
