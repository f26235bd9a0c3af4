#pragma once
// ToviLocalization: the translations a host gives the wallet's fixed texts.
//
// The literal texts of the views ("Transaction History", "Add New Card", ...) are keys: a view
// shows the translation of its key when the host set one, otherwise the key itself. Texts that
// weave in a value ("Works at any %@ location ...") are keys with one "%@" where the value goes,
// and the translation carries the "%@" where its language wants the value. Dates, amounts and
// names that come from records are never keys.
//
//     tovi::ToviLocalization::set({{"Transaction History", "Historique"}});
//
// Thread safety: none; set and read on the main thread. Views read the table at every build,
// so a table set before a view is built applies at once and a later one at its next rebuild.

#include <string>
#include <string_view>
#include <unordered_map>

namespace tovi {

class ToviLocalization {
public:
    using Table = std::unordered_map<std::string, std::string>;

    // Replaces the whole table; an empty table shows every key as it stands.
    static void set(Table table);
};

// The translation of `key`, or `key` itself.
[[nodiscard]] std::string localized(std::string_view key);

// The translation of `key` with its first "%@" replaced by `value` as it stands; the value is
// not searched for further "%@".
[[nodiscard]] std::string localized(std::string_view key, std::string_view value);

}  // namespace tovi
