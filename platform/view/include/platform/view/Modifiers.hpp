#pragma once
// Modifiers as they are stored on a node: ordered layers, environment, accessibility, events,
// animation and presentation.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/view/Node.hpp"

namespace platform::view {

// Absent fields leave the size to the content. `maxWidth == infinity` takes all it is offered.
struct Frame {
    std::optional<double> width{};
    std::optional<double> height{};
    std::optional<double> minWidth{};
    std::optional<double> maxWidth{};
    std::optional<double> minHeight{};
    std::optional<double> maxHeight{};
    Alignment alignment = Alignment::center;
    friend bool operator==(const Frame&, const Frame&) = default;
};

struct Decoration {
    Node content{};
    Alignment alignment = Alignment::center;
};

// One layer of ordered modifiers, applied from the inside out in the order of the fields:
// padding, frame, backgrounds and overlays, clip, opacity and blur.
struct Layer {
    EdgeInsets padding{};
    std::optional<Frame> frame{};
    std::vector<Decoration> backgrounds{};  // first is nearest the content
    std::vector<Decoration> overlays{};     // last is on top
    std::optional<Node> clip{};             // a shape node
    double opacity = 1;
    double blur = 0;
    std::uint8_t stage = 0;  // the latest stage set; bookkeeping of the modifier methods
};

enum class ColorScheme : std::uint8_t { light, dark };

struct Environment {
    std::optional<Font> font{};
    std::optional<Color> foreground{};
    std::optional<Color> tint{};
    std::optional<ColorScheme> colorScheme{};
    bool disabled = false;
};

struct Handlers {
    std::function<void()> tap{};
    std::function<void(bool)> toggle{};
    std::function<void(const std::string&)> textChange{};
    RefreshAction refresh{};
    std::function<void()> appear{};
    std::function<void()> disappear{};
};

struct Animation {
    enum class Curve : std::uint8_t { standard, linear, easeIn, easeOut, easeInOut, spring };
    Curve curve = Curve::standard;
    double duration = 0.35;
    [[nodiscard]] static Animation easeInOut(double duration = 0.35) { return {Curve::easeInOut, duration}; }
    [[nodiscard]] static Animation standard() { return {}; }
    friend bool operator==(const Animation&, const Animation&) = default;
};

struct AnimationTag {
    Animation animation{};
    std::string value{};  // the state whose changes animate
    friend bool operator==(const AnimationTag&, const AnimationTag&) = default;
};

// A transition a host runs on its native view whenever `trigger` differs from the previous
// tree's (for example a flip). `options` are the platform's raw option bits.
struct TransitionTag {
    std::string name{};
    double duration = 0;
    std::uint64_t options = 0;
    std::size_t trigger = 0;
    friend bool operator==(const TransitionTag&, const TransitionTag&) = default;
};

enum class TitleDisplayMode : std::uint8_t { automatic, inlined, large };

struct NavigationItem {
    std::optional<std::string> title{};
    TitleDisplayMode displayMode = TitleDisplayMode::automatic;
    std::optional<Node> leading{};
    std::optional<Node> trailing{};
};

struct Detent {
    enum class Type : std::uint8_t { medium, large, fraction, height };
    Type type = Type::large;
    double value = 0;
    [[nodiscard]] static Detent medium() { return {Type::medium, 0.5}; }
    [[nodiscard]] static Detent large() { return {Type::large, 1}; }
    [[nodiscard]] static Detent fraction(double f) { return {Type::fraction, f}; }
    [[nodiscard]] static Detent height(double points) { return {Type::height, points}; }
    friend bool operator==(const Detent&, const Detent&) = default;
};

struct SheetOptions {
    std::vector<Detent> detents{Detent::large()};
    bool dragIndicatorVisible = false;
};

struct Presentation {
    enum class Type : std::uint8_t { sheet, push };
    Type type = Type::sheet;
    bool isPresented = false;
    Node content{};
    SheetOptions options{};             // sheets only
    std::function<void()> onDismiss{};  // the platform dismissed it (swipe down, back button)
};

}  // namespace platform::view
