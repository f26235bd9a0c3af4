#pragma once
// AlertView: the alert bubble of the balance screen. A row of height 82: a 48x48 badge with the
// sparkle (bonus) or alert icon, then the primary text in the headline font and, if present,
// the secondary text in the caption font. Behind it an arrow shape pointing up or down, filled
// white and stroked by type; the row is padded by 8 on the arrow's side.

#include "ToviUI/AlertViewUiModel.hpp"
#include "platform/view/Node.hpp"

namespace tovi {

struct AlertView {
    AlertViewUiModel uiModel;

    // The corner radius given to the arrow shape.
    static constexpr double cornerRadius = 12;
    static constexpr double arrowHeight = 6;

    [[nodiscard]] platform::view::Node body() const;
    operator platform::view::Node() const { return body(); }  // NOLINT(google-explicit-constructor)
};

}  // namespace tovi
