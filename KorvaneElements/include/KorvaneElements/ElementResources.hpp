#pragma once
// The element library's resource bundle: the "copy" and "check" icons of the copy button.
//
// The bundle is looked up once, on first use, and kept. If no candidate location holds it the
// process stops with "unable to find bundle named KorvaneElements_KorvaneElements".
//
// Thread safety: any thread; the lookup is done once.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/view/NativeView.hpp"

namespace korvane::elements {

inline constexpr const char* kElementResourceBundleName = "KorvaneElements_KorvaneElements";

// The named image of the bundle, or absent when the bundle has no such image.
[[nodiscard]] std::optional<platform::NativeImage> elementImage(std::string_view name);

namespace internal {

struct ResourceBundle {
    std::string name;
    std::map<std::string, std::string, std::less<>> files;  // by name without extension
};

// A place that may hold the bundle; null when it does not.
using BundleCandidate = std::function<const ResourceBundle*()>;

// The first bundle that a candidate yields, in order; stops the process when none does.
[[nodiscard]] const ResourceBundle& locateBundle(const std::vector<BundleCandidate>& candidates);

}  // namespace internal

}  // namespace korvane::elements
