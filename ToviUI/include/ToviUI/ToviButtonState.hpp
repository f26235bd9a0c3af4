#pragma once
// ToviButtonState: the state a screen keeps for its call-to-action button.

#include <cstdint>

namespace tovi {

enum class ToviButtonState : std::uint8_t { disabled, loading, enabled };

[[nodiscard]] constexpr bool isEnabled(ToviButtonState s) {
    return s == ToviButtonState::enabled;
}
[[nodiscard]] constexpr bool isLoading(ToviButtonState s) {
    return s == ToviButtonState::loading;
}

}  // namespace tovi
