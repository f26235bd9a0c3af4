#pragma once
// The kinds of node and the properties that only one kind has.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "platform/view/Node.hpp"
#include "platform/view/Path.hpp"

namespace platform {
class TextField;  // the platform text field model, hosted by text field nodes
}

namespace platform::view {

enum class Kind : std::uint8_t {
    empty,
    group,  // children drawn as one, without layout of its own (layered)
    vstack,
    hstack,
    zstack,
    text,
    image,
    asyncImage,
    button,
    toggle,
    textField,
    scrollView,
    spacer,
    divider,
    progress,
    navigationStack,  // children[0] is the root; pushes come from navigationDestination
    shape,
};

[[nodiscard]] const char* kindName(Kind kind);

struct StackProps {
    Alignment alignment = Alignment::center;
    std::optional<double> spacing{};  // absent: the platform's default
};

// A run of attributed text; absent fields take the node's environment.
struct TextRun {
    std::string text{};
    std::optional<Color> color{};
    std::optional<Font> font{};
    friend bool operator==(const TextRun&, const TextRun&) = default;
};

struct TextProps {
    std::vector<TextRun> runs{};
    std::optional<int> lineLimit{};
    HorizontalPart multilineAlignment = HorizontalPart::leading;
    // The runs joined.
    [[nodiscard]] std::string plain() const;
};

enum class RenderingMode : std::uint8_t { original, templated };
enum class ContentMode : std::uint8_t { fit, fill };

struct ImageSource {
    enum class Type : std::uint8_t { asset, system, url };
    Type type = Type::asset;
    std::string name{};    // asset name, system symbol name, or URL
    std::string bundle{};  // for assets: the bundle that holds them
    friend bool operator==(const ImageSource&, const ImageSource&) = default;
};

struct ImageProps {
    ImageSource source{};
    RenderingMode renderingMode = RenderingMode::original;
    bool resizable = false;
    // Absent on a resizable image: stretched to the frame.
    std::optional<ContentMode> contentMode{};
};

enum class LoadPhase : std::uint8_t { loading, loaded, failed };

// Shows `content` once loaded, `placeholder` while loading and after a failure.
struct AsyncImageProps {
    std::string url{};
    double scale = 1;
    LoadPhase phase = LoadPhase::loading;
    Node content{};
    Node placeholder{};
};

// children[0] is what is drawn: the label through the style in the current pressed state.
struct ButtonProps {
    Node label{};
    std::shared_ptr<const ButtonStyle> style{};
    bool pressed = false;
};

// children[0] is the label.
struct ToggleProps {
    bool isOn = false;
};

// Hosts the platform text field model. `text` is what the field shows at the time the tree was
// built (the model owns the real value).
struct TextFieldProps {
    std::shared_ptr<platform::TextField> field{};
    std::string placeholder{};
    std::string text{};
};

enum class Axis : std::uint8_t { vertical, horizontal, both };

// children[0] is the content.
struct ScrollProps {
    Axis axes = Axis::vertical;
    bool showsIndicators = true;
};

struct SpacerProps {
    std::optional<double> minLength{};
};

enum class ControlSize : std::uint8_t { mini, small, regular, large };

struct ProgressProps {
    std::optional<double> value{};  // absent: indeterminate (a spinner)
    ControlSize controlSize = ControlSize::regular;
};

enum class ShapeKind : std::uint8_t { rectangle, roundedRectangle, circle, capsule, ellipse, path };
enum class CornerStyle : std::uint8_t { circular, continuous };
using PathFunction = std::function<Path(Rect)>;

struct ShapeProps {
    ShapeKind shape = ShapeKind::rectangle;
    double cornerRadius = 0;
    CornerStyle cornerStyle = CornerStyle::circular;
    std::shared_ptr<const PathFunction> path{};  // for ShapeKind::path
    // Neither set: filled with the foreground colour.
    std::optional<Paint> fill{};
    std::optional<Stroke> stroke{};

    // The outline in `rect`; only for custom paths (an empty path otherwise).
    [[nodiscard]] Path pathIn(Rect rect) const;
};

using Payload = std::variant<std::monostate, StackProps, TextProps, ImageProps, AsyncImageProps, ButtonProps,
                             ToggleProps, TextFieldProps, ScrollProps, SpacerProps, ProgressProps, ShapeProps>;

}  // namespace platform::view
