#pragma once
// SynchronizedDictionary<K, V>: a map that many threads may read and write.
//
// Reads share the lock, writes take it alone (the concurrent-reader, exclusive-writer pattern).
// Writing an absent value removes the key.
//
// Thread safety: every member may be called from any thread.

#include <map>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <utility>

namespace korvane {

template <class K, class V>
class SynchronizedDictionary {
public:
    [[nodiscard]] std::optional<V> get(const K& key) const {
        std::shared_lock lock(mutex_);
        auto it = map_.find(key);
        if (it == map_.end()) return std::nullopt;
        return it->second;
    }

    void set(const K& key, std::optional<V> value) {
        std::unique_lock lock(mutex_);
        if (value) {
            map_.insert_or_assign(key, std::move(*value));
        } else {
            map_.erase(key);
        }
    }

    [[nodiscard]] std::size_t size() const {
        std::shared_lock lock(mutex_);
        return map_.size();
    }

private:
    mutable std::shared_mutex mutex_;
    std::map<K, V> map_;
};

}  // namespace korvane
