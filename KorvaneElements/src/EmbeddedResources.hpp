#pragma once
// The files of KorvaneElements/resources, compiled in at build time (see CMakeLists.txt).

#include <string_view>
#include <vector>

namespace korvane::elements::internal {

struct EmbeddedResource {
    std::string_view name;  // file name without extension
    std::string_view content;
};

[[nodiscard]] const std::vector<EmbeddedResource>& embeddedResources();

}  // namespace korvane::elements::internal
