#include "KorvaneElements/JSON.hpp"

#include "platform/Fatal.hpp"

namespace korvane::elements {

namespace {
void requireNonNegative(std::ptrdiff_t index) {
    if (index < 0) platform::fatalStop("Negative index into a JSON array");
}
}  // namespace

JSON::JSON() : payload_(std::in_place_index<2>) {}

JSON JSON::reference(std::shared_ptr<ElementValueReference> reference) {
    return JSON(std::in_place_index<0>, std::move(reference));
}
JSON JSON::array(Array items) {
    return JSON(std::in_place_index<1>, std::move(items));
}
JSON JSON::dictionary(Dictionary entries) {
    return JSON(std::in_place_index<2>, std::move(entries));
}
JSON JSON::raw(anycodable::Value value) {
    return JSON(std::in_place_index<3>, std::move(value));
}

JSON::Case JSON::kind() const {
    switch (payload_.index()) {
        case 0:
            return Case::elementValueReference;
        case 1:
            return Case::arrayValue;
        case 2:
            return Case::dictionaryValue;
        default:
            return Case::rawValue;
    }
}

std::optional<JSON> JSON::operator[](std::string_view key) const {
    const auto* dictionary = std::get_if<Dictionary>(&payload_);
    if (!dictionary) return std::nullopt;
    auto it = dictionary->find(key);
    if (it == dictionary->end()) return std::nullopt;
    return it->second;
}

std::optional<JSON> JSON::operator[](std::ptrdiff_t index) const {
    requireNonNegative(index);
    const auto* array = std::get_if<Array>(&payload_);
    if (!array || static_cast<std::size_t>(index) >= array->size()) return std::nullopt;
    return (*array)[static_cast<std::size_t>(index)];
}

void JSON::set(std::string key, std::optional<JSON> value) {
    auto* dictionary = std::get_if<Dictionary>(&payload_);
    if (!dictionary) return;
    if (!value) {
        auto it = dictionary->find(key);
        if (it != dictionary->end()) dictionary->erase(it);
        return;
    }
    dictionary->insert_or_assign(std::move(key), std::move(*value));
}

void JSON::set(std::ptrdiff_t index, std::optional<JSON> value) {
    requireNonNegative(index);
    auto* array = std::get_if<Array>(&payload_);
    if (!array) return;
    const auto position = static_cast<std::size_t>(index);
    if (position >= array->size()) array->resize(position + 1);
    (*array)[position] = std::move(value);
}

void JSON::append(std::optional<JSON> value) {
    if (auto* array = std::get_if<Array>(&payload_)) array->push_back(std::move(value));
}

std::shared_ptr<ElementValueReference> JSON::elementValueReference() const {
    const auto* reference = std::get_if<std::shared_ptr<ElementValueReference>>(&payload_);
    return reference ? *reference : nullptr;
}

std::optional<anycodable::Value> JSON::rawValue() const {
    const auto* value = std::get_if<anycodable::Value>(&payload_);
    if (!value) return std::nullopt;
    return *value;
}

const JSON::Array* JSON::arrayValue() const {
    return std::get_if<Array>(&payload_);
}
const JSON::Dictionary* JSON::dictionaryValue() const {
    return std::get_if<Dictionary>(&payload_);
}

}  // namespace korvane::elements
