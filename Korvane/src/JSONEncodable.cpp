#include "Korvane/JSONEncodable.hpp"

#include "Korvane/CodableHelper.hpp"

namespace korvane {
namespace {

// The phone prints a dictionary with hashable keys as [AnyHashable("key"): value], values in
// their debug form; an empty one as [:].
class HashableKeyDictionary final : public anycodable::OtherValue {
public:
    explicit HashableKeyDictionary(anycodable::Map entries) : entries_(std::move(entries)) {}

    bool encode(anycodable::JsonWriter& writer) const override {
        anycodable::writeValue(writer, entries_);
        return true;
    }

    std::string description() const override {
        if (entries_.empty()) return "[:]";
        std::string out = "[";
        bool first = true;
        for (const auto& [key, value] : entries_) {
            if (!first) out += ", ";
            first = false;
            out += "AnyHashable(" + *anycodable::debugDescription(anycodable::Value(key)) + "): ";
            out +=
                value.isEmpty() ? "()" : anycodable::debugDescription(value).value_or(anycodable::description(value));
        }
        return out + "]";
    }

private:
    anycodable::Map entries_;
};

}  // namespace

anycodable::Value encodeToJSON(const std::string& value) {
    return value;
}

anycodable::Value encodeToJSON(const platform::Uuid& value) {
    return value.string();
}

anycodable::Value encodeToJSON(anycodable::Date value) {
    return CodableHelper::dateFormatter()->string(value);
}

anycodable::Value hashableKeyDictionary(anycodable::Map entries) {
    return std::shared_ptr<const anycodable::OtherValue>(std::make_shared<HashableKeyDictionary>(std::move(entries)));
}

}  // namespace korvane
