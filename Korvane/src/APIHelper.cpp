#include "Korvane/APIHelper.hpp"

namespace korvane {
namespace {

// Texts of the present elements of an array.
std::vector<std::string> presentTexts(const anycodable::Array& array) {
    std::vector<std::string> texts;
    texts.reserve(array.size());
    for (const auto& element : array) {
        if (!element.isEmpty()) texts.push_back(APIHelper::text(element));
    }
    return texts;
}

std::string joined(const std::vector<std::string>& texts) {
    std::string out;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i) out += ',';
        out += texts[i];
    }
    return out;
}

void appendItems(std::vector<platform::UrlQueryItem>& items, const std::string& key, const anycodable::Value& value,
                 bool isExplode) {
    if (value.isEmpty()) return;
    if (const auto* array = value.get<anycodable::Array>()) {
        auto texts = presentTexts(*array);
        if (isExplode) {
            for (auto& text : texts) items.push_back({key, std::move(text)});
        } else {
            items.push_back({key, joined(texts)});
        }
        return;
    }
    items.push_back({key, APIHelper::text(value)});
}

}  // namespace

std::string APIHelper::text(const anycodable::Value& value) {
    return anycodable::description(value);
}

std::optional<Parameters> APIHelper::rejectNil(const Parameters& source) {
    Parameters result;
    for (const auto& [key, value] : source) {
        if (!value.isEmpty()) result.appendUnchecked(key, value);
    }
    if (result.empty()) return std::nullopt;
    return result;
}

std::map<std::string, std::string> APIHelper::rejectNilHeaders(const Parameters& source) {
    std::map<std::string, std::string> headers;
    for (const auto& [key, value] : source) {
        if (value.isEmpty()) continue;
        if (const auto* array = value.get<anycodable::Array>()) {
            headers[key] = joined(presentTexts(*array));
        } else {
            headers[key] = text(value);
        }
    }
    return headers;
}

std::optional<Parameters> APIHelper::convertBoolToString(const std::optional<Parameters>& source) {
    if (!source) return std::nullopt;
    Parameters result;
    for (const auto& [key, value] : *source) {
        if (const bool* flag = value.get<bool>()) {
            result.appendUnchecked(key, *flag ? "true" : "false");
        } else {
            result.appendUnchecked(key, value);
        }
    }
    return result;
}

anycodable::Value APIHelper::mapValueToPathItem(const anycodable::Value& source) {
    if (const auto* array = source.get<anycodable::Array>()) return joined(presentTexts(*array));
    return source;
}

std::optional<std::vector<platform::UrlQueryItem>> APIHelper::mapValuesToQueryItems(const QueryParameters& source) {
    std::vector<platform::UrlQueryItem> items;
    for (const auto& [key, parameter] : source) appendItems(items, key, parameter.wrappedValue, parameter.isExplode);
    if (items.empty()) return std::nullopt;
    return items;
}

std::optional<std::vector<platform::UrlQueryItem>> APIHelper::mapValuesToQueryItems(const Parameters& source) {
    std::vector<platform::UrlQueryItem> items;
    for (const auto& [key, value] : source) appendItems(items, key, value, true);
    if (items.empty()) return std::nullopt;
    return items;
}

}  // namespace korvane
