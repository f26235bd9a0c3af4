#include "platform/Uuid.hpp"

#include <uuid/uuid.h>

#include <cctype>
#include <string_view>

namespace platform {

Uuid Uuid::random() {
    Bytes bytes{};
    uuid_generate_random(bytes.data());
    return Uuid(bytes);
}

std::optional<Uuid> Uuid::parse(std::string_view text) {
    // libuuid's parser wants a NUL-terminated 36-character string; check the shape here so that
    // its leniencies (if any) never decide what we accept.
    if (text.size() != 36) return std::nullopt;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash ? text[i] != '-' : !std::isxdigit(static_cast<unsigned char>(text[i]))) return std::nullopt;
    }
    char buffer[37];
    text.copy(buffer, 36);
    buffer[36] = '\0';
    Bytes bytes{};
    if (uuid_parse(buffer, bytes.data()) != 0) return std::nullopt;
    return Uuid(bytes);
}

std::string Uuid::string() const {
    char buffer[37];
    uuid_unparse_upper(bytes_.data(), buffer);
    return std::string(buffer, 36);
}

}  // namespace platform

std::size_t std::hash<platform::Uuid>::operator()(const platform::Uuid& uuid) const noexcept {
    const auto& b = uuid.bytes();
    return std::hash<std::string_view>{}(std::string_view(reinterpret_cast<const char*>(b.data()), b.size()));
}
