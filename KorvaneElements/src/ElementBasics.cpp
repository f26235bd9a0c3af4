#include "AnyCodable/JsonWriter.hpp"
#include "KorvaneElements/ElementConfigError.hpp"
#include "KorvaneElements/ElementEvent.hpp"
#include "KorvaneElements/ElementValueReference.hpp"
#include "KorvaneElements/ElementValueType.hpp"

namespace korvane::elements {

std::string_view rawValue(ElementValueType type) {
    switch (type) {
        case ElementValueType::int_:
            return "int";
        case ElementValueType::double_:
            return "double";
        case ElementValueType::bool_:
            return "bool";
        case ElementValueType::string:
            return "string";
    }
    return "string";
}

std::optional<ElementValueType> elementValueType(std::string_view raw) {
    for (auto type :
         {ElementValueType::int_, ElementValueType::double_, ElementValueType::bool_, ElementValueType::string}) {
        if (rawValue(type) == raw) {
            return type;
        }
    }
    return std::nullopt;
}

std::string_view toString(ElementConfigError error) {
    switch (error) {
        case ElementConfigError::invalidMask:
            return "invalidMask";
        case ElementConfigError::configNotAllowed:
            return "configNotAllowed";
        case ElementConfigError::cardBrandAlreadyExists:
            return "cardBrandAlreadyExists";
    }
    return "unknown";
}

ElementConfigException::ElementConfigException(ElementConfigError error)
    : std::runtime_error(std::string("ElementConfigError.") + std::string(toString(error))), error_(error) {}

std::optional<std::string> ElementValueReference::getValue(ValueKey /*key*/) const {
    if (!valueMethod_) {
        return std::nullopt;
    }
    return valueMethod_();
}

namespace {
anycodable::Map eventMap(const ElementEvent& event) {
    anycodable::Array details;
    for (const auto& d : event.details) {
        details.emplace_back(anycodable::Map{{"type", d.type}, {"message", d.message}});
    }
    return anycodable::Map{
        {"type", event.type},   {"complete", event.complete},           {"empty", event.empty},
        {"valid", event.valid}, {"maskSatisfied", event.maskSatisfied}, {"details", std::move(details)}};
}
}  // namespace

platform::Result<std::string, ElementEvent::ConversionError> ElementEvent::encode() const {
    auto text = anycodable::toJson(eventMap(*this));
    if (!text) return platform::failure(ConversionError::invalidJSON);
    return std::move(*text);
}

platform::Result<anycodable::Map, ElementEvent::ConversionError> ElementEvent::toDictionary() const {
    // Parsing the encoded text back would give this same object; encoding is what can fail.
    anycodable::Map map = eventMap(*this);
    if (!anycodable::toJson(map)) return platform::failure(ConversionError::invalidJSON);
    return map;
}

}  // namespace korvane::elements
