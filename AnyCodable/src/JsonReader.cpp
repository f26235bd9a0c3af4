#include "AnyCodable/JsonReader.hpp"

#include <cmath>

#include <nlohmann/json.hpp>

namespace anycodable {
namespace {

class Builder {
public:
    using Json = nlohmann::json;

    Builder(std::size_t maxDepth, std::size_t size) : maxDepth_(maxDepth), size_(size) {}

    bool null() { return add(Null{}); }
    bool boolean(bool v) { return add(v); }
    bool number_integer(std::int64_t v) { return add(v); }
    bool number_unsigned(std::uint64_t v) {
        if (v <= static_cast<std::uint64_t>(INT64_MAX)) return add(static_cast<std::int64_t>(v));
        return add(v);
    }
    bool number_float(double v, const std::string&) {
        if (!std::isfinite(v)) return corrupt("A number is outside the double range.");
        // Integral values go to the first integer type that holds them exactly.
        if (v == std::trunc(v)) {
            if (v >= -9223372036854775808.0 && v < 9223372036854775808.0) return add(static_cast<std::int64_t>(v));
            if (v > 0 && v < 18446744073709551616.0) return add(static_cast<std::uint64_t>(v));
        }
        return add(v);
    }
    bool string(std::string& v) { return add(std::move(v)); }
    bool binary(Json::binary_t&) { return corrupt("Binary values are not JSON."); }

    bool start_object(std::size_t) { return open(true); }
    bool key(std::string& k) {
        frames_.back().key = std::move(k);
        return true;
    }
    bool end_object() { return close(); }
    bool start_array(std::size_t) { return open(false); }
    bool end_array() { return close(); }

    // The parser's own message quotes the last token read, which may be a card number: only
    // the kind and the byte offset go into the error.
    bool parse_error(std::size_t position, const std::string&, const nlohmann::detail::exception&) {
        const char* kind = position > size_ ? "unexpected end of input" : "unexpected character";
        return corrupt(std::string("The given data was not valid JSON: ") + kind + " at offset " +
                       std::to_string(position > 0 ? position - 1 : 0) + ".");
    }

    [[nodiscard]] std::expected<Value, DecodingError> result() && {
        if (error_) return std::unexpected(std::move(*error_));
        return std::move(root_);
    }
    [[nodiscard]] bool failed() const { return error_.has_value(); }
    bool corrupt(std::string message) {
        // No coding path: the keys are input too.
        if (!error_) error_ = DecodingError{DecodingError::Kind::dataCorrupted, {}, std::move(message)};
        return false;
    }

private:
    struct Frame {
        bool object = false;
        Array array;
        Map map;
        std::string key;
    };

    bool open(bool object) {
        if (frames_.size() >= maxDepth_) {
            return corrupt("The JSON is nested more than " + std::to_string(maxDepth_) + " levels deep.");
        }
        frames_.emplace_back();
        frames_.back().object = object;
        return true;
    }

    bool close() {
        Frame frame = std::move(frames_.back());
        frames_.pop_back();
        return frame.object ? add(std::move(frame.map)) : add(std::move(frame.array));
    }

    bool add(Value value) {
        if (frames_.empty()) {
            root_ = std::move(value);
            return true;
        }
        Frame& top = frames_.back();
        if (!top.object) {
            top.array.push_back(std::move(value));
            return true;
        }
        // A repeated key keeps its first position and takes the last value. The map's own
        // index keeps a hostile object with a million keys linear.
        top.map.set(std::move(top.key), std::move(value));
        return true;
    }

    std::size_t maxDepth_;
    std::size_t size_;
    std::vector<Frame> frames_;
    Value root_;
    std::optional<DecodingError> error_;
};

}  // namespace

std::expected<Value, DecodingError> readJson(std::string_view text, ReadOptions options) {
    Builder builder(options.maxDepth, text.size());
    try {
        bool ok = nlohmann::json::sax_parse(text.begin(), text.end(), &builder);
        if (!ok && !builder.failed()) builder.corrupt("The given data was not valid JSON.");
    } catch (const std::exception&) {
        // The parser reports through the handler; this guards allocation failures.
        builder.corrupt("The given data could not be read.");
    }
    return std::move(builder).result();
}

}  // namespace anycodable
