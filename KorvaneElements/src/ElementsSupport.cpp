#include "ElementsSupport.hpp"

#include "AnyCodable/JsonReader.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "platform/Fatal.hpp"
#include "platform/Uuid.hpp"

namespace korvane::elements::internal {

std::string newTraceId() {
    return platform::Uuid::random().string();
}

anycodable::Map callAttributes(std::string_view endpoint, std::string_view traceId, anycodable::Map extra) {
    anycodable::Map attributes{{"endpoint", endpoint}, {"KV-TRACE-ID", traceId}};
    for (auto& [key, value] : extra) attributes.set(key, std::move(value));
    return attributes;
}

void logApiRequestStart(std::string_view endpoint, std::string_view traceId, anycodable::Map extra) {
    logger().log("Starting API request", "info", std::nullopt, callAttributes(endpoint, traceId, std::move(extra)));
}

void logApiSuccess(std::string_view endpoint, std::string_view traceId, std::string_view message) {
    logger().log(message, "info", std::nullopt, callAttributes(endpoint, traceId, {{"apiSuccess", true}}));
}

void logApiFailure(std::string_view endpoint, std::string_view traceId, std::string_view error) {
    logger().log("Unsuccessful API response", "error", error,
                 callAttributes(endpoint, traceId, {{"apiSuccess", false}}));
}

JSON makeRawLeaf(const anycodable::Value& value) {
    return JSON::raw(value);
}

JSON makeOpaqueLeaf(const anycodable::Value& value) {
    auto text = std::make_shared<const std::string>(anycodable::description(value));
    return JSON::reference(std::make_shared<ElementValueReference>(
        newTraceId(), [text] { return *text; }, true, ElementValueType::string));
}

void buildResponseTree(const anycodable::Value& value, JSON& node, LeafMaker leaf) {
    auto child = [leaf](const anycodable::Value& item) {
        if (item.is<anycodable::Map>()) {
            JSON dictionary = JSON::dictionary();
            buildResponseTree(item, dictionary, leaf);
            return dictionary;
        }
        if (item.is<anycodable::Array>()) {
            JSON array = JSON::array();
            buildResponseTree(item, array, leaf);
            return array;
        }
        return leaf(item);
    };
    if (const auto* map = value.get<anycodable::Map>()) {
        for (const auto& [key, item] : *map) node.set(key, child(item));
    } else if (const auto* array = value.get<anycodable::Array>()) {
        for (const auto& item : *array) node.append(child(item));
    }
}

std::expected<anycodable::Value, anycodable::DecodingError> parseResponseObject(std::string_view body) {
    auto parsed = anycodable::readJson(body);
    if (!parsed) return std::unexpected(std::move(parsed.error()));
    if (parsed->is<anycodable::Array>()) {
        return std::unexpected(anycodable::DecodingError{anycodable::DecodingError::Kind::typeMismatch,
                                                         {},
                                                         "Expected to decode Dictionary but found an array instead."});
    }
    if (!parsed->is<anycodable::Map>()) {
        return std::unexpected(anycodable::DecodingError{
            anycodable::DecodingError::Kind::dataCorrupted, {}, "JSON text did not start with array or object"});
    }
    return std::move(*parsed);
}

}  // namespace korvane::elements::internal
