#pragma once
// The seam between the asynchronous image builder and a screen host that is building on the
// same thread: the host decides the phase of each image and loads what it is asked for.

#include <string>

#include "platform/view/Kinds.hpp"

namespace platform::view::internal {

class ImagePhases {
public:
    virtual ~ImagePhases() = default;
    // The phase to show for `url` now; asking also asks the host to load it.
    virtual LoadPhase phaseFor(const std::string& url) = 0;
};

// The host building on this thread, or null.
[[nodiscard]] ImagePhases* currentImagePhases();

}  // namespace platform::view::internal
