#pragma once
// Why an element refused a configuration. `cardBrandAlreadyExists` is declared for
// completeness; nothing in the library raises it.

#include <stdexcept>
#include <string_view>

namespace korvane::elements {

enum class ElementConfigError { invalidMask, configNotAllowed, cardBrandAlreadyExists };

[[nodiscard]] std::string_view toString(ElementConfigError error);

// Thrown by `setConfig(options:)`, the one element operation that throws.
class ElementConfigException : public std::runtime_error {
public:
    explicit ElementConfigException(ElementConfigError error);
    [[nodiscard]] ElementConfigError error() const { return error_; }

private:
    ElementConfigError error_;
};

}  // namespace korvane::elements
