#include "Korvane/JSONEncodingHelper.hpp"

#include <type_traits>

namespace korvane {
namespace {

// The phone's JSON serialisation accepts only JSON kinds; anything else is an invalid object.
bool onlyJsonKinds(const anycodable::Value& value) {
    return std::visit(
        [](const auto& v) -> bool {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, anycodable::Array>) {
                for (const auto& element : v) {
                    if (!onlyJsonKinds(element)) return false;
                }
                return true;
            } else if constexpr (std::is_same_v<T, anycodable::Map>) {
                for (const auto& entry : v) {
                    if (!onlyJsonKinds(entry.second)) return false;
                }
                return true;
            } else {
                return !(std::is_same_v<T, anycodable::Date> || std::is_same_v<T, platform::Url> ||
                         std::is_same_v<T, platform::Uuid> || std::is_same_v<T, anycodable::Data> ||
                         std::is_same_v<T, std::shared_ptr<const anycodable::OtherValue>>);
            }
        },
        value.storage());
}

}  // namespace

std::optional<Parameters> JSONEncodingHelper::encodingParametersForObject(const anycodable::Value& object) {
    if (object.isEmpty()) return std::nullopt;
    bool container = object.is<anycodable::Array>() || object.is<anycodable::Map>();
    if (!container || !onlyJsonKinds(object)) {
        platform::consoleLine("Invalid type in JSON write (" + std::string(anycodable::kindName(object)) + ")");
        return std::nullopt;
    }
    auto data = anycodable::toJson(object, {.prettyPrinted = true, .formatDate = {}});
    if (!data) {
        platform::consoleLine(data.error().description());
        return std::nullopt;
    }
    return JSONDataEncoding::encodingParameters(*data);
}

}  // namespace korvane
