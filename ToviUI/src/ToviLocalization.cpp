#include "ToviUI/ToviLocalization.hpp"

#include <utility>

namespace tovi {

namespace {

ToviLocalization::Table& table() {
    static ToviLocalization::Table translations;
    return translations;
}

}  // namespace

void ToviLocalization::set(Table translations) {
    table() = std::move(translations);
}

std::string localized(std::string_view key) {
    const auto& translations = table();
    if (translations.empty()) return std::string(key);
    auto it = translations.find(std::string(key));
    return it == translations.end() ? std::string(key) : it->second;
}

std::string localized(std::string_view key, std::string_view value) {
    std::string text = localized(key);
    if (auto at = text.find("%@"); at != std::string::npos) text.replace(at, 2, value);
    return text;
}

}  // namespace tovi
