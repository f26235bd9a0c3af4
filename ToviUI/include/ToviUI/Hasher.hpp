#pragma once
// Field-by-field hashing for the display models, so that a model's hash follows its declared
// field order (and optionals feed a presence discriminator before the value).

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <type_traits>

namespace tovi {

class Hasher {
public:
    template <class T>
    Hasher& combine(const T& value) {
        if constexpr (std::is_enum_v<T>) {
            mix(static_cast<std::uint64_t>(value));
        } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
            mix(std::hash<std::string_view>{}(std::string_view(value)));
        } else {
            mix(std::hash<T>{}(value));
        }
        return *this;
    }

    // 0 for absent; 1 and then the value for present.
    template <class T>
    Hasher& combine(const std::optional<T>& value) {
        mix(value.has_value() ? 1 : 0);
        if (value) combine(*value);
        return *this;
    }

    [[nodiscard]] std::size_t finish() const { return static_cast<std::size_t>(state_); }

private:
    void mix(std::uint64_t word) {
        // 64-bit variant of the boost combine step; order-sensitive by construction.
        state_ ^= word + 0x9e3779b97f4a7c15ULL + (state_ << 12) + (state_ >> 4);
    }

    std::uint64_t state_ = 0;
};

}  // namespace tovi
