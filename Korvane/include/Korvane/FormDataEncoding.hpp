#pragma once
// FormDataEncoding: parameters as a "multipart/form-data" body.
//
// Absent or empty parameters leave the request as it was. Otherwise the boundary is
// "Boundary-" + a fresh upper-case UUID, "Content-Type" becomes
// "multipart/form-data; boundary=<boundary>" (replacing any earlier value), and each value in
// map order -- each element of an array value in order -- becomes one part named by its key:
//
//   file URL       a file part: the whole file, "filename" its last path component, and
//                  the content type from `contentTypeForFormPart` or the extension table
//   string         its bytes
//   bool/number    its number text ("1"/"0" for bools, as a boxed number prints them)
//   data           its bytes
//   UUID           its upper-case string
//   anything else  the process stops: "Unprocessable value <text> with key <key>"
//
// Parts are separated by CR LF; the body ends with CR LF "--" boundary "--" CR LF. A file
// that can't be read fails the whole encoding (fileReadFailed).

#include <functional>
#include <optional>
#include <string>

#include "Korvane/ParameterEncoding.hpp"

namespace korvane {

class FormDataEncoding : public ParameterEncoding {
public:
    using ContentTypeForFormPart = std::function<std::optional<std::string>(const platform::Url& fileUrl)>;

    explicit FormDataEncoding(ContentTypeForFormPart contentTypeForFormPart = {});

    [[nodiscard]] std::expected<platform::HttpRequest, ParameterEncodingError> encode(
        platform::HttpRequest request, const std::optional<Parameters>& parameters) const override;

    // The body for a given boundary; exposed so that the byte layout can be checked.
    [[nodiscard]] std::expected<std::string, ParameterEncodingError> body(const Parameters& parameters,
                                                                          const std::string& boundary) const;

private:
    ContentTypeForFormPart contentTypeForFormPart_;
};

}  // namespace korvane
