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

std::optional<std::string> ElementValueReference::getValue() const {
    if (!valueMethod_) {
        return std::nullopt;
    }
    return valueMethod_();
}

namespace {
nlohmann::ordered_json eventJson(const ElementEvent& event) {
    nlohmann::ordered_json details = nlohmann::ordered_json::array();
    for (const auto& d : event.details) {
        details.push_back(nlohmann::ordered_json{{"type", d.type}, {"message", d.message}});
    }
    return nlohmann::ordered_json{
        {"type", event.type},   {"complete", event.complete},           {"empty", event.empty},
        {"valid", event.valid}, {"maskSatisfied", event.maskSatisfied}, {"details", std::move(details)}};
}
}  // namespace

platform::Result<std::string, ElementEvent::ConversionError> ElementEvent::encode() const {
    try {
        return eventJson(*this).dump();
    } catch (const nlohmann::json::exception&) {
        return platform::failure(ConversionError::invalidJSON);
    }
}

platform::Result<nlohmann::ordered_json, ElementEvent::ConversionError> ElementEvent::toDictionary() const {
    // Parsing the encoded text back would give this same object; encoding is what can fail.
    nlohmann::ordered_json json = eventJson(*this);
    try {
        (void)json.dump();
    } catch (const nlohmann::json::exception&) {
        return platform::failure(ConversionError::invalidJSON);
    }
    return json;
}

}  // namespace korvane::elements
