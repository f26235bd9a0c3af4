#pragma once
// AlertViewUiModel: what an alert bubble says, how it is coloured and where its arrow points.

#include <cstdint>
#include <optional>
#include <string>

namespace tovi {

enum class AlertViewType : std::uint8_t { bonus, alert };
enum class AlertShape : std::uint8_t { upArrow, downArrow };

struct AlertViewUiModel {
    std::string primaryText;
    std::optional<std::string> secondaryText = std::nullopt;
    AlertViewType alertViewType = AlertViewType::bonus;
    AlertShape alertShape = AlertShape::upArrow;
    friend bool operator==(const AlertViewUiModel&, const AlertViewUiModel&) = default;
};

}  // namespace tovi
