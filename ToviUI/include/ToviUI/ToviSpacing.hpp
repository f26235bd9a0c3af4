#pragma once
// ToviSpacing: the one scale views pad and space with. Use these names, not free numbers, for
// every edge set (0 only for all edges).

namespace tovi::spacing {

inline constexpr double none = 0;
inline constexpr double xs = 4;
inline constexpr double s = 8;
inline constexpr double m = 16;
inline constexpr double ml = 20;
inline constexpr double l = 24;
inline constexpr double xl = 48;

}  // namespace tovi::spacing
