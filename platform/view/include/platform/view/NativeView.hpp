#pragma once
// NativeView: the imperative view objects that sit under a hosted text field: a text field,
// its right view and the image views inside it. They mirror the phone's view objects as far as
// the element and currency fields use them: a frame, a tag, a superview and subviews, an
// accessibility identifier, a tint, a content mode and tap gesture recognisers.
//
// The declarative screens (platform/view) host a text field as one node; everything inside the
// field lives in this small object tree.
//
// Ownership: a view owns its subviews (shared); `superview()` is a non-owning back pointer that
// is cleared when the superview goes away or the view is removed.
//
// Thread safety: none. Views belong to the main queue, like the phone's.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/view/Color.hpp"
#include "platform/view/Geometry.hpp"

namespace platform {

// Frames are measured like the view tree's rectangles.
using view::Rect;

// Raw values are the phone's, so code written against its numbers reads the same here.
enum class ContentMode : int {
    scaleToFill = 0,
    scaleAspectFit = 1,
    scaleAspectFill = 2,
    redraw = 3,
    center = 4,
};

class NativeView {
public:
    NativeView() = default;
    explicit NativeView(Rect frame) : frame_(frame) {}
    virtual ~NativeView();
    NativeView(const NativeView&) = delete;
    NativeView& operator=(const NativeView&) = delete;

    [[nodiscard]] Rect frame() const { return frame_; }
    void setFrame(Rect frame) { frame_ = frame; }

    [[nodiscard]] int tag() const { return tag_; }
    void setTag(int tag) { tag_ = tag; }

    // Null for a root view.
    [[nodiscard]] NativeView* superview() const { return superview_; }
    [[nodiscard]] const std::vector<std::shared_ptr<NativeView>>& subviews() const { return subviews_; }

    // Appends `view` as the front-most subview, first taking it out of its previous superview.
    // Adding a view to itself or to one of its own subviews is ignored.
    void addSubview(std::shared_ptr<NativeView> view);
    void removeFromSuperview();

    // Depth-first search that starts with this view; null when no view carries `tag`.
    [[nodiscard]] NativeView* viewWithTag(int tag);
    [[nodiscard]] NativeView* viewWithAccessibilityIdentifier(const std::string& identifier);

    [[nodiscard]] bool isDescendant(const NativeView& ancestor) const;

    [[nodiscard]] const std::optional<std::string>& accessibilityIdentifier() const { return accessibilityIdentifier_; }
    void setAccessibilityIdentifier(std::optional<std::string> identifier) {
        accessibilityIdentifier_ = std::move(identifier);
    }

    [[nodiscard]] bool isUserInteractionEnabled() const { return userInteractionEnabled_; }
    void setUserInteractionEnabled(bool enabled) { userInteractionEnabled_ = enabled; }

    [[nodiscard]] bool isHidden() const { return hidden_; }
    void setHidden(bool hidden) { hidden_ = hidden; }

    [[nodiscard]] ContentMode contentMode() const { return contentMode_; }
    void setContentMode(ContentMode mode) { contentMode_ = mode; }

    // The tint a view uses when it has none of its own is its superview's.
    [[nodiscard]] std::optional<view::Color> tintColor() const;
    void setTintColor(std::optional<view::Color> color) { tintColor_ = color; }

    // A tap gesture recogniser: `action` runs when the view is tapped.
    void addTapGestureRecognizer(std::function<void()> action);
    [[nodiscard]] std::size_t tapGestureRecognizerCount() const { return tapActions_.size(); }

    // Simulates a finger tap: runs the recognisers of this view when it takes user
    // interaction, is not hidden and no superview disables interaction. Answers whether any
    // recogniser ran.
    bool tap();

private:
    Rect frame_{};
    int tag_ = 0;
    NativeView* superview_ = nullptr;
    std::vector<std::shared_ptr<NativeView>> subviews_;
    std::optional<std::string> accessibilityIdentifier_;
    bool userInteractionEnabled_ = true;
    bool hidden_ = false;
    ContentMode contentMode_ = ContentMode::scaleToFill;
    std::optional<view::Color> tintColor_;
    std::vector<std::shared_ptr<std::function<void()>>> tapActions_;
};

// An image as the element icons use it: a name and the SVG drawing.
struct NativeImage {
    std::string name;
    std::string svg;

    friend bool operator==(const NativeImage&, const NativeImage&) = default;
};

// An image view. Unlike other views it ignores touches until told otherwise, like the phone's.
class NativeImageView : public NativeView {
public:
    NativeImageView() { setUserInteractionEnabled(false); }
    explicit NativeImageView(Rect frame) : NativeView(frame) { setUserInteractionEnabled(false); }

    [[nodiscard]] const std::optional<NativeImage>& image() const { return image_; }
    void setImage(std::optional<NativeImage> image) { image_ = std::move(image); }

private:
    std::optional<NativeImage> image_;
};

}  // namespace platform
