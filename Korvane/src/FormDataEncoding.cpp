#include "Korvane/FormDataEncoding.hpp"

#include <charconv>
#include <fstream>
#include <iterator>
#include <type_traits>

#include "Korvane/APIHelper.hpp"
#include "Korvane/FatalError.hpp"
#include "Korvane/MimeType.hpp"

namespace korvane {
namespace {

constexpr std::string_view kCrLf = "\r\n";

template <class T>
std::string numberText(T value) {
    char buffer[64];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, ec == std::errc{} ? end : buffer);
}

// The bytes of a data part, or absent for a value a form can't carry. Bools and numbers print
// as a boxed number does: bools "1"/"0", numbers in their shortest form.
std::optional<std::string> dataPartBytes(const anycodable::Value& value) {
    return std::visit(
        [](const auto& v) -> std::optional<std::string> {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, std::string>) {
                return v;
            } else if constexpr (std::is_same_v<T, bool>) {
                return v ? "1" : "0";
            } else if constexpr (std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t> ||
                                 std::is_same_v<T, float> || std::is_same_v<T, double>) {
                return numberText(v);
            } else if constexpr (anycodable::SizedInteger<T>) {
                return numberText(+std::to_underlying(v));
            } else if constexpr (std::is_same_v<T, anycodable::Data>) {
                return v.bytes;
            } else if constexpr (std::is_same_v<T, platform::Uuid>) {
                return v.string();
            } else {
                return std::nullopt;
            }
        },
        value.storage());
}

void appendDataPart(std::string& body, const std::string& boundary, const std::string& key, const std::string& bytes) {
    if (!body.empty()) body += kCrLf;
    body.append("--").append(boundary).append(kCrLf);
    body.append("Content-Disposition: form-data; name=\"").append(key).append("\"").append(kCrLf);
    body += kCrLf;
    body += bytes;
}

}  // namespace

FormDataEncoding::FormDataEncoding(ContentTypeForFormPart contentTypeForFormPart)
    : contentTypeForFormPart_(std::move(contentTypeForFormPart)) {}

std::expected<std::string, ParameterEncodingError> FormDataEncoding::body(const Parameters& parameters,
                                                                          const std::string& boundary) const {
    std::string body;
    for (const auto& [key, value] : parameters) {
        const anycodable::Array single{value};
        const auto* array = value.get<anycodable::Array>();
        for (const auto& element : array ? *array : single) {
            if (const auto* url = element.get<platform::Url>()) {
                std::string bytes;
                bool read = false;
                if (url->isFileUrl()) {
                    std::ifstream file(url->path(), std::ios::binary);
                    if (file) {
                        bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
                        read = !file.bad();
                    }
                }
                if (!read) {
                    return std::unexpected(ParameterEncodingError{ParameterEncodingError::Code::fileReadFailed,
                                                                  "The file " + url->string() + " couldn't be read."});
                }
                std::optional<std::string> contentType;
                if (contentTypeForFormPart_) contentType = contentTypeForFormPart_(*url);
                if (!contentType) contentType = mimeTypeForFile(*url);
                if (!body.empty()) body += kCrLf;
                body.append("--").append(boundary).append(kCrLf);
                body.append("Content-Disposition: form-data; name=\"")
                    .append(key)
                    .append("\"; filename=\"")
                    .append(url->lastPathComponent())
                    .append("\"")
                    .append(kCrLf);
                body.append("Content-Type: ").append(*contentType).append(kCrLf);
                body += kCrLf;
                body += bytes;
                continue;
            }
            auto bytes = dataPartBytes(element);
            if (!bytes) fatalError("Unprocessable value " + APIHelper::text(element) + " with key " + key);
            appendDataPart(body, boundary, key, *bytes);
        }
    }
    body.append(kCrLf).append("--").append(boundary).append("--").append(kCrLf);
    return body;
}

std::expected<platform::HttpRequest, ParameterEncodingError> FormDataEncoding::encode(
    platform::HttpRequest request, const std::optional<Parameters>& parameters) const {
    if (!parameters || parameters->empty()) return request;
    std::string boundary = "Boundary-" + platform::Uuid::random().string();
    request.headers.set("Content-Type", "multipart/form-data; boundary=" + boundary);
    auto encoded = body(*parameters, boundary);
    if (!encoded) return std::unexpected(std::move(encoded.error()));
    request.body = std::move(*encoded);
    return request;
}

}  // namespace korvane
