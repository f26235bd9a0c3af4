#include "KorvaneElements/ElementResources.hpp"

#include "EmbeddedResources.hpp"
#include "platform/Fatal.hpp"

namespace korvane::elements {

namespace internal {

const ResourceBundle& locateBundle(const std::vector<BundleCandidate>& candidates) {
    for (const auto& candidate : candidates) {
        if (const ResourceBundle* bundle = candidate ? candidate() : nullptr) {
            return *bundle;
        }
    }
    platform::fatalStop(std::string("unable to find bundle named ") + kElementResourceBundleName);
}

namespace {

// The bundle compiled into the library; null if the build embedded nothing.
const ResourceBundle* embeddedBundle() {
    static const ResourceBundle bundle = [] {
        ResourceBundle b{kElementResourceBundleName, {}};
        for (const auto& resource : embeddedResources()) {
            b.files.emplace(std::string(resource.name), std::string(resource.content));
        }
        return b;
    }();
    return bundle.files.empty() ? nullptr : &bundle;
}

const ResourceBundle& elementBundle() {
    static const ResourceBundle& bundle = locateBundle({embeddedBundle});
    return bundle;
}

}  // namespace
}  // namespace internal

std::optional<platform::NativeImage> elementImage(std::string_view name) {
    const auto& files = internal::elementBundle().files;
    auto it = files.find(name);
    if (it == files.end()) {
        return std::nullopt;
    }
    return platform::NativeImage{std::string(name), it->second};
}

}  // namespace korvane::elements
