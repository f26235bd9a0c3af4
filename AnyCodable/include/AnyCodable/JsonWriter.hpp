#pragma once
// JsonWriter: a streaming JSON text writer that the dynamic values and the model coders share.
//
// Usage: call beginObject/key/.../endObject and the scalar writers in document order, then
// `finish()`. A value that can't be written (a non-finite number, text that is not UTF-8, an
// unencodable OtherValue) is reported with `fail`; the first failure is kept with the coding
// path where it happened, later writes are ignored, and `finish()` answers the error.
//
// Output: compact, or with `prettyPrinted` two-space indentation, one member per line and
// "key": value. Keys keep the order they were written in. "/" is not escaped.
//
// Thread safety: one writer per thread; the options' date callback must be callable from
// the writing thread.

#include <cstdint>
#include <expected>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "AnyCodable/CodingError.hpp"
#include "AnyCodable/Value.hpp"

namespace anycodable {

struct EncodingOptions {
    bool prettyPrinted = false;
    // How dates are written. Empty: the number of seconds since 2001-01-01T00:00:00Z, the
    // default strategy of the phone's coder.
    std::function<std::string(Date)> formatDate = {};
};

class JsonWriter {
public:
    explicit JsonWriter(EncodingOptions options = {});

    void beginObject();
    void endObject();
    void beginArray();
    void endArray();
    // REQUIRES: inside an object; exactly one value follows.
    void key(std::string_view name);

    void null();
    void boolean(bool value);
    void integer(std::int64_t value);
    void unsignedInteger(std::uint64_t value);
    void number(double value);
    void number(float value);
    void string(std::string_view value);
    void date(Date value);
    void url(const platform::Url& value);

    // Records that the value about to be written (after `key`, or as the next array element)
    // can't be written. The coding path of the error names its key or index.
    void fail(std::string debugDescription);
    [[nodiscard]] bool failed() const { return failed_; }

    [[nodiscard]] const EncodingOptions& options() const { return options_; }

    // The text, or the first failure.
    [[nodiscard]] std::expected<std::string, EncodingError> finish() &&;

private:
    struct Frame {
        bool object = false;
        std::size_t count = 0;
        std::string key;
    };

    void beforeValue();
    void record(std::string debugDescription);
    void newline(std::size_t depth);
    void writeEscaped(std::string_view text);

    EncodingOptions options_;
    std::string out_;
    std::vector<Frame> frames_;
    bool keyPending_ = false;
    bool failed_ = false;
    EncodingError error_;
};

// Writes a dynamic value: null for Null and Empty, numbers as themselves, dates through the
// writer's date strategy, a URL as its string, a UUID as its upper-case string, data as
// base64, arrays and maps member by member. An OtherValue writes itself or fails with
// "AnyEncodable value cannot be encoded".
void writeValue(JsonWriter& writer, const Value& value);

// Convenience: the whole value as JSON text.
[[nodiscard]] std::expected<std::string, EncodingError> toJson(const Value& value, EncodingOptions options = {});

}  // namespace anycodable
