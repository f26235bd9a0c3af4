#include "AnyCodable/Value.hpp"

#include <bit>
#include <functional>
#include <type_traits>

namespace anycodable {

namespace {

std::size_t hashKey(std::string_view key) {
    return std::hash<std::string_view>{}(key);
}

}  // namespace

Map::Map(std::initializer_list<Entry> entries) {
    reserve(entries.size());
    for (const auto& [key, value] : entries) insert(key, value);
}

std::size_t Map::positionOf(std::string_view key) const {
    if (slots_.empty()) {
        for (std::size_t i = 0; i < entries_.size(); ++i) {
            if (entries_[i].first == key) return i;
        }
        return kAbsent;
    }
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = hashKey(key) & mask;; slot = (slot + 1) & mask) {
        const std::uint32_t held = slots_[slot];
        if (held == 0) return kAbsent;
        if (entries_[held - 1].first == key) return held - 1;
    }
}

void Map::rebuildIndex(std::size_t slotCount) {
    slots_.assign(slotCount, 0);
    const std::size_t mask = slotCount - 1;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        std::size_t slot = hashKey(entries_[i].first) & mask;
        while (slots_[slot] != 0) slot = (slot + 1) & mask;
        slots_[slot] = static_cast<std::uint32_t>(i + 1);
    }
}

void Map::append(std::string key, Value value) {
    entries_.emplace_back(std::move(key), std::move(value));
    const std::size_t count = entries_.size();
    if (count <= kLinearLimit) return;
    if (count * 2 > slots_.size()) {
        rebuildIndex(std::bit_ceil(count * 4));
        return;
    }
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = hashKey(entries_.back().first) & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = static_cast<std::uint32_t>(count);
}

void Map::reserve(std::size_t n) {
    entries_.reserve(n);
}

const Value* Map::find(std::string_view key) const {
    const std::size_t at = positionOf(key);
    return at == kAbsent ? nullptr : &entries_[at].second;
}

Value* Map::find(std::string_view key) {
    const std::size_t at = positionOf(key);
    return at == kAbsent ? nullptr : &entries_[at].second;
}

bool Map::insert(std::string key, Value value) {
    if (positionOf(key) != kAbsent) return false;
    append(std::move(key), std::move(value));
    return true;
}

void Map::set(std::string key, Value value) {
    if (const std::size_t at = positionOf(key); at != kAbsent) {
        entries_[at].second = std::move(value);
        return;
    }
    append(std::move(key), std::move(value));
}

bool Map::erase(std::string_view key) {
    const std::size_t at = positionOf(key);
    if (at == kAbsent) return false;
    entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(at));
    // Every later position moved; the index is rebuilt (or dropped once the map is small).
    if (entries_.size() <= kLinearLimit) {
        slots_ = {};
    } else {
        rebuildIndex(slots_.size());
    }
    return true;
}

void Map::appendUnchecked(std::string key, Value value) {
    append(std::move(key), std::move(value));
}

namespace {

// The kinds that compare by value: bool, the integers, float, double, string.
template <class T>
constexpr bool kComparedByValue =
    std::is_same_v<T, bool> || std::is_same_v<T, std::int64_t> || std::is_same_v<T, std::uint64_t> || SizedInteger<T> ||
    std::is_same_v<T, float> || std::is_same_v<T, double> || std::is_same_v<T, std::string>;

void combine(std::size_t& seed, std::size_t h) {
    seed ^= h + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
}

}  // namespace

bool equals(const Value& a, const Value& b, Flavor flavor) {
    const auto& sa = a.storage();
    const auto& sb = b.storage();
    if (sa.index() != sb.index()) return false;
    return std::visit(
        [&](const auto& left) -> bool {
            using T = std::decay_t<decltype(left)>;
            const auto& right = std::get<T>(sb);
            if constexpr (std::is_same_v<T, Empty>) {
                return true;
            } else if constexpr (std::is_same_v<T, Null>) {
                return flavor != Flavor::encodable;
            } else if constexpr (kComparedByValue<T>) {
                return left == right;
            } else if constexpr (std::is_same_v<T, Array>) {
                if (left.size() != right.size()) return false;
                for (std::size_t i = 0; i < left.size(); ++i) {
                    if (!equals(left[i], right[i], flavor)) return false;
                }
                return true;
            } else if constexpr (std::is_same_v<T, Map>) {
                if (left.size() != right.size()) return false;
                for (const auto& [key, value] : left) {
                    const Value* other = right.find(key);
                    if (!other || !equals(value, *other, flavor)) return false;
                }
                return true;
            } else {
                return false;  // dates, URLs, UUIDs, data, other values: never equal
            }
        },
        sa);
}

std::size_t hashValue(const Value& value) {
    const auto& storage = value.storage();
    std::size_t seed = 0;
    std::visit(
        [&](const auto& v) {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, float> || std::is_same_v<T, double>) {
                combine(seed, storage.index());
                combine(seed, std::hash<T>{}(v == 0 ? T(0) : v));  // -0.0 hashes as 0.0
            } else if constexpr (kComparedByValue<T>) {
                combine(seed, storage.index());
                combine(seed, std::hash<T>{}(v));
            } else if constexpr (std::is_same_v<T, Array>) {
                combine(seed, storage.index());
                combine(seed, v.size());
                for (const auto& element : v) combine(seed, hashValue(element));
            } else if constexpr (std::is_same_v<T, Map>) {
                std::size_t pairs = 0;
                for (const auto& [key, element] : v) {
                    std::size_t pair = std::hash<std::string>{}(key);
                    combine(pair, hashValue(element));
                    pairs ^= pair;
                }
                combine(seed, storage.index());
                combine(seed, pairs);
            }
        },
        storage);
    return seed;
}

std::string_view kindName(const Value& value) {
    return std::visit(
        [](const auto& v) -> std::string_view {
            using T = std::decay_t<decltype(v)>;
            if constexpr (std::is_same_v<T, Empty>)
                return "an empty value";
            else if constexpr (std::is_same_v<T, Null>)
                return "null";
            else if constexpr (std::is_same_v<T, bool>)
                return "bool";
            else if constexpr (std::is_same_v<T, std::string>)
                return "a string";
            else if constexpr (std::is_same_v<T, Array>)
                return "an array";
            else if constexpr (std::is_same_v<T, Map>)
                return "a dictionary";
            else if constexpr (std::is_same_v<T, Date>)
                return "a date";
            else if constexpr (std::is_same_v<T, platform::Url>)
                return "a URL";
            else if constexpr (std::is_same_v<T, platform::Uuid>)
                return "a UUID";
            else if constexpr (std::is_same_v<T, Data>)
                return "data";
            else if constexpr (std::is_same_v<T, std::shared_ptr<const OtherValue>>)
                return "another value";
            else
                return "a number";
        },
        value.storage());
}

}  // namespace anycodable
