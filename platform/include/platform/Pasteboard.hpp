#pragma once
// Pasteboard: the system-wide pasteboard that copy and paste go through. The general one holds
// one string, like the phone's as the fields use it.
//
// Thread safety: every operation may be called from any thread.

#include <optional>
#include <string>

namespace platform {

class Pasteboard {
public:
    [[nodiscard]] static Pasteboard& general();

    [[nodiscard]] std::optional<std::string> string() const;
    void setString(std::optional<std::string> value);

private:
    Pasteboard() = default;
};

}  // namespace platform
