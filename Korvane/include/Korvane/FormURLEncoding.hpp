#pragma once
// FormURLEncoding: parameters as an "application/x-www-form-urlencoded" body.
//
// The items are built as URLEncoding builds them; the body is the query they make in its
// decoded form, as the phone's runtime sends it: "name=value" pairs joined by "&" with the
// text itself, not percent-escaped. No items gives no body (an earlier body is cleared). The
// "Content-Type" is set only when the request has none. It never fails.

#include "Korvane/ParameterEncoding.hpp"

namespace korvane {

class FormURLEncoding : public ParameterEncoding {
public:
    [[nodiscard]] std::expected<platform::HttpRequest, ParameterEncodingError> encode(
        platform::HttpRequest request, const std::optional<Parameters>& parameters) const override;
};

}  // namespace korvane
