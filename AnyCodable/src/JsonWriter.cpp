#include "AnyCodable/JsonWriter.hpp"

#include <charconv>
#include <cmath>
#include <type_traits>

#include "platform/Base64.hpp"
#include "platform/Text.hpp"

namespace anycodable {
namespace {

// Seconds between 1970-01-01 and 2001-01-01, the phone's reference date.
constexpr double kReferenceDateOffset = 978307200.0;

template <class T>
void appendNumber(std::string& out, T value) {
    char buffer[64];
    auto [end, ec] = std::to_chars(buffer, buffer + sizeof buffer, value);
    out.append(buffer, ec == std::errc{} ? end : buffer);
}

}  // namespace

JsonWriter::JsonWriter(EncodingOptions options) : options_(std::move(options)) {}

void JsonWriter::newline(std::size_t depth) {
    if (!options_.prettyPrinted) return;
    out_ += '\n';
    out_.append(depth * 2, ' ');
}

void JsonWriter::beforeValue() {
    if (frames_.empty()) return;
    Frame& top = frames_.back();
    if (top.object) {
        if (!keyPending_) record("A value was written in an object without a key.");
        keyPending_ = false;
        return;
    }
    if (top.count > 0) out_ += ',';
    newline(frames_.size());
    ++top.count;
}

void JsonWriter::key(std::string_view name) {
    if (failed_) return;
    if (frames_.empty() || !frames_.back().object || keyPending_) {
        record("A key was written outside an object.");
        return;
    }
    Frame& top = frames_.back();
    if (top.count > 0) out_ += ',';
    newline(frames_.size());
    ++top.count;
    top.key.assign(name);
    writeEscaped(name);
    // The phone's encoder separates a key from its value with " : " when it pretty prints.
    out_ += options_.prettyPrinted ? " : " : ":";
    keyPending_ = true;
}

void JsonWriter::beginObject() {
    if (failed_) return;
    beforeValue();
    out_ += '{';
    frames_.push_back({true, 0, {}});
}

void JsonWriter::endObject() {
    if (failed_) return;
    if (frames_.empty() || !frames_.back().object || keyPending_) {
        record("An object was closed that was not open.");
        return;
    }
    bool hadMembers = frames_.back().count > 0;
    frames_.pop_back();
    if (hadMembers) newline(frames_.size());
    out_ += '}';
}

void JsonWriter::beginArray() {
    if (failed_) return;
    beforeValue();
    out_ += '[';
    frames_.push_back({false, 0, {}});
}

void JsonWriter::endArray() {
    if (failed_) return;
    if (frames_.empty() || frames_.back().object) {
        record("An array was closed that was not open.");
        return;
    }
    bool hadElements = frames_.back().count > 0;
    frames_.pop_back();
    if (hadElements) newline(frames_.size());
    out_ += ']';
}

void JsonWriter::null() {
    if (failed_) return;
    beforeValue();
    out_ += "null";
}

void JsonWriter::boolean(bool value) {
    if (failed_) return;
    beforeValue();
    out_ += value ? "true" : "false";
}

void JsonWriter::integer(std::int64_t value) {
    if (failed_) return;
    beforeValue();
    appendNumber(out_, value);
}

void JsonWriter::unsignedInteger(std::uint64_t value) {
    if (failed_) return;
    beforeValue();
    appendNumber(out_, value);
}

void JsonWriter::number(double value) {
    if (failed_) return;
    if (!std::isfinite(value)) {
        fail("Unable to encode Double." + doubleText(value) + " directly in JSON.");
        return;
    }
    beforeValue();
    appendNumber(out_, value);
}

void JsonWriter::number(float value) {
    if (failed_) return;
    if (!std::isfinite(value)) {
        fail("Unable to encode Float." + floatText(value) + " directly in JSON.");
        return;
    }
    beforeValue();
    appendNumber(out_, value);
}

void JsonWriter::string(std::string_view value) {
    if (failed_) return;
    beforeValue();
    writeEscaped(value);
}

void JsonWriter::date(Date value) {
    if (failed_) return;
    if (options_.formatDate) {
        string(options_.formatDate(value));
        return;
    }
    auto seconds = std::chrono::duration<double>(value.time_since_epoch()).count();
    number(seconds - kReferenceDateOffset);
}

void JsonWriter::url(const platform::Url& value) {
    string(value.string());
}

void JsonWriter::writeEscaped(std::string_view text) {
    static constexpr char hex[] = "0123456789abcdef";
    out_ += '"';
    for (std::size_t i = 0; i < text.size();) {
        auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x80) {
            std::size_t length = platform::utf8SequenceLength(text, i);
            if (length == 0) {
                record("The string is not valid UTF-8.");
                return;
            }
            out_.append(text.substr(i, length));
            i += length;
            continue;
        }
        switch (c) {
            case '"':
                out_ += "\\\"";
                break;
            case '\\':
                out_ += "\\\\";
                break;
            case '\n':
                out_ += "\\n";
                break;
            case '\r':
                out_ += "\\r";
                break;
            case '\t':
                out_ += "\\t";
                break;
            case '\b':
                out_ += "\\b";
                break;
            case '\f':
                out_ += "\\f";
                break;
            default:
                if (c < 0x20) {
                    out_ += "\\u00";
                    out_ += hex[c >> 4];
                    out_ += hex[c & 0x0F];
                } else {
                    out_ += static_cast<char>(c);
                }
        }
        ++i;
    }
    out_ += '"';
}

void JsonWriter::fail(std::string debugDescription) {
    if (failed_) return;
    beforeValue();
    record(std::move(debugDescription));
}

void JsonWriter::record(std::string debugDescription) {
    if (failed_) return;
    failed_ = true;
    error_.debugDescription = std::move(debugDescription);
    for (const Frame& frame : frames_) {
        if (frame.object) {
            if (frame.count > 0) error_.codingPath.push_back(frame.key);
        } else {
            error_.codingPath.push_back("Index " + std::to_string(frame.count == 0 ? 0 : frame.count - 1));
        }
    }
}

std::expected<std::string, EncodingError> JsonWriter::finish() && {
    if (!failed_ && !frames_.empty()) record("The document was finished with open containers.");
    if (failed_) return std::unexpected(std::move(error_));
    return std::move(out_);
}

void writeValue(JsonWriter& writer, const Value& value) {
    std::visit(
        [&](const auto& v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, Empty> || std::is_same_v<T, Null>) {
                writer.null();
            } else if constexpr (std::is_same_v<T, bool>) {
                writer.boolean(v);
            } else if constexpr (std::is_same_v<T, std::int64_t>) {
                writer.integer(v);
            } else if constexpr (std::is_same_v<T, std::uint64_t>) {
                writer.unsignedInteger(v);
            } else if constexpr (SizedInteger<T>) {
                if constexpr (std::is_signed_v<std::underlying_type_t<T>>) {
                    writer.integer(std::to_underlying(v));
                } else {
                    writer.unsignedInteger(std::to_underlying(v));
                }
            } else if constexpr (std::is_same_v<T, float> || std::is_same_v<T, double>) {
                writer.number(v);
            } else if constexpr (std::is_same_v<T, std::string>) {
                writer.string(v);
            } else if constexpr (std::is_same_v<T, Date>) {
                writer.date(v);
            } else if constexpr (std::is_same_v<T, platform::Url>) {
                writer.url(v);
            } else if constexpr (std::is_same_v<T, platform::Uuid>) {
                writer.string(v.string());
            } else if constexpr (std::is_same_v<T, Data>) {
                writer.string(platform::base64Encode(v.bytes));
            } else if constexpr (std::is_same_v<T, Array>) {
                writer.beginArray();
                for (const auto& element : v) {
                    if (writer.failed()) return;
                    writeValue(writer, element);
                }
                writer.endArray();
            } else if constexpr (std::is_same_v<T, Map>) {
                writer.beginObject();
                for (const auto& [key, element] : v) {
                    if (writer.failed()) return;
                    writer.key(key);
                    writeValue(writer, element);
                }
                writer.endObject();
            } else {
                // The contract of OtherValue: on false nothing was written, so the failure
                // belongs to the value about to be written.
                if (!v || !v->encode(writer)) writer.fail("AnyEncodable value cannot be encoded");
            }
        },
        value.storage());
}

std::expected<std::string, EncodingError> toJson(const Value& value, EncodingOptions options) {
    JsonWriter writer(std::move(options));
    writeValue(writer, value);
    return std::move(writer).finish();
}

}  // namespace anycodable
