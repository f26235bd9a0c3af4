#pragma once
// UUID values. The canonical text form is upper case, as the phone's `uuidString` writes it;
// parsing accepts either case.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

class Uuid {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    // The nil UUID (all zero).
    constexpr Uuid() = default;
    explicit constexpr Uuid(const Bytes& bytes) : bytes_(bytes) {}

    // A fresh random (version 4) UUID. Thread-safe.
    [[nodiscard]] static Uuid random();

    // Accepts exactly the 8-4-4-4-12 hexadecimal form, any case; anything else is absent.
    [[nodiscard]] static std::optional<Uuid> parse(std::string_view text);

    // "E621E1F8-C36C-495A-93FC-0C247A3E6E5F"
    [[nodiscard]] std::string string() const;

    [[nodiscard]] const Bytes& bytes() const { return bytes_; }

    friend bool operator==(const Uuid&, const Uuid&) = default;
    friend auto operator<=>(const Uuid&, const Uuid&) = default;

private:
    Bytes bytes_{};
};

}  // namespace platform

template <>
struct std::hash<platform::Uuid> {
    std::size_t operator()(const platform::Uuid& uuid) const noexcept;
};
