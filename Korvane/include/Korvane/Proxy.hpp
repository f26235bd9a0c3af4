#pragma once
// Proxy: a configured pass-through endpoint: requests to it are detokenised (and optionally
// transformed by reactors or code) on their way to `destinationUrl`, and answers on their way
// back.
//
// Plain value: equality-comparable, hashable (std::hash), and encoded/decoded by the generic
// model coder through `jsonFields()`. Unknown keys are ignored when decoding.

#include <map>
#include <optional>
#include <string>

#include "Korvane/JSONCodec.hpp"
#include "Korvane/ModelFields.hpp"
#include "Korvane/ProxyTransform.hpp"
#include "platform/Uuid.hpp"

namespace korvane {

struct Proxy {
    std::optional<platform::Uuid> id{};
    std::optional<std::string> key{};
    std::optional<platform::Uuid> tenantId{};
    std::optional<std::string> name{};
    std::optional<std::string> destinationUrl{};
    std::optional<platform::Uuid> requestReactorId{};
    std::optional<platform::Uuid> responseReactorId{};
    std::optional<bool> requireAuth{};
    std::optional<ProxyTransform> requestTransform{};
    std::optional<ProxyTransform> responseTransform{};
    std::optional<platform::Uuid> applicationId{};
    std::optional<std::map<std::string, std::string>> configuration{};
    std::optional<std::string> proxyHost{};
    std::optional<platform::Uuid> createdBy{};
    std::optional<Date> createdAt{};
    std::optional<platform::Uuid> modifiedBy{};
    std::optional<Date> modifiedAt{};

    friend bool operator==(const Proxy&, const Proxy&) = default;

    static constexpr auto jsonFields() {
        return fields(optional("id", &Proxy::id), optional("key", &Proxy::key), optional("tenant_id", &Proxy::tenantId),
                      optional("name", &Proxy::name), optional("destination_url", &Proxy::destinationUrl),
                      optional("request_reactor_id", &Proxy::requestReactorId),
                      optional("response_reactor_id", &Proxy::responseReactorId),
                      optional("require_auth", &Proxy::requireAuth),
                      optional("request_transform", &Proxy::requestTransform),
                      optional("response_transform", &Proxy::responseTransform),
                      optional("application_id", &Proxy::applicationId),
                      optional("configuration", &Proxy::configuration), optional("proxy_host", &Proxy::proxyHost),
                      optional("created_by", &Proxy::createdBy), optional("created_at", &Proxy::createdAt),
                      optional("modified_by", &Proxy::modifiedBy), optional("modified_at", &Proxy::modifiedAt));
    }
};

}  // namespace korvane
