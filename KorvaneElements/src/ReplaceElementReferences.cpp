// The swap of element references for their values, the one place where a body learns what an
// element holds.

#include <charconv>
#include <cstdint>
#include <string>

#include "ElementText.hpp"
#include "ElementsSupport.hpp"
#include "KorvaneElements/ElementReferenceValue.hpp"
#include "KorvaneElements/KorvaneElements.hpp"
#include "KorvaneElements/KvDatadogLogger.hpp"
#include "ValueKeys.hpp"
#include "platform/Fatal.hpp"

namespace korvane::elements {

namespace {

// Immutable holder of an element inside a body. It refuses to be written as JSON, so that an
// element the replacement never reached (one inside an array) can't leak its value through the
// encoder; its description names the element only.
class ElementHolder final : public anycodable::OtherValue {
public:
    explicit ElementHolder(std::shared_ptr<ElementReferenceProtocol> element) : element_(std::move(element)) {}
    [[nodiscard]] bool encode(anycodable::JsonWriter&) const override { return false; }
    [[nodiscard]] std::string description() const override { return "<element " + element_->elementId() + ">"; }
    [[nodiscard]] const std::shared_ptr<ElementReferenceProtocol>& element() const { return element_; }

private:
    std::shared_ptr<ElementReferenceProtocol> element_;
};

// A double as the phone's Double(String) reads it: an optional sign, then decimal or
// hexadecimal digits with an optional exponent, "inf"/"infinity"/"nan"; no blanks.
std::optional<double> parseDouble(std::string_view text) {
    std::string_view digits = text;
    bool negative = false;
    if (!digits.empty() && (digits.front() == '+' || digits.front() == '-')) {
        negative = digits.front() == '-';
        digits.remove_prefix(1);
    }
    if (digits.empty() || digits.front() == '+' || digits.front() == '-') return std::nullopt;
    auto format = std::chars_format::general;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        format = std::chars_format::hex;
        digits.remove_prefix(2);
    }
    double value = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, format);
    // Out of range still yields a value on the phone (infinity or zero).
    if (end != digits.data() + digits.size()) return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        value = std::strtod(std::string(text).c_str(), nullptr);
        return value;
    }
    if (error != std::errc()) return std::nullopt;
    return negative ? -value : value;
}

[[noreturn]] void missingValue(const ElementReferenceProtocol& element) {
    platform::fatalStop("Unexpectedly found nil while reading the value of element " + element.elementId());
}

// The value that replaces `element`, or absent when the key is to be removed.
std::optional<anycodable::Value> convertedValue(const ElementReferenceProtocol& element,
                                                const std::optional<std::string>& text) {
    const auto type = element.getValueType().value_or(ElementValueType::string);
    if (type == ElementValueType::string) {
        if (!text) return std::nullopt;
        return anycodable::Value(*text);
    }
    if (!text) missingValue(element);
    switch (type) {
        case ElementValueType::int_:
            if (auto number = internal::parseInt64(*text)) return anycodable::Value(*number);
            return std::nullopt;
        case ElementValueType::double_:
            if (auto number = parseDouble(*text)) return anycodable::Value(*number);
            return std::nullopt;
        case ElementValueType::bool_:
            if (*text == "true") return anycodable::Value(true);
            if (*text == "false") return anycodable::Value(false);
            return std::nullopt;
        case ElementValueType::string:
            break;
    }
    return anycodable::Value(*text);
}

anycodable::Map elementAttributes(const ElementReferenceProtocol& element, std::string_view endpoint,
                                  std::string_view traceId) {
    return anycodable::Map{{"elementId", element.elementId()}, {"endpoint", endpoint}, {"KV-TRACE-ID", traceId}};
}

}  // namespace

anycodable::Value elementValue(std::shared_ptr<ElementReferenceProtocol> element) {
    if (!element) return anycodable::Value();
    return anycodable::Value(
        std::shared_ptr<const anycodable::OtherValue>(std::make_shared<ElementHolder>(std::move(element))));
}

std::shared_ptr<ElementReferenceProtocol> elementReferenceOf(const anycodable::Value& value) {
    const auto* other = value.get<std::shared_ptr<const anycodable::OtherValue>>();
    if (!other || !*other) return nullptr;
    const auto* holder = dynamic_cast<const ElementHolder*>(other->get());
    return holder ? holder->element() : nullptr;
}

std::expected<void, TokenizingError> KorvaneElements::replaceElementReferences(anycodable::Map& body,
                                                                               std::string_view endpoint,
                                                                               std::string_view traceId) {
    std::size_t index = 0;
    while (index < body.size()) {
        auto entry = body.begin() + static_cast<std::ptrdiff_t>(index);
        anycodable::Value& value = entry->second;
        if (auto* nested = value.get<anycodable::Map>()) {
            auto replaced = replaceElementReferences(*nested, endpoint, traceId);
            if (!replaced) return replaced;
            ++index;
            continue;
        }
        auto element = elementReferenceOf(value);
        if (!element) {
            ++index;
            continue;
        }
        const auto text = element->getValue(internal::ValueKeys::make());
        const auto complete = element->isComplete();
        if (!complete) {
            platform::fatalStop("Unexpectedly found nil while reading isComplete of element " + element->elementId());
        }
        if (!*complete) {
            logger().log("Tried to tokenize while element is incomplete", "warn", std::nullopt,
                         elementAttributes(*element, endpoint, traceId));
            return std::unexpected(TokenizingError::invalidInput);
        }
        if (auto converted = convertedValue(*element, text)) {
            value = std::move(*converted);
            ++index;
        } else {
            const std::string key = entry->first;
            body.erase(key);
        }
        logger().log("Retrieving element value for API call", "info", std::nullopt,
                     elementAttributes(*element, endpoint, traceId));
    }
    return {};
}

}  // namespace korvane::elements
