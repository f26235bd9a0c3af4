#include "ToviUI/ToviApiError.hpp"

namespace tovi {

std::string ToviApiError::localizedDescription() const {
    return "The operation couldn\u2019t be completed. (ToviApiError: " +
           (detail.empty() ? humanReadableMessage : detail) + ")";
}

std::string ToviApiError::rendering() const {
    return "ToviApiError(humanReadableMessage: \"" + humanReadableMessage + "\", detail: \"" + detail + "\")";
}

}  // namespace tovi
