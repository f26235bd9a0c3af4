#include "platform/Http.hpp"

#include <algorithm>

namespace platform {

namespace {
char lowerAscii(char c) {
    return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}
}  // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) { return lowerAscii(x) == lowerAscii(y); });
}

HttpHeaders::HttpHeaders(std::initializer_list<Field> fields) {
    for (const auto& [name, value] : fields) set(name, value);
}

std::optional<std::string> HttpHeaders::get(std::string_view name) const {
    for (const auto& [key, value] : fields_) {
        if (equalsIgnoringCase(key, name)) return value;
    }
    return std::nullopt;
}

std::vector<std::string> HttpHeaders::getAll(std::string_view name) const {
    std::vector<std::string> values;
    for (const auto& [key, value] : fields_) {
        if (equalsIgnoringCase(key, name)) values.push_back(value);
    }
    return values;
}

bool HttpHeaders::contains(std::string_view name) const {
    return std::any_of(fields_.begin(), fields_.end(),
                       [&](const Field& f) { return equalsIgnoringCase(f.first, name); });
}

void HttpHeaders::set(std::string name, std::string value) {
    auto first =
        std::find_if(fields_.begin(), fields_.end(), [&](const Field& f) { return equalsIgnoringCase(f.first, name); });
    if (first == fields_.end()) {
        fields_.emplace_back(std::move(name), std::move(value));
        return;
    }
    const auto index = first - fields_.begin();
    fields_.erase(
        std::remove_if(first + 1, fields_.end(), [&](const Field& f) { return equalsIgnoringCase(f.first, name); }),
        fields_.end());
    fields_[index] = Field{std::move(name), std::move(value)};
}

void HttpHeaders::add(std::string name, std::string value) {
    fields_.emplace_back(std::move(name), std::move(value));
}

std::size_t HttpHeaders::remove(std::string_view name) {
    const auto before = fields_.size();
    std::erase_if(fields_, [&](const Field& f) { return equalsIgnoringCase(f.first, name); });
    return before - fields_.size();
}

std::string_view toString(HttpErrorCode code) {
    switch (code) {
        case HttpErrorCode::invalidUrl:
            return "invalidUrl";
        case HttpErrorCode::cannotConnect:
            return "cannotConnect";
        case HttpErrorCode::timedOut:
            return "timedOut";
        case HttpErrorCode::cancelled:
            return "cancelled";
        case HttpErrorCode::connectionLost:
            return "connectionLost";
        case HttpErrorCode::tls:
            return "tls";
        case HttpErrorCode::tooManyRedirects:
            return "tooManyRedirects";
        case HttpErrorCode::redirectRefused:
            return "redirectRefused";
        case HttpErrorCode::other:
            return "other";
    }
    return "other";
}

}  // namespace platform
