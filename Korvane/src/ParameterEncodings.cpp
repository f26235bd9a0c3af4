// The three simple encodings: JSON data, URL query and form-url body.

#include "Korvane/APIHelper.hpp"
#include "Korvane/FormURLEncoding.hpp"
#include "Korvane/JSONDataEncoding.hpp"
#include "Korvane/URLEncoding.hpp"

namespace korvane {

std::expected<platform::HttpRequest, ParameterEncodingError> JSONDataEncoding::encode(
    platform::HttpRequest request, const std::optional<Parameters>& parameters) const {
    if (!parameters) return request;
    const anycodable::Value* value = parameters->find(kJsonDataKey);
    const auto* data = value ? value->get<anycodable::Data>() : nullptr;
    if (!data || data->bytes.empty()) return request;
    if (!request.headers.contains("Content-Type")) request.headers.set("Content-Type", "application/json");
    request.body = data->bytes;
    return request;
}

std::optional<Parameters> JSONDataEncoding::encodingParameters(const std::optional<std::string>& jsonData) {
    if (!jsonData || jsonData->empty()) return std::nullopt;
    Parameters parameters;
    parameters.appendUnchecked(std::string(kJsonDataKey), anycodable::Data{*jsonData});
    return parameters;
}

std::expected<platform::HttpRequest, ParameterEncodingError> URLEncoding::encode(
    platform::HttpRequest request, const std::optional<Parameters>& parameters) const {
    if (!parameters) return request;
    if (request.url.empty()) {
        return std::unexpected(
            ParameterEncodingError{ParameterEncodingError::Code::requestMissingURL, "The request has no URL."});
    }
    auto url = platform::Url::parse(request.url);
    if (!url || parameters->empty()) return request;
    url->setQueryItems(APIHelper::mapValuesToQueryItems(*parameters));
    request.url = url->string();
    return request;
}

std::expected<platform::HttpRequest, ParameterEncodingError> FormURLEncoding::encode(
    platform::HttpRequest request, const std::optional<Parameters>& parameters) const {
    platform::Url components;
    components.setQueryItems(APIHelper::mapValuesToQueryItems(parameters.value_or(Parameters{})));
    if (!request.headers.contains("Content-Type")) {
        request.headers.set("Content-Type", "application/x-www-form-urlencoded");
    }
    request.body = components.query().value_or("");
    return request;
}

}  // namespace korvane
