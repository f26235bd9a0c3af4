#pragma once
// ToviDesignSystem: the process-wide colours and fonts that every view reads when it builds
// its body, so a theme set before a view is built applies at once and a later one at the next
// rebuild.
//
// Thread safety: none, by design. The shared instance is created on first use (by a view or by
// ToviTheme::set, whichever comes first) and is read and written on the main thread only.

#include "ToviUI/ToviColorScheme.hpp"
#include "ToviUI/ToviFonts.hpp"

namespace tovi {

class ToviDesignSystem {
public:
    [[nodiscard]] static ToviDesignSystem& shared();

    ToviColorScheme colors{};
    ToviFonts fonts{};

private:
    ToviDesignSystem() = default;
};

}  // namespace tovi
